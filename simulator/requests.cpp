#include "simulator/requests.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

namespace simulator {
namespace {

constexpr int kHttpOk = 200;
constexpr int kHttpInternalError = 500;
constexpr int kHttpGatewayTimeout = 504;

/// The value of the first member of a name, as the handler finds it: up to the first quote, comma
/// or brace.
std::string ValueIn(const std::string& text, std::string_view name) {
  const std::string member = '"' + std::string(name) + "\":";
  std::size_t at = text.find(member);
  if (at == std::string::npos) {
    return "";
  }
  at += member.size();
  if (at < text.size() && text[at] == '"') {
    ++at;
  }
  return text.substr(at, std::min(text.find_first_of("\",}", at), text.size()) - at);
}

/// What the web server answers.
int HttpStatus(const Outcome& outcome) {
  if (outcome.lost) {
    return kHttpGatewayTimeout;
  }
  return outcome.output.empty() ? kHttpInternalError : kHttpOk;
}

/// What follows the HTTP header.
std::string BodyOf(const std::string& output) {
  for (const std::string_view end : {"\r\n\r\n", "\n\n"}) {
    if (const std::size_t at = output.find(end); at != std::string::npos) {
      return output.substr(at + end.size());
    }
  }
  return "";
}

std::string HowItEnded(const Outcome& outcome) {
  if (WIFSIGNALED(outcome.status)) {
    return std::string("the handler was ended by a signal: ") + strsignal(WTERMSIG(outcome.status));
  }
  return "the handler ended with status " + std::to_string(WEXITSTATUS(outcome.status)) +
         " and without a reply";
}

std::string WhyWithoutReply(const RunningRequest& request, const Outcome& outcome) {
  if (outcome.lost) {
    return "the web server did not wait any longer";
  }
  if (!WIFSIGNALED(outcome.status) && request.request.method != "POST") {
    return "only POST requests are answered";
  }
  const bool could_connect =
      std::none_of(request.faults.begin(), request.faults.end(), KeepsFromConnecting);
  return HowItEnded(outcome) + (could_connect ? "" : ": it could not connect to a daemon");
}

std::string WhyDisabled(const RunningRequest& request) {
  for (auto message = request.messages.rbegin(); message != request.messages.rend(); ++message) {
    if (message->reply && !message->reply->empty() && message->reply->front() != 0) {
      return "the daemon " + message->daemon + " refused: " + message->decoded +
             (message->fault.empty() ? message->why.empty() ? "" : ": " + message->why
                                     : ", because of the fault \"" + message->fault + '"');
    }
  }
  if (request.command != "SessionRenewal") {
    return "the handler refused";
  }
  const auto fault = std::find_if(request.faults.begin(), request.faults.end(), KeepsFromWriting);
  return "the session file cannot be written" +
         (fault != request.faults.end() ? ", because of the fault \"" + fault->name + '"' : "");
}

std::string WhyRefused(const RunningRequest& request, const std::string& result,
                       const std::string& reply, const std::string& session) {
  const std::string& body = request.request.body;
  if (result == "FormatError") {
    return "the body holds no Command or no SessionID, or white space before them";
  }
  if (result == "SessionError") {
    if (std::any_of(request.faults.begin(), request.faults.end(), HidesTheSession)) {
      return "there is no session file, because of the fault \"no_session\"";
    }
    return session.empty() ? "no client is logged in"
                           : "\"" + ValueIn(body, "SessionID") + "\" is not the session's id";
  }
  if (result == "CommandError") {
    return "there is no command \"" + request.command + '"';
  }
  if (result == "RequestedError" && reply.find("\"Requested\"") == std::string::npos) {
    return "a parameter is missing, or has a value that the command does not take";
  }
  if (result == "RequestedError" || result == "DisableError") {
    return WhyDisabled(request);
  }
  return "";
}

}  // namespace

std::string CommandIn(const std::string& body) { return ValueIn(body, "Command"); }

Entry MakeEntry(const RunningRequest& request, const Outcome& outcome, const std::string& session) {
  Entry entry;
  entry.client = request.request.client;
  entry.method = request.request.method;
  entry.command = request.command;
  entry.request = request.request.body;
  entry.reply = BodyOf(outcome.output);
  entry.result = ValueIn(entry.reply, "Result");
  entry.status = HttpStatus(outcome);
  entry.ms = outcome.ms;
  entry.reason = outcome.output.empty() ? WhyWithoutReply(request, outcome)
                                        : WhyRefused(request, entry.result, entry.reply, session);
  for (const Fault& fault : request.faults) {
    entry.faults.push_back(fault.name);
  }
  entry.messages = request.messages;
  entry.log = request.log;
  return entry;
}

}  // namespace simulator
