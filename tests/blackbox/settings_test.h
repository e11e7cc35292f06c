#pragma once

#include <cstdio>
#include <string>
#include <utility>

#include "harness/camera_test.h"

namespace harness {

/// The line that each renewal notice leaves in the log.
inline const LogLine kRenewalTrace = Info("##### RenewSetting socket_send_msg() renew_reconnect 0");

/// Base of the tests of one settings file and its commands.
class SettingsTest : public CameraTest {
 protected:
  explicit SettingsTest(std::string file) : file_(std::move(file)) {}

  /// The file has this content and a Get command reports this data.
  void ExpectReported(const std::string& command, const std::string& content,
                      const std::string& data) {
    SCOPED_TRACE("reported of " + content);
    WriteFile(file_, content);
    EXPECT_THAT(Post(Body(command)), Replied(DataJson(command, data)));
    EXPECT_EQ(ReadFile(file_), content) << "reading changes nothing";
  }

  /// A Set command succeeds, leaves the file with this content and sends one notice.
  void ExpectStored(const std::string& command, const std::string& params,
                    const std::string& content) {
    ExpectStoredBy(Body(command, params), command, content);
  }
  void ExpectStoredBy(const std::string& body, const std::string& command,
                      const std::string& content) {
    SCOPED_TRACE("stored by " + body);
    FakeDaemon daemon;
    EXPECT_THAT(Post(body), Replied(ResultJson(command)));
    EXPECT_EQ(ReadFile(file_), content);
    EXPECT_THAT(daemon.Received(), testing::ElementsAre(RenewalNotice()));
  }

  /// A Set command is refused because a parameter is missing: the file does not change, nothing
  /// is sent, and the refusal is logged.
  void ExpectMissing(const std::string& command, const std::string& params,
                     const std::string& missing) {
    SCOPED_TRACE(command + " without " + missing);
    log_.TakeLines();
    FakeDaemon daemon;
    WriteFile(file_, "kept\tas it is\n");
    const std::string body = Body(command, params);
    EXPECT_THAT(Post(body), Replied(ErrorJson("RequestedError")));
    EXPECT_EQ(ReadFile(file_), "kept\tas it is\n");
    EXPECT_THAT(daemon.Received(), testing::IsEmpty());
    EXPECT_THAT(log_.TakeLines(),
                Logged(Error("rcv post_data = " + body),
                       Error("error: json_parser() key [" + missing + "] does not appear\n"),
                       Error("requested error ret=-1, params=\"Params\":{" + params + "}}}")));
  }

  /// A Set command logs these lines between the traces of its request and its reply, all of them
  /// at level 2.
  void ExpectTraces(const std::string& command, const std::string& params, const LogLines& steps) {
    FakeDaemon daemon;
    const std::string body = Body(command, params);
    const LogLine request = Error("rcv post_data = " + body);
    const LogLine reply = Error("send res_str = " + ResultJson(command));
    for (const int level : {2, 1}) {
      SCOPED_TRACE("log level " + std::to_string(level));
      WriteFile(kLogLevelFile, "cmd=" + std::to_string(level) + "\n");
      std::remove(file_.c_str());
      log_.TakeLines();
      Post(body);
      LogLines lines = {request};
      if (level >= 2) {
        lines.insert(lines.end(), steps.begin(), steps.end());
      }
      lines.push_back(reply);
      EXPECT_EQ(log_.TakeLines(), lines);
    }
  }

  /// A write failure is ignored; an absent control daemon ends the request.
  void ExpectFailures(const std::string& command, const std::string& params,
                      const std::string& content) {
    const std::string body = Body(command, params);
    EXPECT_THAT(Post(body), EndedSilently(1));
    EXPECT_EQ(ReadFile(file_), content) << "the file must be written even without the daemon";

    WriteFile(file_, "kept\tas it is\n");
    const ReadOnly read_only(file_);
    FakeDaemon daemon;
    EXPECT_THAT(Post(body), Replied(ResultJson(command)));
    EXPECT_EQ(ReadFile(file_), "kept\tas it is\n");
    EXPECT_THAT(daemon.Received(), testing::ElementsAre(RenewalNotice()));
  }

  const std::string file_;
};

}  // namespace harness
