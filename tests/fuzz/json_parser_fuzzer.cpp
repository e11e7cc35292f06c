// Holds json_parser against a model of its description that is written on strings.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "core/json_parser.h"

namespace {

struct Extraction {
  bool found = false;
  std::string value;
  std::size_t end = 0;
};

Extraction Model(const std::string& text, const std::string& key) {
  const std::size_t name = text.find(key);
  const std::size_t colon = name == std::string::npos ? name : text.find(':', name + key.size());
  if (colon == std::string::npos) {
    return {};
  }
  const std::size_t start = text.compare(colon + 1, 1, "\"") == 0 ? colon + 2 : colon + 1;
  const std::size_t end = text.find_first_of(",\"}", start);
  if (end == std::string::npos) {
    return {};
  }
  return {true, text.substr(start, end - start), end};
}

void Require(bool condition) {
  if (!condition) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// The input is the key's length, the key and the text.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0 || data[0] + std::size_t{1} > size) {
    return 0;
  }
  const std::string all(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::string key(all.substr(0, data[0]).c_str());
  const std::string text(all.substr(data[0]).c_str());

  char value[64] = "left over";
  const char* const end = json_parser(text.c_str(), key.c_str(), value);
  const Extraction expected = Model(text, key);
  Require((end != nullptr) == expected.found);
  Require(value == expected.value.substr(0, sizeof value - 1));
  Require(end == nullptr || end == text.c_str() + expected.end);
  return 0;
}
