// Compares json_parser with a model of its description that works on strings.
#include <string>
#include <vector>

#include "core/json_parser.h"
#include "fuzz/fuzzing.h"

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

/// The value of the first line of this kind, up to a NUL; `otherwise` if there is none.
std::string First(const std::vector<scenario::Line>& lines, scenario::Kind kind,
                  const std::string& otherwise) {
  const std::vector<std::string> values = fuzz::Values(lines, kind);
  const std::string& first = values.empty() ? otherwise : values.front();
  return first.substr(0, first.find('\0'));
}

}  // namespace

// The first argument is the key that is looked for in the body.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<scenario::Line> lines = scenario::Parse(fuzz::Text(data, size));
  const std::string key = First(lines, scenario::kArgument, "Command");
  const std::string text = First(lines, scenario::kBody, "");

  char value[64] = "left over";
  const char* const end = json_parser(text.c_str(), key.c_str(), value);
  const Extraction expected = Model(text, key);
  fuzz::Require((end != nullptr) == expected.found);
  fuzz::Require(value == expected.value.substr(0, sizeof value - 1));
  fuzz::Require(end == nullptr || end == text.c_str() + expected.end);
  return 0;
}
