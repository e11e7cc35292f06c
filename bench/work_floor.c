/* The floor under a request with work: the system calls of a status request and nothing else. It
 * reads the body and the session, asks the control daemon, reads the status block, and answers. */
#include <fcntl.h>
#include <stddef.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

static char buffer[4096];

static void ReadFile(const char* path, off_t start, size_t size) {
  const int file = open(path, O_RDONLY);
  if (pread(file, buffer, size, start) < 0) _exit(1);
  close(file);
}

int main(void) {
  static const char kRequest[12] = {0, 5};
  static const char kReply[3000] = "Content-type: application/json\n\n";
  static const struct sockaddr_un kDaemon = {AF_UNIX, "/var/run/quonta_cp.sock"};
  if (read(STDIN_FILENO, buffer, sizeof buffer) < 0) return 1;
  ReadFile("/var/tmp/lighttpd/.session", 0, sizeof buffer);
  const int daemon = socket(AF_UNIX, SOCK_STREAM, 0);
  if (connect(daemon, (const struct sockaddr*)&kDaemon, sizeof kDaemon) != 0) return 1;
  if (write(daemon, kRequest, sizeof kRequest) != sizeof kRequest) return 1;
  if (recv(daemon, buffer, 50, MSG_WAITALL) != 50) return 1;
  close(daemon);
  ReadFile("/var/run/camera_memory", 0x1d400, 1024);
  return write(STDOUT_FILENO, kReply, sizeof kReply) == sizeof kReply ? 0 : 1;
}
