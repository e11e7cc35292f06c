#include <cstring>

#include "core/bytes.h"
#include "core/cmd/status.h"
#include "core/dlog.h"
#include "core/parameters.h"
#include "core/text.h"
#include "status/clip_upload_bitmap.h"

int SetClipInfo::Parse(const char* params) {
  // Nothing has been read yet: the slot is still a NUL character, which ends the message.
  DLOG(4, "Set {slot=");
  char slot[2] = {};
  std::int32_t number = 0;
  ShortText ok_mark;
  if (!ReadParameters(params, "Slot", slot, "IndexNo", number, "OKMark", ok_mark)) {
    return -1;
  }
  const auto index_no = static_cast<std::uint16_t>(number);
  DLOG(4, "index_no=%d, ok_mark=%s", index_no, ok_mark);
  const std::uint8_t slot_number = slot[0] == 'A' ? 0 : 1;
  const std::uint8_t mark = std::strcmp(ok_mark, "NoMark") == 0 ? 0 : 1;
  SetPayload({slot_number, 0, HighByte(index_no), LowByte(index_no), mark, 0});
  return 0;
}

int WebFtpOperateResponse::Parse(const char* params) {
  DLOG(2, "responce params=%s", params);
  char text[kTextSize];
  if (!ReadParameter(params, "Response", text)) {
    return -1;
  }
  const std::int32_t response = ParseInt32(text);
  DLOG(2, "send param response=%s(%d)", text, response);
  SetPayload({LowByte(response), 0});
  return 0;
}

int FtpUploadStart::ParseAs(const char* log_name, const char* params) {
  DLOG(2, "%s params=%s", log_name, params);
  std::int32_t server = 0;
  std::int32_t slot = 0;
  if (!ReadParameters(params, "Server", server, "Slot", slot)) {
    return -1;
  }
  DLOG(2, "%s send param server=%d slot=%d", log_name, server, slot);
  SetPayload({LowByte(server), LowByte(slot)});
  return 0;
}

int FtpUploadSelection::ParseFor(int server, char slot, const char* params) {
  DLOG(2, "select %c upload ftp%d params=%s", slot, server, params);
  std::uint32_t blocks[kClipBlockCount] = {};
  SetClipUploadBitmap(params, blocks);
  std::memcpy(NewPayload(sizeof blocks), blocks, sizeof blocks);
  return 0;
}
