// The simulated camera's state: plain data, in which time does not pass by itself. What a member
// may hold, and its name for users, is in state_fields.cpp; what changes it is in the files of its
// subject.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/clips.h"
#include "simulator/time_code.h"

namespace simulator {

/// Camera time and durations are counted in milliseconds.
using Milliseconds = std::int64_t;

// The numbers of these enumerations are their places in the lists of words in state_fields.cpp.
enum class Mode { kCamera, kThumbnail, kPlay, kUsb, kEditMetadata };
enum class BatteryInfo { kTime, kCapacity, kVoltage };
enum class Card { kNone, kOk, kInvalid, kUnknown };
enum class RecordingStatus { kStop, kStandby, kRec, kRecPause };
enum class RecordingMode { kNormal, kPre, kClip, kFrame, kInterval };
enum class TimeCodeRun { kFreeRun, kRecRun };
enum class IrisMode { kManual, kAuto };
enum class GainMode { kManualL, kManualM, kManualH, kAlc, kLolux };
enum class ShutterMode { kOff, kManual, kEei, kStep, kVariable, kUnknown };
enum class WhiteBalanceMode { kPreset, kA, kB, kFaw };
enum class FocusMode { kAuto, kManual, kOnePush };
enum class FocusUnit { kMeters, kFeet };
enum class TallyControl { kCamera, kWeb };
enum class StudioTally { kOff, kProgram, kPreview };
enum class Adaptor { kOff, kNone, kMismatch, kWlanAp, kWlanP2p, kEthernet, kCellular };
enum class NtpStatus { kMaster, kNotSynchronized, kSynchronized, kUnknown };
enum class StreamingStatus { kStopped, kConnecting, kRunning, kReconnecting };

/// Which way something runs until it is told to stop.
enum class Direction { kStopped, kUp, kDown };

/// A value that a seesaw switch moves until it is released.
struct Travel {
  Direction direction = Direction::kStopped;
  int steps_per_second = 0;
  Milliseconds owed = 0;  ///< time since the last step, times the steps per second
};

/// The camera's own time, in which everything happens.
struct CameraClock {
  Milliseconds uptime = 0;  ///< since the camera was switched on
  /// The date and time at power-on, in seconds since 1970 in the camera's time zone.
  std::int64_t date_at_power_on = 0;
  bool paused = false;
  double speed = 1;  ///< camera time per real time
};

struct Pages {
  bool planning_metadata = true;
  bool edit_metadata = true;
  bool view_remote = true;
  bool camera_control = true;
  bool setting = true;
};

struct Battery {
  BatteryInfo info = BatteryInfo::kTime;
  int level = 5;
  int value = 137;
  Milliseconds since_drain = 0;
};

/// A card slot.
struct Slot {
  static constexpr Milliseconds kUnknown = -1;

  Card card = Card::kOk;
  bool write_protected = false;
  Milliseconds remain = 0;  ///< recording time that is left; `kUnknown`
  Clips clips;
};

struct Recording {
  static constexpr int kNoFormat = 255;

