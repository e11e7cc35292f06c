#include "core/simulated_responders.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "core/dlog.h"
#include "core/line_reader.h"
#include "core/os.h"
#include "core/text.h"
#include "core/text_builder.h"

namespace {

constexpr char kCamStatusPath[] = "/srv/www/htdocs/cam_status";
constexpr char kClipInfoPath[] = "/srv/www/htdocs/clip_info";

// Files.

/// @return false if the file could not be read to its end
bool ReadAll(const os::Descriptor& file, TextBuilder& contents) {
  char block[1024];
  std::size_t size = 0;
  while (contents.Length() < os::kMaxFile && os::Read(file, block, sizeof block, size)) {
    if (size == 0) {
      return true;
    }
    contents.Append({block, size});
  }
  return false;
}

void ReadLocked(const char* path, TextBuilder& contents) {
  const os::Descriptor file = os::OpenForReading(path);
  if (file.IsOpen() && os::Lock(file)) {
    ReadAll(file, contents);
  }
}

/// Removes the first line from `rest`, which must not be empty, and returns it with its line feed.
std::string_view TakeLine(std::string_view& rest) {
  const std::size_t end = std::min(rest.find('\n'), rest.size() - 1);
  const std::string_view line(rest.data(), end + 1);
  rest.remove_prefix(end + 1);
  return line;
}

/// Removes the first word from `rest` and returns it; empty if there is none.
std::string_view TakeWord(const char*& rest) {
  const std::string_view word = ValueAfterKey(rest, "");
  rest = word.data() + word.size();
  return word;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// Removes the first number and the separators before it from `rest`; 0 if there is none.
std::uint32_t TakeNumber(std::string_view& rest) {
  while (!rest.empty() && !IsDigit(rest.front())) {
    rest.remove_prefix(1);
  }
  std::uint32_t number = 0;
  for (; !rest.empty() && IsDigit(rest.front()); rest.remove_prefix(1)) {
    number = number * 10 + static_cast<std::uint32_t>(rest.front() - '0');
  }
  return number;
}

/// Packs "01:23:45:16" in the camera's format; a "." before the frames marks drop frame.
std::uint32_t PackTimeCode(std::string_view text) {
  constexpr std::uint32_t kDropFrame = 0x80;
  std::uint32_t packed = text.find('.') != std::string_view::npos ? kDropFrame : 0;
  for (const int shift : {24, 16, 8, 0}) {
    const std::uint32_t number = TakeNumber(text);
    packed |= ((number / 10 % 10) << 4 | number % 10) << shift;
  }
  return packed;
}

// The camera's status.

/// A key of the status file, and the field of the status reply for its value.
struct StatusKey {
  template <typename Number>
  constexpr StatusKey(const char* name, NumberField<Number> field)
      : key(name), offset(field.offset), width(sizeof(Number)) {}

  const char* key;
  std::size_t offset;
  std::size_t width;  ///< in bytes; four bytes are a time code
};

constexpr StatusKey kStatusKeys[] = {
    {"Status", status_reply::kRecording},
    {"Mode", status_reply::kCameraMode},
    {"RecMode", status_reply::kRecordingMode},
    {"ZoomStatus", status_reply::kZooming},
    {"ZoomPosition", status_reply::kZoomPosition},
    {"TC", status_reply::kTimeCode},
    {"BatteryInfo", status_reply::kBatteryInfo},
    {"BatteryLevel", status_reply::kBatteryLevel},
    {"BatteryValue", status_reply::kBatteryValue},
    // Misspelled; existing files have this key.
    {"SlotAStauts", status_reply::kSlotA.status},
    {"SlotAProtect", status_reply::kSlotA.protect},
    {"SlotARemain", status_reply::kSlotA.remain},
    {"SlotAClipNum", status_reply::kSlotA.clip_count},
    {"SlotBStauts", status_reply::kSlotB.status},
    {"SlotBProtect", status_reply::kSlotB.protect},
    {"SlotBRemain", status_reply::kSlotB.remain},
    {"SlotBClipNum", status_reply::kSlotB.clip_count},
    {"AspectRatio", status_reply::kAspectRatio},
    {"PlanningMetadataPage", status_reply::kPlanningMetadataAllowed},
    {"EditMetadataPage", status_reply::kEditMetadataAllowed},
    {"ViewRemotePage", status_reply::kViewRemoteAllowed},
    {"SettingPage", status_reply::kSettingAllowed},
};

const StatusKey* FindStatusKey(std::string_view name) {
  const auto* const found = std::find_if(std::begin(kStatusKeys), std::end(kStatusKeys),
                                         [name](const StatusKey& row) { return name == row.key; });
  return found != std::end(kStatusKeys) ? found : nullptr;
}

/// Puts the value of a line into the reply and appends it to `trace`. Lines with other keys are
/// ignored.
void TakeStatus(std::string_view line, ByteWriter reply, TextBuilder& trace) {
  const std::size_t separator = line.find('=');
  const StatusKey* const key =
      separator != std::string_view::npos ? FindStatusKey({line.data(), separator}) : nullptr;
  if (key == nullptr) {
    return;
  }
  char value[32];
  line.remove_prefix(separator + 1);
  CopyText(value, line);
  value[std::strcspn(value, "\r\n")] = '\0';
  reply.PutNumber(key->offset, key->width,
                  key->width == sizeof(std::uint32_t)
                      ? PackTimeCode(value)
                      : static_cast<std::uint32_t>(ParseInt32(value)));
  trace.Append(' ');
  trace.Append(key->key);
  trace.Append('=');
  trace.Append(value);
}

void ReadCamStatus(std::uint8_t (&reply)[status_reply::kSize], TextBuilder& trace) {
  std::memset(reply, 0, sizeof reply);
  TextBuilder contents;
  ReadLocked(kCamStatusPath, contents);
  std::string_view rest = contents.View();
  while (!rest.empty()) {
    TakeStatus(TakeLine(rest), {reply, sizeof reply}, trace);
  }
}

// Clips.

constexpr int kNoSlot = -1;

/// The slot that a section line begins.
int SlotOfSection(const char* line) {
  if (StartsWith(line, "[SlotA]")) {
    return 0;
  }
  return StartsWith(line, "[SlotB]") ? 1 : kNoSlot;
}

void PutClip(const char* line, std::uint32_t index, ByteWriter clip) {
  using namespace clip_record;
  clip.Put(kIndexNo, index);
  clip.Put(kName, TakeWord(line));
  clip.Put(kFirstTimeCode, PackTimeCode(TakeWord(line)));
  clip.Put(kLastTimeCode, PackTimeCode(TakeWord(line)));
  std::string_view date = TakeWord(line);
  clip.Put(kYear, TakeNumber(date));
  const std::uint32_t month = TakeNumber(date);
  clip.Put(kMonth, month > 0 ? month - 1 : 0);
  clip.Put(kDay, TakeNumber(date));
  std::string_view time = TakeWord(line);
  clip.Put(kHour, TakeNumber(time));
  clip.Put(kMinute, TakeNumber(time));
  clip.Put(kSecond, TakeNumber(time));
  clip.Put(kOkMark, TakeWord(line) == "Mark" ? 1 : 0);
  clip.Put(kAspectRatio, TakeWord(line) == "4:3" ? 1 : 0);
  clip.Put(kEditLock, TakeWord(line) == "Disable" ? 1 : 0);
}

/// Puts clips of a slot into the reply, from the one with the number `first`. The clips of a slot
/// are numbered from 1 in the order of their lines.
/// @return the number of clips, at most `most`
std::size_t ReadClips(int slot, std::uint32_t first, std::size_t most,
                      std::uint8_t (&reply)[kClipReplySize]) {
  TextBuilder contents;
  ReadLocked(kClipInfoPath, contents);
  int section = kNoSlot;
  std::uint32_t number = 0;
  std::size_t count = 0;
  for (std::string_view rest = contents.View(); !rest.empty() && count < most;) {
    char line[256];
    CopyText(line, TakeLine(rest));
    if (line[0] == '[') {
      section = SlotOfSection(line);
      number = 0;
    } else if (section == slot && !ValueAfterKey(line, "").empty() && ++number >= first) {
      PutClip(line, number, {reply + kReplyFirstClip + count * kClipRecordSize, kClipRecordSize});
      ++count;
    }
  }
  return count;
}

}  // namespace

void Dummy_GetCamStatus(std::uint8_t (&reply)[status_reply::kSize]) {
  TextBuilder trace;
  ReadCamStatus(reply, trace);
  DLOG(4, "Dummy_GetCamStatus%s", trace.Text());
}

std::size_t Dummy_GetClipInfo(ByteView request, std::uint8_t (&reply)[kClipReplySize]) {
  const int slot = request.U8(0);
  const std::uint16_t first = request[U16Field{2}];
  const std::uint16_t asked = request[U16Field{4}];
  DLOG(4, "Dummy_GetClipInfo slot=%d, start_index_num=%d, max_clip_num=%d", slot, first, asked);
  std::memset(reply, 0, sizeof reply);
  const std::size_t most = std::min<std::size_t>(asked, kClipsPerExchange);
  const std::size_t count = ReadClips(slot, first, most, reply);
  ByteWriter(reply, sizeof reply).Put(kReplyClipCount, static_cast<std::uint32_t>(count));
  return kReplyFirstClip + count * kClipRecordSize;
}

void Dummy_PageChange(ByteView /*request*/, std::uint8_t (&reply)[kPageReplySize]) {
  std::uint8_t status[status_reply::kSize];
  TextBuilder trace;
  ReadCamStatus(status, trace);
  const ByteView view(status, sizeof status);
  const std::int8_t permissions[] = {
      view[status_reply::kPlanningMetadataAllowed], view[status_reply::kEditMetadataAllowed],
      view[status_reply::kViewRemoteAllowed], view[status_reply::kSettingAllowed]};
  DLOG(4, "Page(PlanningMetadata=%d, EditMetadata=%d, ViewRemote=%d, Setting=%d)", permissions[0],
       permissions[1], permissions[2], permissions[3]);
  reply[0] = 0;
  std::memcpy(reply + 1, permissions, sizeof permissions);
}

void Dummy_SetZoomCtrl(std::int16_t position) {
  constexpr std::string_view kZoomKey = "Zoom=";
  DLOG(4, "pos=%d", position);
  const os::Descriptor file = os::OpenForUpdate(kCamStatusPath);
  TextBuilder before;
  if (!file.IsOpen() || !os::Lock(file) || !ReadAll(file, before)) {
    return;
  }
  TextBuilder after;
  std::string_view rest = before.View();
  while (!rest.empty()) {
    const std::string_view line = TakeLine(rest);
    if (StartsWith(line.data(), kZoomKey)) {
      after.Append(kZoomKey);
      after.AppendNumber(position);
      after.Append('\n');
    } else {
      after.Append(line);
    }
  }
  os::Rewrite(file, after.View());
}

void Dummy_SetClipInfo(ByteView request, std::uint8_t (&reply)[1]) {
  DLOG(4, "Slot=%d,IndexNo=%d,OKMark=%d\n", request.U8(0), request[U16Field{2}], request.U8(4));
  reply[0] = 0;
}

void Dummy_SetWebFtp(ByteView request, std::uint8_t (&reply)[2]) {
  reply[0] = 0;
  reply[1] = 0;
  DLOG(4, "Server=%d,Slot=%d\n", request.U8(0), request.U8(1));
}

double gettimeofday_sec() {
  constexpr double kMicrosecondsPerSecond = 1e6;
  return static_cast<double>(os::NowInMicroseconds()) / kMicrosecondsPerSecond;
}
