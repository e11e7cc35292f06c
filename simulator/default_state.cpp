#include <string_view>

#include "simulator/state.h"
#include "simulator/values.h"

namespace simulator {
namespace {

constexpr std::int64_t kPowerOn = 1777887000;  // 2026-05-04T09:30:00
constexpr std::int64_t kFirstFrame = 107892;   // 01:00:00.00 in drop frame
constexpr Milliseconds kMinute = 60000;

constexpr std::string_view kUserLabels[] = {
    "Focus Assist", "Zebra",   "Marker",      "Stabiliser", "Black Stretch", "Rec Review",
    "Clip Review",  "AE Lock", "Face Detect", "Colour Bar", "None",          "Return Video"};

constexpr std::string_view kServerKeys[] = {
    "254A6F94B9DE03284D7297BCE1062B50759ABFE4", "658AAFD4F91E43688DB2D7FC21466B90B5DAFF24",
    "A5CAEF14395E83A8CDF2173C6186ABD0F51A3F64", "E50A2F54799EC3E80D32577CA1C6EB10355A7FA4"};

}  // namespace

State DefaultState() {
  State state;
  state.clock.date_at_power_on = kPowerOn;
  state.slots[0] = {Card::kOk, false, 95 * kMinute, RecordedClips('A', 12)};
  state.slots[1] = {Card::kOk, false, 120 * kMinute, RecordedClips('B', 33)};
  state.time_code.first_frame = kFirstFrame;
  state.iris.stop = 6;         // F2.8
  state.shutter.step = 2;      // 1/100
  state.focus.position = 800;  // 2.5 m
  state.focus.subject = 900;   // 5 m
  for (std::size_t i = 0; i < state.user.size(); ++i) {
    state.user[i].label = kUserLabels[i];
  }
  for (std::size_t i = 0; i < state.upload.servers.size(); ++i) {
    state.upload.servers[i].key = kServerKeys[i];
  }
  state.cloud.events = {
      {"Morning news", "rtmp://ingest.example/live", "morn-4821-aaaa"},
      {"City council, \"open house\"", "rtmp://ingest.example/live", "city-7730-bbbb"},
      {"Cup final", "rtmp://sport.example/app", "cupf-1166-cccc"},
  };
  return state;
}

}  // namespace simulator
