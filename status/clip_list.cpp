#include <algorithm>

#include "core/bytes.h"
#include "core/cmd/status.h"
#include "core/parameters.h"
#include "core/text.h"
#include "status/names.h"
#include "status/replies.h"

namespace {

using namespace clip_record;

void WriteTimeCodes(JsonWriter& data, ByteView clip) {
  char time_code[Command::kTimeCodeSize];
  TextBuilder& text = data.BeginText("TC");
  Command::MakeTCString(clip[kFirstTimeCode], time_code);
  text.Append(time_code);
  text.Append('-');
  Command::MakeTCString(clip[kLastTimeCode], time_code);
  text.Append(time_code);
  data.EndText();
}

void WriteDateTime(JsonWriter& data, ByteView clip) {
  TextBuilder& text = data.BeginText("DateTime");
  text.AppendNumber(clip[kYear], 4);
  text.Append('-');
  text.AppendNumber(clip[kMonth] + 1, 2);
  text.Append('-');
  text.AppendNumber(clip[kDay], 2);
  // Clients split the text at this space.
  text.Append(" T");
  text.AppendNumber(clip[kHour], 2);
  text.Append(':');
  text.AppendNumber(clip[kMinute], 2);
  text.Append(':');
  text.AppendNumber(clip[kSecond], 2);
  data.EndText();
}

void WriteClip(JsonWriter& data, ByteView clip) {
  data.BeginElement();
  data.Number("IndexNo", clip[kIndexNo]);
  data.Text("Name", clip[kName]);
  WriteTimeCodes(data, clip);
  WriteDateTime(data, clip);
  data.Text("OKMark", kOkMarkNames[clip[kOkMark]]);
  // Misspelled; clients know the aspect ratio by this key.
  data.Text("AspectRaotp", kClipAspectRatioNames[clip[kAspectRatio]]);
  data.Text("Edit", kClipEditNames[clip[kEditLock]]);
  data.EndObject();
}

}  // namespace

int GetClipInfo::Parse(const char* params) {
  char slot[2] = {};
  std::int32_t start_index = 0;
  std::int32_t clip_count = 0;
  if (!ReadParameters(params, "Slot", slot, "StartIndexNo", start_index, "ClipNum", clip_count) ||
      (slot[0] != 'A' && slot[0] != 'B')) {
    return -1;
  }
  slot_ = slot[0] == 'A' ? 0 : 1;
  start_index_ = TruncateToInt16(start_index);
  clip_count_ = TruncateToInt16(clip_count);
  if (start_index_ < 1) {
    return -2;
  }
  return clip_count_ < 1 ? -3 : 0;
}

void GetClipInfo::Transmit() {
  for (int asked = 0; asked < clip_count_ && !daemon_timed_out_; asked += kClipsPerExchange) {
    const auto first = static_cast<std::uint16_t>(start_index_ + asked);
    const auto count = static_cast<std::uint16_t>(std::min(clip_count_ - asked, kClipsPerExchange));
    SetPayload({slot_, 0, HighByte(first), LowByte(first), HighByte(count), LowByte(count)});
    Command::Transmit();
    const ByteView reply = Reply();
    const int received = std::min<int>(reply[kReplyClipCount], kClipsPerExchange);
    const std::size_t size = static_cast<std::size_t>(received) * kClipRecordSize;
    char* const records = clips_.Extend(size);
    for (std::size_t i = 0; i < size; ++i) {
      records[i] = static_cast<char>(reply.U8(kReplyFirstClip + i));
    }
  }
}

void GetClipInfo::Output() {
  const auto* const records = reinterpret_cast<const std::uint8_t*>(clips_.Text());
  const std::size_t count = clips_.Length() / kClipRecordSize;
  JsonWriter& data = AddData();
  data.Number("ClipNum", static_cast<std::int64_t>(count));
  data.BeginArray("ClipInfo");
  for (std::size_t clip = 0; clip < count; ++clip) {
    WriteClip(data, {records + clip * kClipRecordSize, kClipRecordSize});
  }
  data.EndArray();
  Command::Output();
}
