#include "harness/socket_thread.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <utility>

#include "harness/system_call.h"
#include "harness/unix_socket.h"

namespace harness {

SocketThread::SocketThread(std::string path, int type, int backlog)
    : path_(std::move(path)), socket_(BoundSocket(path_, type)) {
  Check(type != SOCK_STREAM || listen(socket_, backlog) == 0, "listen on " + path_);
  Check(pipe2(stop_pipe_, O_CLOEXEC) == 0, "pipe");
}

SocketThread::~SocketThread() {
  close(stop_pipe_[1]);
  if (thread_.joinable()) {
    thread_.join();
  }
  close(stop_pipe_[0]);
  close(socket_);
  unlink(path_.c_str());
}

void SocketThread::Start(std::function<void()> serve) { thread_ = std::thread(std::move(serve)); }

void SocketThread::StartForEach(std::function<void()> serve_one) {
  Start([this, serve_one = std::move(serve_one)] {
    constexpr int kNoTimeout = -1;
    pollfd events[] = {{socket_, POLLIN, 0}, {stop_pipe_[0], POLLIN, 0}};
    while (poll(events, 2, kNoTimeout) >= 0 && events[1].revents == 0) {
      serve_one();
    }
  });
}

}  // namespace harness
