#include "core/command_line.h"

#include <cstring>
#include <initializer_list>

#include "core/command_table.h"
#include "core/dispatch.h"
#include "core/dlog.h"
#include "core/os.h"
#include "core/text.h"
#include "core/text_builder.h"
#include "remote/event_table.h"

// clang-format off
const char* const INPUT_COMMAND[] = {
    /* 0 */  R"({"Request":{"Command":"GetCamStatus"}})",
    /* 1 */  R"({"Request":{"Command":"SetCamCtrl","Params":{"CamCtrl":"Rec"}}})",
    /* 2 */  R"({"Request":{"Command":"SetCamCtrl","Params":{"CamCtrl":"Stop"}}})",
    /* 3 */  "",
    /* 4 */  "",
    /* 5 */  R"({"Request":{"Command":"MonitorStart"}})",
    /* 6 */  R"({"Request":{"Command":"MonitorStop"}})",
    /* 7 */  R"({"Request":{"Command":"GetImportMetadeta"}})",
    /* 8 */  "",
    /* 9 */  "",
    /* 10 */ "",
    /* 11 */ R"({"Request":{"Command":"GetClipInfo","Params":{"Slot":"%c","StartIndexNo":%d,"ClipNum":%d}}})",
    /* 12 */ "",
    /* 13 */ "",
    /* 14 */ R"({"Request":{"Command":"SetZoomCtrl","Params":{"Position":%d}})",
    /* 15 */ R"({"Request":{"Command":"PageChange","Params":{"Page":%d}})",
    /* 16 */ R"({"Request":{"Command":"SetClipInfo","Params":{"Slot":"%c","IndexNo":%d,"OKMark":"%s"}}})",
    /* 17 */ R"({"Request":{"Command":"SetWebKeyEvent","Params":{"Kind":"%s","Key":"%s"}}})",
    /* 18 */ R"({"Request":{"Command":"SetWebSliderEvent","Params":{"Kind":"%s","Position":%d}}})",
    /* 19 */ R"({"Request":{"Command":"SetWebXYFieldEvent","Params":{"Kind":"%s","XPosition":%d,"YPosition":%d}}})",
    /* 20 */ R"({"Request":{"Command":"ResetSettingData"}})",
    /* 21 */ "",
};
// clang-format on

std::uint8_t g_bCmdLine = 0;

namespace {

// The numbers whose requests take arguments.
enum { kClipList = 11, kZoom = 14, kPage, kClipMark, kKeyEvent, kSlider, kXYField, kWhole = 100 };

/// The arguments after the program's name. Argument 0 is the number of the canned request.
struct Arguments {
  /// Null if there is no such argument.
  [[nodiscard]] const char* Text(int index) const { return index < count ? texts[index] : nullptr; }
  /// 0 if there is no such argument.
  [[nodiscard]] std::int32_t Number(int index) const {
    return index < count ? ParseInt32(texts[index]) : 0;
  }

