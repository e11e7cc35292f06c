#include "harness/handler.h"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <utility>

#include "harness/files.h"

namespace harness {
namespace {

using testing::AllOf;
using testing::Field;

std::string Quoted(const std::string& text) { return '"' + text + '"'; }

std::string RequestJson(const std::string& members) { return "{\"Request\":{" + members + "}}"; }

std::string CommandMember(const std::string& command) { return "\"Command\":" + Quoted(command); }

std::string SessionMember(const std::string& session) {
  return ",\"SessionID\":" + Quoted(session);
}

std::string ParamsMember(const std::string& params) { return ",\"Params\":{" + params + "}"; }

std::string ResponseJson(const std::string& members) { return "{\"Response\":{" + members + "}}"; }

std::string ResultMembers(const std::string& command, const std::string& result) {
  return "\"Requested\":" + Quoted(command) + ",\"Result\":" + Quoted(result);
}

/// Equality of texts that may be long: a mismatch is shown with the text around it.
MATCHER_P(IsText, expected, testing::PrintToString(expected)) {
  constexpr std::size_t kContext = 60;
  const auto [ours, theirs] =
      std::mismatch(arg.begin(), arg.end(), expected.begin(), expected.end());
  if (ours == arg.end() && theirs == expected.end()) {
    return true;
  }
  const auto offset = static_cast<std::size_t>(ours - arg.begin());
  const std::size_t start = offset - std::min(offset, kContext);
  *result_listener << "which differs at byte " << offset << ": "
                   << testing::PrintToString(arg.substr(start, 2 * kContext)) << " instead of "
                   << testing::PrintToString(expected.substr(start, 2 * kContext));
  return false;
}

}  // namespace

Request::Request(std::string body) : body_(std::move(body)), piece_size_(body_.size()) {
  environment_ = {
      {"GATEWAY_INTERFACE", "CGI/1.1"},     {"SERVER_PROTOCOL", "HTTP/1.1"},
      {"REQUEST_METHOD", "POST"},           {"REQUEST_URI", "/cgi-bin/camera_remote.cgi"},
      {"CONTENT_TYPE", "application/json"}, {"CONTENT_LENGTH", std::to_string(body_.size())}};
}

Request Request::CommandLine(std::vector<std::string> arguments) {
  Request request("");
  request.environment_.clear();
  return request.Arguments(std::move(arguments));
}

Request& Request::Set(const std::string& variable, const std::string& value) {
  environment_[variable] = value;
  return *this;
}

Request& Request::Remove(const std::string& variable) {
  environment_.erase(variable);
  return *this;
}

Request& Request::Arguments(std::vector<std::string> arguments) {
  arguments_ = std::move(arguments);
  return *this;
}

Request& Request::StandardInput(Input input) {
  input_ = input;
  return *this;
}

Request& Request::InPieces(std::size_t size, std::chrono::milliseconds pause) {
  piece_size_ = size;
  piece_pause_ = pause;
  return *this;
}

Request& Request::StandardOutput(Output output) {
  output_ = output;
  return *this;
}

Request& Request::LimitMemory(std::size_t bytes) {
  memory_limit_ = bytes;
  return *this;
}

Request& Request::LimitFileSize(std::size_t bytes) {
  file_size_limit_ = bytes;
  has_file_size_limit_ = true;
  return *this;
}

Request& Request::WithoutPrivileges() {
  has_privileges_ = false;
  return *this;
}

Request& Request::LimitDescriptors(std::size_t count) {
  descriptor_limit_ = count;
  return *this;
}

Request& Request::Refuse(long system_call, int error) {
  refused_call_ = system_call;
  refusal_ = error;
  return *this;
}

Request& Request::KillAt(long system_call) {
  last_call_ = system_call;
  return *this;
}

Request& Request::Deadline(std::chrono::seconds deadline) {
  deadline_ = deadline;
  return *this;
}

std::ostream& operator<<(std::ostream& stream, const Outcome& outcome) {
  return stream << "exit status " << outcome.exit_status << ", signal " << outcome.signal
                << ", after " << outcome.elapsed.count()
                << " s\nstandard output: " << testing::PrintToString(outcome.output)
                << "\nstandard error: " << testing::PrintToString(outcome.errors);
}

std::string Body(const std::string& command) { return BodyWithSession(command, kSession); }

std::string Body(const std::string& command, const std::string& params) {
  return BodyWithSession(command, kSession, params);
}

std::string BodyWithSession(const std::string& command, const std::string& session) {
  return RequestJson(CommandMember(command) + SessionMember(session));
}

std::string BodyWithSession(const std::string& command, const std::string& session,
                            const std::string& params) {
  return RequestJson(CommandMember(command) + SessionMember(session) + ParamsMember(params));
}

std::string BodyWithoutSession(const std::string& command) {
  return RequestJson(CommandMember(command));
}

std::string BodyWithoutSession(const std::string& command, const std::string& params) {
  return RequestJson(CommandMember(command) + ParamsMember(params));
}

std::string ResultJson(const std::string& command, const std::string& result) {
  return ResponseJson(ResultMembers(command, result));
}

std::string DataJson(const std::string& command, const std::string& data,
                     const std::string& result) {
  return ResponseJson(ResultMembers(command, result) + ",\"Data\":{" + data + "}");
}

std::string ErrorJson(const std::string& result) {
  return ResponseJson("\"Result\":" + Quoted(result));
}

std::string Reply(const std::string& json) {
  return "Content-type: application/json\nPragma: no-cache\nCache-Control: no-cache\n"
         "Expires: Thu, 01 Dec 1994 16:00:00 GMT\nContent-Length:" +
         std::to_string(json.size()) + "\n\n" + json;
}

testing::Matcher<const Outcome&> Replied(const std::string& json, int exit_status) {
  return AllOf(Field("standard output", &Outcome::output, IsText(Reply(json))),
               Field("exit status", &Outcome::exit_status, exit_status),
               Field("standard error", &Outcome::errors, ""));
}

testing::Matcher<const Outcome&> EndedSilently(int exit_status) {
  return AllOf(Field("standard output", &Outcome::output, ""),
               Field("exit status", &Outcome::exit_status, exit_status),
               Field("standard error", &Outcome::errors, ""));
}

}  // namespace harness
