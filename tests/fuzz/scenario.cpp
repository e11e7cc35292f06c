#include "fuzz/scenario.h"

namespace scenario {
namespace {

std::string Unescaped(std::string_view value) {
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] == '\\' && i + 1 < value.size()) {
      ++i;
      text += value[i] == 'n' ? '\n' : value[i];
    } else {
      text += value[i];
    }
  }
  return text;
}

}  // namespace

std::string Format(const Line& line) {
  std::string text(1, line.kind);
  for (const char c : line.value) {
    if (c == '\n') {
      text += "\\n";
    } else {
      text.append(c == '\\' ? 2 : 1, c);
    }
  }
  return text + '\n';
}

std::vector<Line> Parse(std::string_view input) {
  std::vector<Line> lines;
  while (!input.empty()) {
    const std::string_view line = input.substr(0, input.find('\n'));
    if (!line.empty()) {
      lines.push_back({line.front(), Unescaped(line.substr(1))});
    }
    input.remove_prefix(line.size() == input.size() ? line.size() : line.size() + 1);
  }
  return lines;
}

}  // namespace scenario