  int count;
  const char* const* texts;
};

/// Appends a canned request whose directives are replaced by the values, in order.
void Fill(const char* canned, std::initializer_list<std::string_view> values,
          TextBuilder& request) {
  for (const std::string_view value : values) {
    const std::size_t length = std::strcspn(canned, "%");
    request.Append({canned, length});
    request.Append(value);
    constexpr std::size_t kDirectiveLength = 2;
    canned += length + kDirectiveLength;
  }
  request.Append(canned);
}

const RemoteEvent& FindKind(std::int32_t kind) {
  return FindRemoteEvent([kind](const RemoteEvent& event) { return event.kind_code == kind; });
}

const char* Outcome(const RemoteEvent& event) {
  return event.kind_code != 0 ? "Hit!!!" : "Request is None!!!";
}

void BuildKeyEvent(const Arguments& arguments, TextBuilder& request) {
  const std::int32_t kind = arguments.Number(1);
  const std::int32_t key = arguments.Number(2);
  DLOG(1, "console nKind=%d nKey=%d", kind, key);
  const RemoteEvent& event = FindRemoteEvent(
      [kind, key](const RemoteEvent& row) { return row.kind_code == kind && row.key_code == key; });
  DLOG(1, "console %s eventTable[%d] kind=%s key=%s", Outcome(event), IndexOf(event), event.kind,
       event.key);
  if (event.kind_code != 0) {
    Fill(INPUT_COMMAND[kKeyEvent], {event.kind, event.key}, request);
  }
}

void BuildSlider(const Arguments& arguments, TextBuilder& request) {
  const std::int32_t kind = arguments.Number(1);
  const std::int32_t position = arguments.Number(2);
  DLOG(1, "console nKind=%d nPosition=%d", kind, position);
  const RemoteEvent& event = FindKind(kind);
  DLOG(1, "console %s eventTable[%d] kind=%s Pos=%d", Outcome(event), IndexOf(event), event.kind,
       position);
  if (event.kind_code != 0) {
    Fill(INPUT_COMMAND[kSlider], {event.kind, DecimalText(position).View()}, request);
  }
}

void BuildXYField(const Arguments& arguments, TextBuilder& request) {
  const std::int32_t kind = arguments.Number(1);
  const std::int32_t x = arguments.Number(2);
  const std::int32_t y = arguments.Number(3);
  DLOG(1, "console nKind=%d nXPosition=%d nYPosition=%d", kind, x, y);
  const RemoteEvent& event = FindKind(kind);
  DLOG(1, "console %s eventTable[%d] kind=%s XPos=%d YPos=%d", Outcome(event), IndexOf(event),
       event.kind, x, y);
  if (event.kind_code != 0) {
    Fill(INPUT_COMMAND[kXYField], {event.kind, DecimalText(x).View(), DecimalText(y).View()},
         request);
  }
}

const char* SlotName(const char* argument) {
  return argument != nullptr && std::strcmp(argument, "a") == 0 ? "A" : "B";
}

void BuildClipList(const Arguments& arguments, TextBuilder& request) {
  // Start index and count are given together or not at all.
  const bool has_range = arguments.count > 3;
  const std::int32_t start = has_range ? arguments.Number(2) : 0;
  const std::int32_t count = has_range ? arguments.Number(3) : 0;
  Fill(INPUT_COMMAND[kClipList],
       {SlotName(arguments.Text(1)), DecimalText(start).View(), DecimalText(count).View()},
       request);
}

void BuildClipMark(const Arguments& arguments, TextBuilder& request) {
  const bool marked = arguments.Text(3) == nullptr || arguments.Number(3) != 0;
  Fill(INPUT_COMMAND[kClipMark],
       {SlotName(arguments.Text(1)), DecimalText(arguments.Number(2)).View(),
        marked ? "Mark" : "NoMark"},
       request);
}

void BuildWholeRequest(const Arguments& arguments, TextBuilder& request) {
  if (const char* const text = arguments.Text(1)) {
    request.Append({text, strnlen(text, kTextSize - 1)});
  }
}

bool HasCannedRequest(std::int32_t number) {
  return number >= 0 && number < static_cast<std::int32_t>(kInputCommandCount);
}

/// Numbers that are reserved: they have no request.
bool IsReserved(std::int32_t number) { return number >= 108 && number <= 117; }

void BuildRequest(std::int32_t number, const Arguments& arguments, TextBuilder& request) {
  switch (number) {
    case kClipList:
      return BuildClipList(arguments, request);
    case kZoom:
    case kPage:
      return Fill(INPUT_COMMAND[number], {DecimalText(arguments.Number(1)).View()}, request);
    case kClipMark:
      return BuildClipMark(arguments, request);
    case kKeyEvent:
      return BuildKeyEvent(arguments, request);
    case kSlider:
      return BuildSlider(arguments, request);
    case kXYField:
      return BuildXYField(arguments, request);
    case kWhole:
      return BuildWholeRequest(arguments, request);
    default:
      return request.Append(HasCannedRequest(number) ? INPUT_COMMAND[number] : "");
  }
}

/// Copies the command name from a request that begins with it; otherwise the name is empty.
template <std::size_t Size>
void ReadCommandName(const char* request, char (&name)[Size]) {
  constexpr std::string_view kLead = "{\"Request\":{\"Command\":\"";
  name[0] = '\0';
  if (StartsWith(request, kLead)) {
    const char* const first = request + kLead.size();
    CopyText(name, {first, std::strcspn(first, "\"")});
  }
}

}  // namespace

int RunCommandLine(int argc, const char* const* argv) {
  const Arguments arguments = {argc - 1, argv + 1};
  const std::int32_t number = arguments.Number(0);
  if (!HasCannedRequest(number) && number != kWhole && !IsReserved(number)) {
    os::WriteErrors("camera_remote.cgi: the first argument is 0 to 21, 100 or 108 to 117\n");
    return 1;
  }
  if (number != kWhole) {
    LogToSystem(kLogInfo, "INPUT_COMMAND(%d):%s", number,
                HasCannedRequest(number) ? INPUT_COMMAND[number] : "");
  }
  TextBuilder request;
  BuildRequest(number, arguments, request);
  DLOG(1, "CMD post_data = %s", request.Text());
  g_bCmdLine = 1;
  char name[256];
  ReadCommandName(request.Text(), name);
  return Dispatch(FindCommand(name), name, request.Text());
}
