// The whole road of a request: body, files, camera status block and daemons all come from one
// fuzzer input.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "core/cgi.h"
#include "core/dlog.h"
#include "core/session.h"
#include "os_memory.h"

namespace {

constexpr char kSessionId[] = "fuzz";

constexpr const char* kCommands[] = {
    "MonitorStart",
    "MonitorStop",
    "SetZoomCtrl",
    "GetCamStatus",
    "SetCamCtrl",
    "GetClipInfo",
    "SetClipInfo",
    "PageChange",
    "SetWebKeyEvent",
    "SetWebSliderEvent",
    "SetWebXYFieldEvent",
    "GetGPSInfo",
    "SetWebFtpUploadAll",
    "SetWebFtpUploadOkMarked",
    "SetWebFtp1UploadASelect",
    "SetWebFtp4UploadBSelect",
    "WebFtpOperateResponse",
    "SetWebButtonEvent",
    "GetSystemInfo",
    "SetStreamingCtrl",
    "SessionRenewal",
    "GetPresetZoomPosition",
    "SetPresetZoomPosition",
    "GetStreamingSettings",
    "SetStreamingSettings",
    "SetStreamingResolution",
    "SetStreamingFramerate",
    "SetStreamingBitrate",
    "GetStreamingServerSettings",
    "SetStreamingServerSettingsUDP",
    "SetStreamingServerSettingsRTSP",
    "SetStreamingServerSettingsZIXI",
    "SetStreamingServerSettingsRTMP",
    "SetStreamingServerSettingsRTP",
    "GetCurrentStreamingServerID",
    "SetCurrentStreamingServerID",
    "AvailableStreamingResolutionSettings",
    "AvailableStreamingFramerateSettings",
    "AvailableStreamingBitrateSettings",
    "SetTallyLampPriority",
    "SetTallyLampCtrl",
    "JpegEncode",
    "SetCldstrmLogin",
    "SetCldstrmLogout",
    "SetCldstrmEventListObtain",
    "GetCldstrmEventList",
    "SetCldstrmStreamInfoObtain",
    "SetCldstrmStreamInfoToStrmsrv",
    "SetCldstrmClearStatus",
    "SetIFBCtrl",
    "GetIFBSettings",
    "SetIFBSettings",
    "ZoomSwitchOperation",
    "SeesawSwitchOperation",
    "HeartbeatConfirmation",
    "SetTallyControlWithPriority",
    "SystemRequest",
    "SetStudioTally",
    "SetStudioTallyWithoutSession",
    "GetNTPStatus",
    "SetNTPServer",
    "SetNTPSettings",
};

constexpr const char* kFiles[] = {
    "ntp",    "ifb",      "web_zoom_preset", "streaming", "streaming_server0", "streaming_server1",
    "cgilog", ".session",
};

void Require(bool condition) {
  if (!condition) {
    std::abort();
  }
}

/// Either text of the fuzzer's own, or a well-formed request of a known command whose parameters
/// are the fuzzer's.
std::string RequestText(FuzzedDataProvider& data) {
  if (data.ConsumeIntegralInRange(0, 7) == 0) {
    return data.ConsumeRandomLengthString();
  }
  std::string text = "{\"Request\":{\"Command\":\"";
  text += data.PickValueInArray(kCommands);
  text += "\",\"SessionID\":\"";
  text += kSessionId;
  text += '"';
  if (data.ConsumeBool()) {
    text += ",\"Params\":{" + data.ConsumeRandomLengthString() + "}";
  }
  return text + "}}";
}

/// A reply whose announced length is true, too long or too short, and that may end anywhere.
std::string ReplyBytes(FuzzedDataProvider& data) {
  const std::string payload = data.ConsumeRandomLengthString();
  const auto announced = data.ConsumeBool() ? static_cast<std::uint16_t>(payload.size())
                                            : data.ConsumeIntegral<std::uint16_t>();
  std::string reply(12, '\0');
  reply[2] = static_cast<char>(announced & 0xFF);
  reply[3] = static_cast<char>(announced >> 8);
  reply += payload;
  if (data.ConsumeIntegralInRange(0, 7) == 0) {
    reply.resize(data.ConsumeIntegralInRange<std::size_t>(0, reply.size()));
  }
  return reply;
}

fuzz::World BuildWorld(FuzzedDataProvider& data) {
  fuzz::World world;
  world.environment["REQUEST_METHOD"] = "POST";
  world.files["/var/tmp/lighttpd/.session"] = std::string("ID\t") + kSessionId + "\n";
  world.input = RequestText(data);
  world.environment["CONTENT_LENGTH"] = data.ConsumeIntegralInRange(0, 7) == 0
                                            ? data.ConsumeRandomLengthString(12)
                                            : std::to_string(world.input.size());
  for (const char* file : kFiles) {
    if (data.ConsumeIntegralInRange(0, 3) == 0) {
      world.files[std::string("/var/tmp/lighttpd/") + file] = data.ConsumeRandomLengthString();
    }
  }
  world.files_are_writable = data.ConsumeIntegralInRange(0, 7) != 0;
  world.now = data.ConsumeIntegral<std::int64_t>() / 4;
  for (int connections = data.ConsumeIntegralInRange(0, 24); connections > 0; --connections) {
    fuzz::Conversation conversation;
    conversation.accepts = data.ConsumeIntegralInRange(0, 15) != 0;
    conversation.takes_message = data.ConsumeIntegralInRange(0, 15) != 0;
    conversation.reply = ReplyBytes(data);
    world.conversations.push_back(std::move(conversation));
  }
  world.memory = data.ConsumeRemainingBytesAsString();
  return world;
}

/// A process that ends normally has printed one whole reply whose announced length is true.
void CheckReply(const std::string& output) {
  const std::size_t blank = output.find("\n\n");
  const std::size_t length = output.find("Content-Length:");
  Require(blank != std::string::npos && length < blank);
  Require(std::stoul(output.substr(length + 15)) == output.size() - blank - 2);
  Require(output.compare(blank + 2, 13, "{\"Response\":{") == 0);
  Require(output.compare(output.size() - 2, 2, "}}") == 0);
}

/// Every message begins with a header; only a bare header may announce more than it brings.
void CheckMessages(const std::vector<std::string>& messages) {
  for (const std::string& message : messages) {
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(message[i]); };
    Require(message.empty() || message.size() >= 12);
    Require(message.size() <= 12 || message.size() == 12U + byte(2) + 256U * byte(3));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider data(bytes, size);
  fuzz::TheWorld() = BuildWorld(data);
  g_log_level_limit = 3;
  web_id[0] = '\0';

  bool ended_early = false;
  try {
    INIT_DLOG();
    ServeRequest();
  } catch (const fuzz::Exited& exited) {
    Require(exited.status == 1);
    ended_early = true;
  }
  if (ended_early) {
    Require(fuzz::TheWorld().output.empty());
  } else {
    CheckReply(fuzz::TheWorld().output);
  }
  CheckMessages(fuzz::TheWorld().messages);
  return 0;
}
