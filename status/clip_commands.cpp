#include <cstring>
#include <string_view>

#include "core/bytes.h"
#include "core/cmd/status.h"
#include "core/dlog.h"
#include "core/parameters.h"
#include "core/text.h"
#include "status/clip_upload_bitmap.h"

namespace {

constexpr int kTraceLevel = 4;

/// A block's key in the text of a selection: "blockN":
constexpr char kKeyStart[] = "\"block";
constexpr char kKeyEnd[] = "\":";
/// What may stand behind a block's value.
constexpr char kNextBlock[] = ",\"block";
constexpr char kEndOfRequest[] = "}}";

struct BlockKey {
  std::size_t block;
  const char* value;  ///< the text behind the key; null when there is no key
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

/// Where the things stand last that the blocks of a selection are searched for. What does not stand
/// behind a place any more is known without a search, so that a text is read a few times in all and
/// not once for each block.
class LastPlaces {
 public:
  explicit LastPlaces(const char* text) {
    const std::string_view view = text;
    for (const char* end : {kNextBlock, kEndOfRequest}) {
      const std::size_t place = view.rfind(end);
      if (place != std::string_view::npos && (end_ == nullptr || text + place > end_)) {
        end_ = text + place;
      }
    }
    for (BlockKey key = NextKey(text); key.value != nullptr; key = NextKey(key.value)) {
      values_[key.block] = key.value;
    }
  }

  /// Whether the value of `block` comes behind `place`.
  [[nodiscard]] bool HasBlock(std::size_t block, const char* place) const {
    return values_[block] != nullptr && values_[block] > place;
  }
  /// Whether a value that starts at `place` has an end.
  [[nodiscard]] bool HasEnd(const char* place) const { return end_ != nullptr && end_ >= place; }

 private:
  const char* values_[kClipBlockCount] = {};
  const char* end_ = nullptr;
};

/// The text behind the first key of `block`, which is there.
const char* ValueOf(std::size_t block, const char* text) {
  BlockKey key = NextKey(text);
  while (key.block != block) {
    key = NextKey(key.value);
  }
  return key.value;
}

/// The log shows how a selection begins and ends, not all of it.
bool IsTraced(std::size_t block) { return block <= 3 || block >= kClipBlockCount - 3; }

}  // namespace

int SetClipInfo::Parse(const char* params) {
  DLOG(kTraceLevel, "Set {slot=%c index_no=%d, ok_mark=%s}", slot_, index_no_, ok_mark_);
  char slot[2] = {};
  std::int32_t index_no = 0;
  if (!ReadParameter(params, "Slot", slot) || !ReadParameter(params, "IndexNo", index_no) ||
      !ReadParameter(params, "OKMark", ok_mark_)) {
    return -1;
  }
  slot_ = slot[0];
  index_no_ = static_cast<std::uint16_t>(index_no);
  DLOG(kTraceLevel, "index_no=%d, ok_mark=%s", index_no_, ok_mark_);
  const std::uint8_t slot_number = slot_ == 'A' ? 0 : 1;
  const std::uint8_t ok_mark = std::strcmp(ok_mark_, "NoMark") == 0 ? 0 : 1;
  SetPayload({slot_number, 0, HighByte(index_no_), LowByte(index_no_), ok_mark, 0});
  return 0;
}

int WebFtpOperateResponse::Parse(const char* params) {
  DLOG(2, "responce params=%s", params);
  char text[5000];
  if (!ReadParameter(params, "Response", text)) {
    return -1;
  }
  const std::int32_t response = ParseInt32(text);
  DLOG(2, "send param response=%s(%d)", text, response);
  SetPayload({LowByte(static_cast<std::uint32_t>(response)), 0});
  return 0;
}

int FtpUploadStart::Parse(const char* params) {
  DLOG(2, "%s params=%s", log_name_, params);
  std::int32_t server = 0;
  std::int32_t slot = 0;
  if (!ReadParameter(params, "Server", server) || !ReadParameter(params, "Slot", slot)) {
    return -1;
  }
  DLOG(2, "%s send param server=%d slot=%d", log_name_, server, slot);
  SetPayload(
      {LowByte(static_cast<std::uint32_t>(server)), LowByte(static_cast<std::uint32_t>(slot))});
  return 0;
}

int FtpUploadSelection::Parse(const char* params) {
  DLOG(2, "select %c upload ftp%d params=%s", slot_, server_, params);
  std::uint32_t blocks[kClipBlockCount] = {};
  SetClipUploadBitmap(params, blocks);
  std::memcpy(NewPayload(sizeof blocks), blocks, sizeof blocks);
  return 0;
}

void SetClipUploadBitmap(const char* params, std::uint32_t (&out)[kClipBlockCount]) {
  const LastPlaces last(params);
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
      // The word shows as the camera's processor reads it, its bytes in reverse.
      DLOG(kTraceLevel, "block[%ld]:%lx", static_cast<long>(block),
           static_cast<unsigned long>(out[block]));
    }
  }
}
