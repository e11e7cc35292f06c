#include <cstring>

#include "core/cmd/remote.h"
#include "core/dlog.h"
#include "core/parameters.h"
#include "core/text.h"
#include "remote/event_table.h"

namespace {

/// A position as the log shows it: with the second byte as the high byte, although the slider's
/// position is big-endian. Service staff rely on this form.
std::int16_t LoggedPosition(std::uint8_t first, std::uint8_t second) {
  return TruncateToInt16(second << 8 | first);
}

std::uint8_t ZoomDirection(const char* word) {
  if (std::strcmp(word, "Wide") == 0) {
    return 1;
  }
  // Any other word stops, because stopping by mistake is safe.
  return std::strcmp(word, "Tele") == 0 ? 2 : 0;
}

}  // namespace

int SetWebSliderEvent::Parse(const char* params) {
  DLOG(2, "##### SetWebSliderEvent Parse() params=%s", params);
  ShortText kind;
  std::int32_t number = 0;
  std::uint8_t kind_code = 0;
  if (!ReadParameters(params, "Kind", kind, "Position", number) ||
      getIndexOfSliderEvent(kind, kind_code) != 0) {
    return -1;
  }
  const auto position = static_cast<std::uint16_t>(number);
  DLOG(2, "send param kind=%s(%d) position=%d", kind, kind_code,
       LoggedPosition(HighByte(position), LowByte(position)));
  SetPayload({kind_code, HighByte(position), LowByte(position)});
  return 0;
}

int SetWebXYFieldEvent::Parse(const char* params) {
  DLOG(2, "##### SetWebXYFieldEvent Parse() params=%s", params);
  ShortText kind;
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::uint8_t kind_code = 0;
  if (!ReadParameters(params, "Kind", kind, "XPosition", x, "YPosition", y) ||
      getIndexOfSliderEvent(kind, kind_code) != 0) {
    return -1;
  }
  // Deliberate: the high byte of a Y above 255 is ORed into X. Clients rely on these bytes.
  const auto y_high = HighByte(static_cast<std::uint16_t>(y));
  const auto x_byte = static_cast<std::uint8_t>(LowByte(x) | y_high);
  const std::uint8_t y_byte = LowByte(y);
  DLOG(2, "send param kind=%s(%d) position=%d(x=%d,y=%d)", kind, kind_code,
       LoggedPosition(x_byte, y_byte), TruncateToInt16(x), TruncateToInt16(y));
  SetPayload({kind_code, x_byte, y_byte});
  return 0;
}

int SeesawSwitchOperation::Parse(const char* params) {
  ShortText kind;
  ShortText direction;
  std::int32_t speed = 0;
  if (!ReadParameters(params, "Kind", kind, "Direction", direction, "Speed", speed)) {
    return -1;
  }
  DLOG(2, "##### SeesawSwitchOperation Parse() Kind=%s dir=%s Spead=%d", kind, direction, speed);
  std::uint8_t kind_code = 0;
  std::uint8_t key_code = 0;
  if (getIndexOfKeyEvent(kind, direction, kind_code, key_code) != 0) {
    return -1;
  }
  DLOG(2, "send param kind=%s(%d) dir=%s(%d) speed=%d", kind, kind_code, direction, key_code,
       speed);
  SetPayload({kind_code, key_code, LowByte(speed)});
  return 0;
}

int ZoomSwitchOperation::Parse(const char* params) {
  ShortText direction;
  std::int32_t speed = 0;
  if (!ReadParameters(params, "Direction", direction, "Speed", speed)) {
    return -1;
  }
  DLOG(2, "##### ZoomSwitchOperation Parse() Zoom=%s Spead=%d", direction, speed);
  const std::uint8_t code = ZoomDirection(direction);
  DLOG(2, "send param dir=%s(%d) speed=%d", direction, code, speed);
  SetPayload({code, LowByte(speed)});
  return 0;
}
