#include <cstring>

#include "core/cmd/remote.h"
#include "core/dlog.h"
#include "core/parameters.h"
#include "core/text.h"

int SetCamCtrl::Parse(const char* params) {
  DLOG(2, "params=%s", params);
  char word[kTextSize];
  if (!ReadParameter(params, "CamCtrl", word)) {
    return -1;
  }
  const std::uint8_t control = std::strcmp(word, "Rec") == 0 ? 0 : 1;
  DLOG(2, "ctrl=%s(%d)", word, control);
  SetPayload({control});
  return 0;
}

int SetZoomCtrl::Parse(const char* params) {
  DLOG(2, "##### SetZoomCtrl Parse() params=%s", params);
  std::int32_t number = 0;
  if (!ReadParameter(params, "Position", number)) {
    return -1;
  }
  const auto position = static_cast<std::uint16_t>(number);
  SetPayload({HighByte(position), LowByte(position)});
  DLOG(2, "pos=%d position=%d", TruncateToInt16(number), position);
  return 0;
}

int JpegEncode::Parse(const char* params) {
  constexpr std::uint8_t kStop = 6;
  DLOG(2, "##### JpegEncode Parse() params=%s", params);
  char operate[kTextSize];
  if (!ReadParameter(params, "Operate", operate)) {
    return -1;
  }
  // The code in the command table starts the encoder; only this word changes it.
  if (std::strcmp(operate, "Stop") == 0) {
    request_header_.command_code = kStop;
  }
  DLOG(2, "send param operate=%s", operate);
  return 0;
}

void GetGpsInfo::Output() {
  constexpr TextField kAntennaLevel{4, 20};
  constexpr std::size_t kLocation = 24;  // to the end of the reply
  const ByteView reply = Reply();
  JsonWriter& data = AddData();
  data.Text("AntennaLevel", reply[kAntennaLevel]);
  data.Text("Location", reply.Text(kLocation, reply.Size()));
  Command::Output();
}
