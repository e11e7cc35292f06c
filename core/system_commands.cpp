#include "core/bytes.h"
#include "core/cmd/system.h"
#include "core/dlog.h"
#include "core/name_table.h"
#include "core/parameters.h"
#include "core/session.h"
#include "status/camera_status_block.h"
#include "status/names.h"

namespace {

constexpr char api_version[50] = "1.08.0";

constexpr NameTable<12> kModelNames = {{"RV130/140", "RV110", "RV120", "RV130", "RV140", "RV150",
                                        "RV160", "RV170", "RV180", "RV190", "RV210", "RV220"},
                                       "RV130/140"};

// Two destination codes deliberately share the name "EY".
constexpr NameTable<18> kDestinations = {{"JP", "US", "KR", "EU", "ER", "AC", "AA", "AG", "TW",
                                          "AS", "UC", "UA", "UB", "EZ", "EY", "EK", "EY", "AH"},
                                         "UN"};

}  // namespace

int SessionRenewal::Parse(const char* params) {
  DLOG(2, "##### SessionRenewal Parse() params=%s", params);
  return ReadParameter(params, "Update", update_) ? 0 : -1;
}

void SessionRenewal::Transmit() {
  constexpr std::int64_t kLifetimeSeconds = 30;
  if (!RenewSession(update_ != 0 ? kLifetimeSeconds : 0)) {
    result_ = 1;
  }
}

void GetSystemInfo::Output() {
  using namespace camera_status;
  const CameraStatusBlock block;
  JsonWriter& data = AddData();
  data.Text("Model", kModelNames[block[kModel]]);
  data.Text("Destination", kDestinations[block[kDestination]]);
  data.Text("ApiVersion", api_version);
  data.Text("Serial", block[kSerial]);
  Command::Output();
}

void HeartbeatConfirmation::Output() {
  const camera_status::CameraStatusBlock block;
  JsonWriter& data = AddData();
  // The camera's video output cannot be switched off.
  data.Text("VideoOutput", "On");
  data.Text("StudioTally", GetStrStudioTally(block[camera_status::kStudioTally]));
  Command::Output();
}

int PageChange::Parse(const char* params) {
  std::int32_t page = 0;
  if (!ReadParameter(params, "Page", page)) {
    return -1;
  }
  SetPayload({LowByte(page)});
  return 0;
}

void PageChange::Output() {
  const camera_status::CameraStatusBlock block;
  JsonWriter& data = AddData();
  data.BeginObject("AllowedPage");
  data.Number("PlanningMetadata", Reply()[S8Field{1}]);
  data.Number("EditMetadata", Reply()[S8Field{2}]);
  data.Number("ViewRemote", Reply()[S8Field{3}]);
  data.Number("CameraControl", block[camera_status::kCameraControlAllowed]);
  data.Number("Setting", Reply()[S8Field{4}]);
  data.EndObject();
  Command::Output();
}
