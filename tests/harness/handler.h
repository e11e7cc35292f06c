#pragma once

#include <gmock/gmock.h>
#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

namespace harness {

/// How the standard input of the handler behaves.
enum class Input {
  kWhole,          // the body, then the end
  kHeldOpen,       // the body, and no end
  kEndless,        // the body, then more bytes without end
  kEndlessBlanks,  // the body, then white space without end
  kClosed,         // no descriptor at all
};

/// Where the standard output of the handler goes.
enum class Output {
  kPipe,
  kClosed,    // no descriptor at all
  kFull,      // a full device
  kNoReader,  // a pipe whose reader has gone
};

/// How the handler is started: like a web server starts it for a POST with this body, unless
/// changed. CONTENT_LENGTH is the length of the body unless it is set or removed.
class Request {
 public:
  explicit Request(std::string body);

  /// From a command line: these arguments, an empty environment and an empty standard input.
  static Request CommandLine(std::vector<std::string> arguments);

  Request& Set(const std::string& variable, const std::string& value);
  Request& Remove(const std::string& variable);
  Request& Arguments(std::vector<std::string> arguments);
  Request& StandardInput(Input input);
  /// The body arrives in pieces of this size, with a pause before each.
  Request& InPieces(std::size_t size, std::chrono::milliseconds pause);
  Request& StandardOutput(Output output);
  /// Address space for the handler (not enforced where an emulator or a sanitizer needs its own).
  Request& LimitMemory(std::size_t bytes);
  /// The longest file that the handler may write; writing more fails.
  Request& LimitFileSize(std::size_t bytes);
  /// File permissions apply to the handler although root starts it.
  Request& WithoutPrivileges();
  /// Descriptors that the handler may have, the standard streams included (not enforced where an
  /// emulator needs its own).
  Request& LimitDescriptors(std::size_t count);
  /// The system refuses this system call (SYS_flock and so on) with this error.
  Request& Refuse(long system_call, int error);
  /// The handler is killed (by SIGSYS) when it makes this system call, which is then not carried
  /// out. Not for an emulator.
  Request& KillAt(long system_call);
  /// After this time the handler is killed and the test fails; three times as long under emulation.
  Request& Deadline(std::chrono::seconds deadline);

 private:
  friend class Process;

  std::string body_;
  std::map<std::string, std::string> environment_;
  std::vector<std::string> arguments_;
  Input input_ = Input::kWhole;
  Output output_ = Output::kPipe;
  std::size_t piece_size_;
  std::chrono::milliseconds piece_pause_{0};
  std::size_t memory_limit_ = 0;
  std::size_t file_size_limit_ = 0;
  bool has_file_size_limit_ = false;
  bool has_privileges_ = true;
  std::size_t descriptor_limit_ = 0;
  long refused_call_ = -1;
  int refusal_ = 0;
  long last_call_ = -1;
  std::chrono::seconds deadline_{15};
};

/// How the handler ended and what it printed.
struct Outcome {
  int exit_status = -1;  // -1: ended by a signal
  int signal = 0;
  std::string output;  // standard output
  std::string errors;  // standard error
  pid_t pid = 0;
  std::chrono::duration<double> elapsed{0};
  /// The larger one of the handler and the test program that started it. To test that the handler
  /// needs little memory, use LimitMemory.
  long max_rss_kib = 0;
};

std::ostream& operator<<(std::ostream& stream, const Outcome& outcome);

/// Starts the handler and waits for its end. A sanitizer's report fails the test.
Outcome RunHandler(const Request& request);

/// The command that starts the handler: the binary that was built with the tests, or the one in the
/// environment variable CAMERA_BINARY. A binary for another processor is run by CAMERA_EMULATOR
/// ("qemu-arm-static" by default).
std::vector<std::string> HandlerCommand();

/// Whether the handler runs in an emulator: then times and sizes are those of the emulator.
bool IsEmulated();

/// The seconds that a request may take on a busy machine if nothing makes it wait. Where an
/// emulator or sanitizers make the handler slow, they exceed the time-outs of 5 s; the other builds
/// show that none is waited for.
double TimeMargin();

/// How often to repeat a case that is random or depends on timing: `times`, but only a tenth of it
/// where an emulator or sanitizers make the handler start ten times as slowly.
int Repetitions(int times);

/// The compact request text: {"Request":{"Command":"..","SessionID":"..","Params":{..}}}. Without
/// `params` there is no "Params" member; the session id is that of `CameraTest`.
std::string Body(const std::string& command);
std::string Body(const std::string& command, const std::string& params);
std::string BodyWithSession(const std::string& command, const std::string& session);
std::string BodyWithSession(const std::string& command, const std::string& session,
                            const std::string& params);
/// {"Request":{"Command":"..","Params":{..}}}
std::string BodyWithoutSession(const std::string& command);
std::string BodyWithoutSession(const std::string& command, const std::string& params);

/// The reply's JSON text with a result word, and with the text inside "Data":{..}.
std::string ResultJson(const std::string& command, const std::string& result = "Success");
std::string DataJson(const std::string& command, const std::string& data,
                     const std::string& result = "Success");
/// The reply of a request that reached no command: {"Response":{"Result":".."}}.
std::string ErrorJson(const std::string& result);

/// The standard output of a reply with this JSON text: HTTP header and text.
std::string Reply(const std::string& json);

/// The handler printed exactly this reply, nothing on standard error, and ended with this status.
testing::Matcher<const Outcome&> Replied(const std::string& json, int exit_status = 0);

/// The handler printed nothing and ended with this status.
testing::Matcher<const Outcome&> EndedSilently(int exit_status);

}  // namespace harness
