#include "core/request_body.h"

#include <cstddef>

#include "core/os.h"
#include "core/text.h"

namespace {

/// The longest request that is read. The longest one that a client has reason to send, an upload
/// selection, stays below 4 KiB.
constexpr std::size_t kLongestBody = std::size_t{16} << 20;
/// White space in front of the request that is put up with.
constexpr std::size_t kLongestLead = std::size_t{1} << 20;
/// The web server hands over a body that it has received, so nothing here has reason to be slow.
constexpr std::int64_t kLongestWaitMs = 10000;

/// Takes blocks of input until the token is complete.
class TokenReader {
 public:
  TokenReader(std::size_t limit, TextBuilder& token) : limit_(limit), token_(token) {}

  /// @return whether the token goes on behind this block
  bool Take(const char* block, std::size_t size) {
    std::size_t first = 0;
    while (token_.Length() == 0 && first < size && IsSpace(block[first])) {
      ++first;
      ++lead_;
    }
    std::size_t last = first;
    while (last < size && !IsSpace(block[last]) && block[last] != '\0' &&
           token_.Length() + (last - first) < limit_) {
      ++last;
    }
    token_.Append({block + first, last - first});
    return last == size && token_.Length() < limit_ && lead_ < kLongestLead;
  }

 private:
  std::size_t limit_;
  std::size_t lead_ = 0;
  TextBuilder& token_;
};

}  // namespace

void ReadRequestBody(std::int32_t announced, TextBuilder& body) {
  if (announced <= 0) {
    return;
  }
  const auto length = static_cast<std::size_t>(announced);
  TokenReader reader(length < kLongestBody ? length : kLongestBody, body);
  const std::int64_t deadline = os::MonotonicMilliseconds() + kLongestWaitMs;
  std::int64_t wait = kLongestWaitMs;
  char block[4096];
  while (wait > 0) {
    const std::size_t size = os::ReadInput(block, sizeof block, static_cast<int>(wait));
    if (size == 0 || !reader.Take(block, size)) {
      break;
    }
    wait = deadline - os::MonotonicMilliseconds();
  }
}
