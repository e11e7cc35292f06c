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

/// The words of a line, one after the other; empty after the last one.
class Words {
 public:
  explicit Words(const char* line) : rest_(line) {}

  std::string_view Next() {
    const std::string_view word = ValueAfterKey(rest_, "");
    rest_ = word.data() + word.size();
    return word;
  }

 private:
  const char* rest_;
};

/// The numbers in a word, with any separators, one after the other; 0 after the last one.
class Numbers {
 public:
  explicit Numbers(std::string_view word) : rest_(word) {}

  std::uint32_t Next() {
    while (!rest_.empty() && !IsDigit(rest_.front())) {
      rest_.remove_prefix(1);
    }
    std::uint32_t number = 0;
    while (!rest_.empty() && IsDigit(rest_.front())) {
      number = number * 10 + static_cast<std::uint32_t>(rest_.front() - '0');
      rest_.remove_prefix(1);
    }
    return number;
  }

 private:
  static bool IsDigit(char c) { return c >= '0' && c <= '9'; }

  std::string_view rest_;
};

/// Packs "01:23:45:16" in the camera's format; a "." before the frames marks drop frame.
std::uint32_t PackTimeCode(std::string_view text) {
  constexpr std::uint32_t kDropFrame = 0x80;
  Numbers numbers(text);
  std::uint32_t packed = 0;
  for (int i = 0; i < 4; ++i) {
    const std::uint32_t number = numbers.Next();
    packed = packed << 8 | (number / 10 % 10) << 4 | number % 10;
  }
  return text.find('.') != std::string_view::npos ? packed | kDropFrame : packed;
}

// The camera's status.

/// A key of the status file, and the field of the status reply for its value.
struct StatusKey {
  constexpr StatusKey(const char* name, U8Field field) : key(name), offset(field.offset) {}
  constexpr StatusKey(const char* name, S8Field field) : key(name), offset(field.offset) {}
  constexpr StatusKey(const char* name, U16Field field)
      : key(name), offset(field.offset), width(2) {}
  /// Four bytes are a time code.
  constexpr StatusKey(const char* name, U32Field field)
      : key(name), offset(field.offset), width(4) {}

  const char* key;
  std::uint16_t offset;
  std::uint16_t width = 1;
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

std::uint32_t ValueOf(const StatusKey& key, const char* text) {
  constexpr std::size_t kTimeCodeWidth = 4;
  return key.width == kTimeCodeWidth ? PackTimeCode(text)
                                     : static_cast<std::uint32_t>(ParseInt32(text));
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
  reply.PutNumber(key->offset, key->width, ValueOf(*key, value));
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
  Words words(line);
  clip.Put(kIndexNo, index);
  clip.Put(kName, words.Next());
  clip.Put(kFirstTimeCode, PackTimeCode(words.Next()));
  clip.Put(kLastTimeCode, PackTimeCode(words.Next()));
  Numbers date(words.Next());
  clip.Put(kYear, date.Next());
  const std::uint32_t month = date.Next();
  clip.Put(kMonth, month > 0 ? month - 1 : 0);
  clip.Put(kDay, date.Next());
  Numbers time(words.Next());
  clip.Put(kHour, time.Next());
  clip.Put(kMinute, time.Next());
  clip.Put(kSecond, time.Next());
  clip.Put(kOkMark, words.Next() == "Mark" ? 1 : 0);
  clip.Put(kAspectRatio, words.Next() == "4:3" ? 1 : 0);
  clip.Put(kEditLock, words.Next() == "Disable" ? 1 : 0);
}

/// Iterates over the clips of one slot, which are numbered from 1 in the order of their lines.
class ClipFile {
 public:
  explicit ClipFile(int slot) : slot_(slot) {
    ReadLocked(kClipInfoPath, contents_);
    rest_ = contents_.View();
  }

  /// @return whether there is another clip
  bool Next() {
    while (!rest_.empty()) {
      CopyText(line_, TakeLine(rest_));
      if (line_[0] == '[') {
        section_ = SlotOfSection(line_);
        number_ = 0;
      } else if (section_ == slot_ && !Words(line_).Next().empty()) {
        ++number_;
        return true;
      }
    }
    return false;
  }

  [[nodiscard]] const char* Line() const { return line_; }
  [[nodiscard]] std::uint32_t Number() const { return number_; }

 private:
  int slot_;
  TextBuilder contents_;
  std::string_view rest_;
  int section_ = kNoSlot;
  std::uint32_t number_ = 0;
  char line_[256] = {};
};

}  // namespace

void Dummy_GetCamStatus(std::uint8_t (&reply)[status_reply::kSize]) {
  TextBuilder trace;
  ReadCamStatus(reply, trace);
  DLOG(4, "Dummy_GetCamStatus%s", trace.Text());
}

std::size_t Dummy_GetClipInfo(ByteView request, std::uint8_t (&reply)[kClipReplySize]) {
  const int slot = request.U8(0);
  const std::uint16_t first = request.U16BigEndian(2);
  const std::uint16_t asked = request.U16BigEndian(4);
  DLOG(4, "Dummy_GetClipInfo slot=%d, start_index_num=%d, max_clip_num=%d", slot, first, asked);
  std::memset(reply, 0, sizeof reply);
  const int most = std::min<int>(asked, kClipsPerExchange);
  std::uint32_t count = 0;
  std::size_t length = kReplyFirstClip;
  ClipFile clips(slot);
  while (static_cast<int>(count) < most && clips.Next()) {
    if (clips.Number() >= first) {
      PutClip(clips.Line(), clips.Number(), {reply + length, kClipRecordSize});
      length += kClipRecordSize;
      ++count;
    }
  }
  ByteWriter(reply, sizeof reply).Put(kReplyClipCount, count);
  return length;
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
  DLOG(4, "Slot=%d,IndexNo=%d,OKMark=%d\n", request.U8(0), request.U16BigEndian(2), request.U8(4));
  reply[0] = 0;
}

void Dummy_SetWebFtp(ByteView request, std::uint8_t (&reply)[2]) {
  reply[0] = 0;
  reply[1] = 0;
  DLOG(4, "Server=%d,Slot=%d\n", request.U8(0), request.U8(1));
}

double gettimeofday_sec() {
  constexpr double kMicrosecond = 1e-6;
  const os::TimeOfDay now = os::NowWithMicroseconds();
  return static_cast<double>(now.seconds) + now.microseconds * kMicrosecond;
}
