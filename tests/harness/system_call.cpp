#include "harness/system_call.h"

#include <cerrno>
#include <system_error>

namespace harness {

void Check(bool succeeded, const std::string& what) {
  if (!succeeded) {
    throw std::system_error(errno, std::generic_category(), what);
  }
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) {
    pointers.push_back(text.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace harness
