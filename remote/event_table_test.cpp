#include "remote/event_table.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>

#include "harness/remote_events.h"
#include "harness/system_log.h"

namespace {

using harness::Info;
using harness::kRemoteEventRows;
using harness::Logged;
using harness::RemoteEventRow;

/// A code that no row has, to detect a lookup that does not set an output.
constexpr std::uint8_t kUntouched = 99;

struct KeyCodes {
  int result = 0;
  std::uint8_t kind_code = kUntouched;
  std::uint8_t key_code = kUntouched;
};

KeyCodes LookUp(const char* kind, const char* key) {
  KeyCodes codes;
  codes.result = getIndexOfKeyEvent(kind, key, codes.kind_code, codes.key_code);
  return codes;
}

KeyCodes LookUp(const char* kind) {
  KeyCodes codes;
  codes.result = getIndexOfSliderEvent(kind, codes.kind_code);
  return codes;
}

TEST(EventTable, HasEveryRowAtItsPlace) {
  ASSERT_EQ(std::size(kRemoteEventRows), 134U);
  ASSERT_EQ(std::size(eventTable), 134U);
  for (const RemoteEventRow& expected : kRemoteEventRows) {
    SCOPED_TRACE(expected.row);
    const RemoteEvent& event = eventTable[static_cast<std::size_t>(expected.row)];
    EXPECT_STREQ(event.kind, expected.kind);
    EXPECT_EQ(event.kind_code, expected.kind_code);
    EXPECT_STREQ(event.key, expected.key);
    EXPECT_EQ(event.key_code, expected.key_code);
  }
}

TEST(EventTable, RowsAre62BytesWithNulPaddedNames) {
  EXPECT_EQ(sizeof(RemoteEvent), 62U);
  EXPECT_EQ(offsetof(RemoteEvent, kind), 0U);
  EXPECT_EQ(offsetof(RemoteEvent, kind_code), 30U);
  EXPECT_EQ(offsetof(RemoteEvent, key), 31U);
  EXPECT_EQ(offsetof(RemoteEvent, key_code), 61U);
  using Name = char[30];
  for (const RemoteEvent& event : eventTable) {
    for (const Name* name : {&event.kind, &event.key}) {
      const std::string bytes(*name, sizeof *name);
      const std::string text(*name);
      EXPECT_EQ(bytes, text + std::string(sizeof *name - text.size(), '\0'));
    }
  }
}

TEST(GetIndexOfKeyEvent, FindsEveryPairAndLogsItsRow) {
  harness::SystemLog log;
  for (const RemoteEventRow& expected : kRemoteEventRows) {
    if (expected.kind_code == 0) {
      continue;
    }
    SCOPED_TRACE(expected.row);
    const KeyCodes codes = LookUp(expected.kind, expected.key);
    EXPECT_EQ(codes.result, 0);
    EXPECT_EQ(codes.kind_code, expected.kind_code);
    EXPECT_EQ(codes.key_code, expected.key_code);
    EXPECT_THAT(log.TakeLines(),
                Logged(Info("command Hit!!! eventTable[" + std::to_string(expected.row) +
                            "] kind=" + expected.kind + " button=" + expected.key)));
  }
}

TEST(GetIndexOfKeyEvent, StopsAtTheLastRowOnAMiss) {
  const struct {
    const char* what;
    const char* kind;
    const char* key;
  } cases[] = {
      {"kind in lower case", "iris", "Close3"},
      {"key in lower case", "Iris", "close3"},
      {"key of another kind", "Rec", "Close3"},
      {"prefix of a kind", "Iri", "Close3"},
      {"prefix of a key", "Iris", "Close"},
      {"kind with a tail", "Iris ", "Close3"},
      {"display key that the menu does not offer", "Menu", "On"},
      {"lens return as the status report spells it", "User", "LenzRet"},
      {"bar with a key", "ZoomBar", "Stop"},
      {"kind without its key", "Iris", ""},
      {"key without its kind", "", "Close3"},
      {"nothing", "", ""},
      {"end row's kind alone", "None", ""},
      {"end row's key alone", "", "None"},
  };
  harness::SystemLog log;
  for (const auto& row : cases) {
    SCOPED_TRACE(row.what);
    const KeyCodes codes = LookUp(row.kind, row.key);
    EXPECT_EQ(codes.result, -1);
    EXPECT_EQ(codes.kind_code, 0);
    EXPECT_EQ(codes.key_code, 255);
    EXPECT_THAT(log.TakeLines(),
                Logged(Info("command Request is None!!! eventTable[133] kind=None button=None")));
  }
}

TEST(GetIndexOfKeyEvent, FindsTheLastRowButFails) {
  harness::SystemLog log;
  const KeyCodes codes = LookUp("None", "None");
  EXPECT_EQ(codes.result, -1);
  EXPECT_EQ(codes.kind_code, 0);
  EXPECT_EQ(codes.key_code, 255);
  EXPECT_THAT(log.Lines(), Logged(Info("command Hit!!! eventTable[133] kind=None button=None")));
}

TEST(GetIndexOfSliderEvent, TakesTheFirstRowOfEachKind) {
  const struct {
    const char* kind;
    int kind_code;
    int row;
  } cases[] = {
      {"Rec", 1, 0},
      {"Fullauto", 2, 2},
      {"Iris", 3, 4},
      {"Gain", 4, 13},
      {"AeLevel", 5, 21},
      {"Shutter", 6, 25},
      {"Whb", 7, 32},
      {"Zoom", 8, 42},
      {"Focus", 9, 48},
      {"MasterBlack", 25, 58},
      {"User", 10, 64},
      {"Disptv", 11, 76},
      {"Menu", 11, 90},
      {"Tally", 14, 99},
      {"StudioTally", 15, 105},
      {"Streaming", 13, 108},
      {"IFBStreaming", 24, 110},
      {"Detail", 16, 112},
      {"ZoomBar", 17, 114},
      {"FocusBar", 18, 115},
      {"IrisBar", 19, 116},
      {"WhPaintR", 20, 117},
      {"WhPaintB", 21, 118},
      {"WhPaintRB", 22, 119},
      {"IrisSeesaw", 27, 120},
      {"ZoomSeesaw", 26, 123},
      {"MasterBlackSeesaw", 28, 126},
      {"FocusSeesaw", 29, 129},
      {"System", 30, 132},
  };
  harness::SystemLog log;
  for (const auto& row : cases) {
    SCOPED_TRACE(row.kind);
    const KeyCodes codes = LookUp(row.kind);
    EXPECT_EQ(codes.result, 0);
    EXPECT_EQ(codes.kind_code, row.kind_code);
    EXPECT_THAT(log.TakeLines(), Logged(Info("command Hit!!! eventTable[" +
                                             std::to_string(row.row) + "] kind=" + row.kind)));
  }
}

TEST(GetIndexOfSliderEvent, StopsAtTheLastRowOnAMiss) {
  harness::SystemLog log;
  for (const char* const kind : {"zoombar", "Zoombar", "ZoomBar1", "ZoomBa", "Open1", ""}) {
    SCOPED_TRACE(kind);
    const KeyCodes codes = LookUp(kind);
    EXPECT_EQ(codes.result, -1);
    EXPECT_EQ(codes.kind_code, 0);
    EXPECT_THAT(log.TakeLines(),
                Logged(Info("command Request is None!!! eventTable[133] kind=None")));
  }
}

TEST(GetIndexOfSliderEvent, FindsTheLastRowButFails) {
  harness::SystemLog log;
  const KeyCodes codes = LookUp("None");
  EXPECT_EQ(codes.result, -1);
  EXPECT_EQ(codes.kind_code, 0);
  EXPECT_THAT(log.Lines(), Logged(Info("command Hit!!! eventTable[133] kind=None")));
}

}  // namespace