  RecordingStatus status = RecordingStatus::kStop;
  RecordingMode mode = RecordingMode::kNormal;
  int slot = 0;       ///< the selected one: 0 is A, 1 is B
  bool dual = false;  ///< records on both cards
  int format = 0;     ///< 0 to 11; `kNoFormat`
  bool four_to_three = false;
  // The clip that is being recorded.
  TimeCode first_frame{};
  Milliseconds in_status = 0;  ///< since the status changed
};

struct TimeCodeState {
  TimeCodeRun run = TimeCodeRun::kFreeRun;
  bool drop_frame = true;
  std::int64_t first_frame = 0;  ///< the frame at which it started to run
  Milliseconds elapsed = 0;      ///< how long it has run since
};

struct Light {
  int ev = 10;
  int kelvin = 5600;
};

struct Iris {
  IrisMode mode = IrisMode::kManual;
  int stop = 0;  ///< index into the list of stops
  Travel travel;
};

struct Gain {
  GainMode mode = GainMode::kManualL;
  std::array<int, 3> db{0, 9, 18};  ///< of the positions L, M and H
};

struct Exposure {
  int level = 0;      ///< AE level in thirds of a stop
  bool lock = false;  ///< AE lock: the automatic values stay as they are
  Light locked;       ///< the light when it was locked
};

struct Shutter {
  ShutterMode mode = ShutterMode::kManual;
  int step = 1;  ///< index into the list of speeds
  int variable_tenth_hz = 602;
};

struct WhiteBalance {
  WhiteBalanceMode mode = WhiteBalanceMode::kPreset;
  int preset_kelvin = 3200;
  int a_kelvin = 4300;
  int b_kelvin = 5600;
  int paint_red = 0;
  int paint_blue = 0;
};

struct Zoom {
  int position = 0;
  int target = 0;
  int speed = 0;  ///< positions per second
  Milliseconds owed = 0;
};

struct Focus {
  FocusMode mode = FocusMode::kManual;
  FocusUnit unit = FocusUnit::kMeters;
  int position = 0;
  int subject = 0;  ///< where the subject is sharp
  Travel travel;
  Milliseconds in_mode = 0;
};

struct Leveled {
  int level = 0;
  Travel travel;
};

struct Display {
  bool on = true;
  bool status_screen = false;
  bool menu = false;
  int information = 1;
  bool mix_sdi = true;
  bool mix_hdmi = false;
  bool mix_video = false;
};

struct UserSwitch {
  std::string label;
  bool on = false;
};

struct Tally {
  bool lamp = false;
  TallyControl control = TallyControl::kCamera;
  StudioTally studio = StudioTally::kOff;
};

struct Network {
  Adaptor adaptor = Adaptor::kEthernet;
  bool connected = true;
  bool web_access = true;
  bool link = true;  ///< a cable, or a radio network in reach
  Milliseconds connecting = 0;
};

struct Ntp {
  NtpStatus status = NtpStatus::kSynchronized;
  bool reachable = true;
  Milliseconds waiting = 0;
};

struct Gps {
  std::string antenna = "4";
  std::string location = "35.4437N 139.6380E";
};

struct Ifb {
  bool on = false;  ///< it plays while its server can be reached
  bool reachable = true;
};

struct Streaming {
  StreamingStatus status = StreamingStatus::kStopped;
  bool reachable = true;
  Milliseconds in_status = 0;
};

// What an upload is at, with the numbers of the camera status block.
enum class UploadPhase : std::uint8_t {
  kOff = 0,
  kStart = 1,
  kOccupySlot = 2,
  kClear = 3,
  kMount = 4,
  kParse = 5,
  kTrans = 6,
  kPutFile = 7,
  kUnnamed = 8,
  kTrust = 9,
  kPrompt = 10,
  kUnmount = 11,
  kReleaseSlot = 12,
  kRecover = 13,
  kResume = 14,
};

enum class ServerAnswer { kOk, kUnreachable, kLoginRefused, kNoSpace };

struct FtpServer {
  ServerAnswer answer = ServerAnswer::kOk;
  bool trusted = false;
  bool asks_to_overwrite = false;
  int key_type = 1;
  std::string key;  ///< hexadecimal digits
};

struct Upload {
  UploadPhase phase = UploadPhase::kOff;
  UploadPhase second_job = UploadPhase::kOff;
  int server = 0;
  int error = 0;
  std::vector<std::string> files;
  int file = 0;  ///< the one being sent, from 0
  Milliseconds in_phase = 0;
  std::array<FtpServer, 4> servers;
};

/// How far a step of the cloud client is. The numbers are those of the camera status block.
enum class CloudStep { kIdle = 0, kDoing = 1, kFinished = 2, kFailed = 3 };

/// Why a step failed. The numbers are those of the camera status block.
enum class CloudError {
  kNone = 0,
  kSsl = 1,
  kTimeout = 2,
  kAuthorization = 3,
  kServer = 4,
  kUrl = 5,
  kOther = 6
};

/// A broadcast that the service expects, and where to stream it to.
struct CloudEvent {
  std::string title;
  std::string url;
  std::string stream_key;
};

struct CloudProgress {
  CloudStep step = CloudStep::kIdle;
  CloudError outcome = CloudError::kNone;  ///< of the step in progress
  Milliseconds left = 0;
};

struct Cloud {
  static constexpr int kNoEvent = -1;

  CloudProgress login;
  CloudProgress event_list;
  CloudProgress stream_info;
  CloudError error = CloudError::kNone;
  CloudError service = CloudError::kNone;  ///< how the service answers; `kNone`: as it should
  std::string password;                    ///< the right one; empty: any that is not empty
  Milliseconds delay = 500;                ///< of each answer
  bool logged_in = false;
  bool has_events = false;
  int stream_event = kNoEvent;  ///< whose stream information is there
  int asked_event = 0;
  std::vector<CloudEvent> events;
};

struct State {
  int model = 3;
  int destination = 1;
  std::string serial = "13250042";
  std::string firmware = "1.08";
  CameraClock clock;
  Mode mode = Mode::kCamera;
  bool suspended = false;
  int page = 0;
  Pages pages;
  Battery battery;
  std::array<Slot, 2> slots;
  Recording recording;
  TimeCodeState time_code;
  bool full_auto = false;
  bool face_detection = false;
  Light light;
  Iris iris;
  Gain gain;
  Exposure ae;
  Shutter shutter;
  WhiteBalance white_balance;
  Zoom zoom;
  Focus focus;
  Leveled master_black;
  Leveled detail;
  Display display;
  std::array<UserSwitch, 12> user;  ///< Sw1 to Sw11, the lens return
  Tally tally;
  bool monitor = false;
  Network network;
  Ntp ntp;
  Gps gps;
  Ifb ifb;
  Streaming streaming;
  Upload upload;
  Cloud cloud;
};

/// The camera as it is switched on without a scene.
State DefaultState();

}  // namespace simulator
