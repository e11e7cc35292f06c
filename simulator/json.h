// JSON for the control interface.
#pragma once

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

namespace simulator {

/// Members keep the order in which they are written.
using Json = nlohmann::ordered_json;

/// Input that makes no sense; the text says which part of it and why.
class Rejected : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// @param path  the member that makes no sense: "battery.level"
[[noreturn]] inline void Reject(const std::string& path, const std::string& why) {
  throw Rejected(path + ": " + why);
}

/// @param what  whose text it is, for the error: "the body"
/// @throws Rejected  says where the mistake is
inline Json ParseJson(const std::string& text, const std::string& what) {
  try {
    return Json::parse(text);
  } catch (const Json::parse_error& error) {
    const std::string why = error.what();
    const std::size_t at = why.find("line ");
    throw Rejected(what +
                   " is not valid JSON: " + (at == std::string::npos ? why : why.substr(at)));
  }
}

}  // namespace simulator
