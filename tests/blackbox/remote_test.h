#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "harness/camera_test.h"

namespace harness {

/// Base of the tests of commands that operate the camera: one message to the control daemon, one
/// reply without data.
class RemoteTest : public CameraTest {
 protected:
  struct Exchange {
    Outcome outcome;
    std::vector<std::string> messages;  // what the control daemon received
    LogLines lines;
  };

  /// Posts a request; the control daemon answers it with this result.
  Exchange Serve(const std::string& body, int result = 0) {
    FakeDaemon daemon(Answer(ReplyMessage(Bytes({result}))));
    Exchange exchange;
    exchange.outcome = Post(body);
    exchange.messages = daemon.Received();
    exchange.lines = log_.TakeLines();
    return exchange;
  }

  struct SentCase {
    const char* what;
    const char* params;
    std::string payload;
  };

  /// Each request is answered and makes one message of class 5 with this code and payload.
  void ExpectSent(const std::string& command, int code, std::initializer_list<SentCase> cases) {
    for (const SentCase& row : cases) {
      SCOPED_TRACE(command + ": " + row.what);
      const Exchange exchange = Serve(Body(command, row.params));
      EXPECT_THAT(exchange.outcome, Replied(ResultJson(command)));
      EXPECT_THAT(exchange.messages,
                  testing::ElementsAre(
                      Message(5, row.payload.size(), code, exchange.outcome.pid, row.payload)));
    }
  }

  struct RefusedCase {
    const char* what;
    const char* params;
  };

  /// Each request is refused and nothing reaches the control daemon.
  void ExpectRefused(const std::string& command, std::initializer_list<RefusedCase> cases) {
    for (const RefusedCase& row : cases) {
      SCOPED_TRACE(command + ": " + row.what);
      const Exchange exchange = Serve(Body(command, row.params));
      EXPECT_THAT(exchange.outcome, Replied(ErrorJson("RequestedError")));
      EXPECT_THAT(exchange.messages, testing::IsEmpty());
    }
  }

  /// The whole log of an answered request: the two traces around these lines.
  static LogLines Answered(const std::string& command, const std::string& params,
                           const LogLines& steps) {
    LogLines lines = {Error("rcv post_data = " + Body(command, params))};
    lines.insert(lines.end(), steps.begin(), steps.end());
    lines.push_back(Error("send res_str = " + ResultJson(command)));
    return lines;
  }

  /// The whole log of a refused request.
  static LogLines Refused(const std::string& command, const std::string& params,
                          const LogLines& steps) {
    LogLines lines = {Error("rcv post_data = " + Body(command, params))};
    lines.insert(lines.end(), steps.begin(), steps.end());
    lines.push_back(Error("requested error ret=-1, params=\"Params\":" + Tail(params)));
    return lines;
  }

  /// The text of a request after "Params": up to its end.
  static std::string Tail(const std::string& params) { return "{" + params + "}}}"; }

  /// The line for a missing parameter.
  static LogLine NotFound(const std::string& key) {
    return Error("error: json_parser() key [" + key + "] does not appear\n");
  }
};

}  // namespace harness
