#include "harness/web_server.h"

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cctype>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "harness/files.h"
#include "harness/handler.h"
#include "harness/unix_socket.h"

namespace harness {
namespace {

namespace fs = std::filesystem;

constexpr char kProgram[] = "/usr/sbin/lighttpd";
constexpr char kFolder[] = "/run/web_server";
constexpr char kSocket[] = "/run/web_server/socket";
constexpr char kConfiguration[] = "/run/web_server/lighttpd.conf";
constexpr char kHandler[] = "/run/web_server/camera_remote.cgi";
constexpr char kHandlerErrors[] = "/run/web_server/errors";

/// Waits for up to half a minute, which a busy machine may need.
template <typename Condition>
bool Await(Condition condition) {
  for (int attempt = 0; attempt < 3000; ++attempt) {
    if (condition()) {
      return true;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

void WriteConfiguration(const std::string& settings) {
  WriteFile(kConfiguration,
            std::string() + "server.modules = (\"mod_cgi\")\n" + "server.bind = \"" + kSocket +
                "\"\n" + "server.document-root = \"" + kFolder + "\"\n" + "server.errorlog = \"" +
                kFolder + "/log\"\n" + "server.breakagelog = \"" + kHandlerErrors + "\"\n" +
                "cgi.assign = (\".cgi\" => \"\")\n" + settings);
}

/// The handler, with its emulator if it needs one, under the name that the web server knows.
void WriteHandler() {
  std::string line = "#!/bin/sh\nexec";
  for (const std::string& word : HandlerCommand()) {
    line += " '" + word + "'";
  }
  WriteFile(kHandler, line + "\n");
  fs::permissions(kHandler, fs::perms::owner_all);
}

bool Accepts() {
  const int socket = ConnectNonBlocking(kSocket, SOCK_STREAM);
  if (socket >= 0) {
    close(socket);
  }
  return socket >= 0;
}

/// The parent of a process; 0 if the process has ended.
pid_t ParentOf(const std::string& process) {
  std::ifstream stat("/proc/" + process + "/stat");
  std::string line;
  std::getline(stat, line);
  // The name, in parentheses, may contain anything; after it come the state and the parent.
  const std::size_t end_of_name = line.rfind(')');
  return end_of_name == std::string::npos ? 0 : std::stoi(line.substr(end_of_name + 4));
}

bool HasChildren(pid_t parent) {
  for (const auto& entry : fs::directory_iterator("/proc")) {
    const std::string name = entry.path().filename();
    if (std::isdigit(static_cast<unsigned char>(name.front())) != 0 && ParentOf(name) == parent) {
      return true;
    }
  }
  return false;
}

/// A connection over which a request has been sent.
int SendRequest(const std::string& body) {
  const int socket = ConnectedSocket(kSocket);
  const std::string request =
      "POST /camera_remote.cgi HTTP/1.0\r\nHost: camera\r\nContent-Type: application/json\r\n"
      "Content-Length: " +
      std::to_string(body.size()) + "\r\n\r\n" + body;
  send(socket, request.data(), request.size(), MSG_NOSIGNAL);
  return socket;
}

}  // namespace

WebServer::WebServer(const std::string& settings) {
  fs::create_directories(kFolder);
  WriteConfiguration(settings);
  WriteHandler();
  Start();
  if (!Await(Accepts)) {
    Stop();
    throw std::runtime_error(std::string(kProgram) + " does not start");
  }
}

void WebServer::Start() {
  prctl(PR_SET_CHILD_SUBREAPER, 1);
  pid_ = fork();
  if (pid_ == 0) {
    // Many handlers must not slow down tests that run in parallel and measure time.
    nice(19);
    execl(kProgram, kProgram, "-D", "-f", kConfiguration, nullptr);
    _exit(127);
  }
}

HttpReply WebServer::Post(const std::string& body) {
  const int socket = SendRequest(body);
  std::string reply;
  char buffer[65536];
  ssize_t length = 0;
  while ((length = recv(socket, buffer, sizeof buffer, 0)) > 0) {
    reply.append(buffer, static_cast<std::size_t>(length));
  }
  close(socket);
  const std::size_t end_of_head = reply.find("\r\n\r\n");
  if (end_of_head == std::string::npos) {
    return {reply, ""};
  }
  return {reply.substr(0, end_of_head + 2), reply.substr(end_of_head + 4)};
}

void WebServer::PostAndLeave(const std::string& body) { close(SendRequest(body)); }

bool WebServer::AwaitChildren() const {
  return Await([this] { return !HasChildren(pid_); });
}

bool WebServer::Stop() {
  if (pid_ == 0) {
    return true;
  }
  kill(pid_, SIGTERM);
  const bool has_ended = Await([this] { return waitpid(pid_, nullptr, WNOHANG) == pid_; });
  if (!has_ended) {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }
  pid_ = 0;
  return has_ended;
}

bool WebServer::AwaitOrphans() {
  return Await([] {
    pid_t ended = 0;
    do {
      ended = waitpid(-1, nullptr, WNOHANG);
    } while (ended > 0);
    return ended < 0;
  });
}

std::string WebServer::HandlerErrors() { return ReadFile(kHandlerErrors); }

}  // namespace harness
