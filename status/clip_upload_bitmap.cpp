#include "status/clip_upload_bitmap.h"

#include <cstring>
#include <string_view>

#include "core/bytes.h"
#include "core/dlog.h"
#include "core/text.h"

namespace {

// A selection is `"block0":N,"block1":N, ... }}`.
constexpr char kKeyStart[] = "\"block";
constexpr char kKeyEnd[] = "\":";
constexpr char kNextBlock[] = ",\"block";
constexpr char kEndOfRequest[] = "}}";

struct BlockKey {
  std::size_t block;
  const char* value;  ///< the text after the key; null if there is no key
};

/// The first key of any block in the text.
BlockKey NextKey(const char* text) {
  while ((text = std::strstr(text, kKeyStart)) != nullptr) {
    text += std::strlen(kKeyStart);
    const std::size_t digits = std::strspn(text, "0123456789");
    const bool is_number = digits == 1 || (digits > 1 && text[0] != '0');
    const std::int64_t block = is_number ? ParseInt64(text) : -1;
    text += digits;
    if (block >= 0 && block < std::int64_t{kClipBlockCount} && StartsWith(text, kKeyEnd)) {
      return {static_cast<std::size_t>(block), text + std::strlen(kKeyEnd)};
    }
  }
  return {0, nullptr};
}

/// Where each block and the end of a value occur last. The search skips what does not occur any
/// more, so the text is scanned a few times in total instead of once per block.
class LastOccurrences {
 public:
  explicit LastOccurrences(const char* text) {
    const std::string_view view = text;
    for (const char* end : {kNextBlock, kEndOfRequest}) {
      const std::size_t position = view.rfind(end);
      if (position != std::string_view::npos && (end_ == nullptr || text + position > end_)) {
        end_ = text + position;
      }
    }
    for (BlockKey key = NextKey(text); key.value != nullptr; key = NextKey(key.value)) {
      values_[key.block] = key.value;
    }
  }

  /// Whether `block` has a value after `position`.
  [[nodiscard]] bool HasBlock(std::size_t block, const char* position) const {
    return values_[block] != nullptr && values_[block] > position;
  }
  /// Whether a value that starts at `position` is terminated.
  [[nodiscard]] bool HasEnd(const char* position) const {
    return end_ != nullptr && end_ >= position;
  }

 private:
  const char* values_[kClipBlockCount] = {};
  const char* end_ = nullptr;
};

/// The text after the first key of `block`, which must be present.
const char* ValueOf(std::size_t block, const char* text) {
  BlockKey key = NextKey(text);
  while (key.block != block) {
    key = NextKey(key.value);
  }
  return key.value;
}

/// The log shows only the start and the end of a selection.
bool IsTraced(std::size_t block) { return block <= 3 || block >= kClipBlockCount - 3; }

}  // namespace

void SetClipUploadBitmap(const char* params, std::uint32_t (&out)[kClipBlockCount]) {
  const LastOccurrences last(params);
  const char* rest = params;
  for (std::size_t block = 0; block < kClipBlockCount; ++block) {
    if (last.HasBlock(block, rest)) {
      rest = ValueOf(block, rest);
      if (last.HasEnd(rest)) {
        out[block] = ToBigEndian32(static_cast<std::uint32_t>(ParseInt64(rest)));
      }
    } else {
      out[block] = 0;
    }
    if (IsTraced(block)) {
      // On the camera's little-endian processor the log shows the bytes in reverse order.
      DLOG(4, "block[%d]:%x", static_cast<int>(block), out[block]);
    }
  }
}
