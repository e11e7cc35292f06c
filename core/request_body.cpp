#include "core/request_body.h"

#include <cstddef>

#include "core/os.h"
#include "core/text.h"

namespace {

/// The longest useful request, an upload selection, has less than 4 KiB.
constexpr std::size_t kMaxBody = std::size_t{16} << 20;
/// Longest white space before a request.
constexpr std::size_t kMaxLeadingSpace = std::size_t{1} << 20;
/// Generous: the web server has received the whole body before it starts the handler.
constexpr std::int64_t kTimeoutMs = 10000;

/// Collects the token from blocks of input.
struct TokenReader {
  /// @return whether the token may continue in the next block
  bool Take(const char* block, std::size_t size) {
    std::size_t first = 0;
    while (token.Length() == 0 && first < size && IsSpace(block[first])) {
      ++first;
      ++leading_space;
    }
    std::size_t last = first;
    while (last < size && !IsSpace(block[last]) && block[last] != '\0' &&
           token.Length() + (last - first) < limit) {
      ++last;
    }
    token.Append({block + first, last - first});
    return last == size && token.Length() < limit && leading_space < kMaxLeadingSpace;
  }

  std::size_t limit;
  TextBuilder& token;
  std::size_t leading_space = 0;
};

}  // namespace

void ReadRequestBody(std::int32_t announced, TextBuilder& body) {
  if (announced <= 0) {
    return;
  }
  const auto length = static_cast<std::size_t>(announced);
  TokenReader reader = {length < kMaxBody ? length : kMaxBody, body};
  const std::int64_t deadline = os::MonotonicMilliseconds() + kTimeoutMs;
  std::int64_t wait = kTimeoutMs;
  char block[1024];
  while (wait > 0) {
    const std::size_t size = os::ReadInput(block, sizeof block, static_cast<int>(wait));
    if (size == 0 || !reader.Take(block, size)) {
      break;
    }
    wait = deadline - os::MonotonicMilliseconds();
  }
}
