#include <cstdio>
#include <cstring>

#include "core/bytes.h"
#include "core/cmd/status.h"
#include "core/dlog.h"
#include "core/parameters.h"
#include "core/text.h"
#include "status/clip_upload_bitmap.h"

namespace {

constexpr int kTraceLevel = 4;

/// The members of a selection in the text of a request.
constexpr char kNextBlock[] = ",\"block";
constexpr char kEndOfRequest[] = "}}";

/// The text behind the key of block `number`, or null when the block is not there.
const char* FindBlock(const char* text, std::size_t number) {
  char key[sizeof "\"block18446744073709551615\":"];
  const int length = std::snprintf(key, sizeof key, "\"block%zu\":", number);
  const char* const found = std::strstr(text, key);
  return found != nullptr ? found + length : nullptr;
}

bool HasEnd(const char* value) {
  return std::strstr(value, kNextBlock) != nullptr || std::strstr(value, kEndOfRequest) != nullptr;
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
  const std::int32_t response = DecimalValue(text);
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
  const char* rest = params;
  for (std::size_t block = 0; block < kClipBlockCount; ++block) {
    const char* const value = FindBlock(rest, block);
    if (value == nullptr) {
      out[block] = 0;
    } else {
      rest = value;
      if (HasEnd(value)) {
        out[block] = BigEndianWord(static_cast<std::uint32_t>(LongDecimalValue(value)));
      }
    }
    if (IsTraced(block)) {
      // The word shows as the camera's processor reads it, its bytes in reverse.
      DLOG(kTraceLevel, "block[%ld]:%lx", static_cast<long>(block),
           static_cast<unsigned long>(out[block]));
    }
  }
}
