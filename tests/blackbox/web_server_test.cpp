// The handler under a real web server, with many simultaneous clients.
#include "harness/web_server.h"

#include <chrono>
#include <future>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>
#include <vector>

#include "harness/camera_test.h"

namespace {

using namespace harness;
using testing::HasSubstr;
using testing::StartsWith;

struct ClientRequest {
  std::string body;
  std::string requested;  // empty: the reply of a request that reaches no command
  std::string result;
  bool reaches_control_daemon;
};

// The daemons here refuse everything, so a result shows where it comes from.

ClientRequest Operation(const std::string& command, const std::string& params) {
  return {Body(command, params), command, "DisableError", true};
}

ClientRequest Question(const std::string& command, const std::string& params = "") {
  return {Body(command, params), command, "Success", false};
}

ClientRequest Setting(const std::string& command, const std::string& params) {
  return {Body(command, params), command, "Success", true};
}

ClientRequest Mistake(const std::string& body, const std::string& result) {
  return {body, "", result, false};
}

/// Commands of the camera, readers and writers of the same settings, and mistakes.
std::vector<ClientRequest> Mixture(const std::string& number) {
  return {
      Operation("SetZoomCtrl", "\"Position\":" + number),
      Operation("SetWebKeyEvent", R"("Kind":"Iris","Key":"Auto")"),
      Operation("GetCamStatus", ""),
      Operation("GetClipInfo", R"("Slot":"A","StartIndexNo":1,"ClipNum":1)"),
      {Body("SetCldstrmLogout"), "SetCldstrmLogout", "DisableError", false},
      Question("HeartbeatConfirmation"),
      Question("GetIFBSettings"),
      Question("GetNTPStatus"),
      Setting("SetNTPServer", "\"Address\":\"host" + number + '"'),
      Setting("SetNTPSettings", R"("TcSync":"Off")"),
      Question("GetStreamingSettings"),
      Question("GetCurrentStreamingServerID"),
      Setting("SetStreamingBitrate", R"("Bitrate":"12M")"),
      Setting("SetStreamingResolution", R"("Resolution":"640x360")"),
      Question("GetPresetZoomPosition"),
      Setting("SetPresetZoomPosition", "\"ID\":\"A\",\"Position\":" + number),
      Setting("SetStreamingServerSettingsRTSP",
              "\"ID\":1,\"Alias\":\"a\",\"Password\":\"" + number + '"'),
      Question("GetStreamingServerSettings", R"("ID":1)"),
      Mistake(Body("NoSuchCommand"), "CommandError"),
      Mistake(BodyWithSession("MonitorStart", "wrong"), "SessionError"),
  };
}

void ExpectReply(const HttpReply& reply, const ClientRequest& request) {
  SCOPED_TRACE(request.body + "\n" + reply.head + reply.body);
  EXPECT_THAT(reply.head, StartsWith("HTTP/1.0 200 OK\r\n"));
  EXPECT_THAT(reply.head, HasSubstr("\r\nContent-type: application/json\r\n"));
  EXPECT_THAT(reply.head,
              HasSubstr("\r\nContent-Length: " + std::to_string(reply.body.size()) + "\r\n"));
  const nlohmann::json json = nlohmann::json::parse(reply.body, nullptr, false);
  ASSERT_FALSE(json.is_discarded());
  const nlohmann::json response = json.value("Response", nlohmann::json::object());
  EXPECT_EQ(response.value("Requested", ""), request.requested);
  EXPECT_EQ(response.value("Result", ""), request.result);
}

/// Posts all requests at the same moment.
std::vector<HttpReply> PostAtOnce(const std::vector<ClientRequest>& requests) {
  std::promise<void> start;
  const std::shared_future<void> started = start.get_future().share();
  std::vector<std::future<HttpReply>> clients;
  for (const ClientRequest& request : requests) {
    clients.push_back(std::async(std::launch::async, [&request, started] {
      started.wait();
      return WebServer::Post(request.body);
    }));
  }
  start.set_value();
  std::vector<HttpReply> replies;
  for (std::future<HttpReply>& client : clients) {
    replies.push_back(client.get());
  }
  return replies;
}

class WebServerTest : public CameraTest {};

TEST_F(WebServerTest, Serves200ClientsAtOnceAndLeavesNothingBehind) {
  const std::string refusal = ReplyMessage(Bytes({2}) + std::string(63, '\0'));
  const ConcurrentDaemon control(kControlSocket, refusal);
  const ConcurrentDaemon streaming(kStreamingSocket, refusal);
  WebServer server;
  std::vector<ClientRequest> requests;
  std::size_t messages = 0;
  for (int round = 0; round < 10; ++round) {
    for (const ClientRequest& request : Mixture(std::to_string(100 + round))) {
      requests.push_back(request);
      messages += request.reaches_control_daemon ? 1 : 0;
    }
  }
  ASSERT_EQ(requests.size(), 200U);

  const std::vector<HttpReply> replies = PostAtOnce(requests);
  for (std::size_t i = 0; i < requests.size(); ++i) {
    ExpectReply(replies[i], requests[i]);
  }
  EXPECT_EQ(control.Received(), messages);
  EXPECT_EQ(streaming.Received(), 10U);
  EXPECT_EQ(WebServer::HandlerErrors(), "");

  EXPECT_TRUE(server.AwaitChildren()) << "processes or zombies are left behind";
  EXPECT_TRUE(server.Stop()) << "the web server hangs";
  EXPECT_TRUE(WebServer::AwaitOrphans()) << "processes are left behind";
}

// The handler itself would wait for the daemon for 20 s. The limit leaves an emulated one the time
// to send its message.
TEST_F(WebServerTest, EndsAnAbandonedHandlerAtItsLimit) {
  FakeDaemon control;
  const std::string limit = IsEmulated() ? "12" : "5";
  WebServer server("cgi.limits = (\"read-timeout\" => " + limit + ", \"write-timeout\" => " +
                   limit + ")\n");
  WebServer::PostAndLeave(Body("GetClipInfo", R"("Slot":"A","StartIndexNo":1,"ClipNum":1)"));
  const auto start = std::chrono::steady_clock::now();
  while (control.Received().empty()) {
    ASSERT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  const auto received = std::chrono::steady_clock::now();
  EXPECT_TRUE(server.AwaitChildren()) << "processes or zombies are left behind";
  EXPECT_LT(std::chrono::steady_clock::now() - received, std::chrono::seconds(19));
}

}  // namespace
