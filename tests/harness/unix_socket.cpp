#include "harness/unix_socket.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

#include "harness/system_call.h"

namespace harness {
namespace {

sockaddr_un Address(const std::string& path) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) {
    throw std::length_error("socket path too long: " + path);
  }
  path.copy(address.sun_path, path.size());
  return address;
}

// The socket interface takes every kind of address through a pointer to the generic one.
const sockaddr* Generic(const sockaddr_un& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

int NewSocket(int type) {
  const int descriptor = socket(AF_UNIX, type | SOCK_CLOEXEC, 0);
  Check(descriptor >= 0, "socket");
  return descriptor;
}

}  // namespace

int BoundSocket(const std::string& path, int type) {
  const sockaddr_un address = Address(path);
  const int descriptor = NewSocket(type);
  unlink(path.c_str());
  if (bind(descriptor, Generic(address), sizeof address) != 0) {
    const int error = errno;
    close(descriptor);
    throw std::system_error(error, std::generic_category(), "bind " + path);
  }
  return descriptor;
}

int ConnectNonBlocking(const std::string& path, int type) {
  const sockaddr_un address = Address(path);
  const int descriptor = NewSocket(type | SOCK_NONBLOCK);
  if (connect(descriptor, Generic(address), sizeof address) != 0) {
    const int error = errno;
    close(descriptor);
    errno = error;
    return -1;
  }
  return descriptor;
}

int ConnectedSocket(const std::string& path) {
  const sockaddr_un address = Address(path);
  const int descriptor = NewSocket(SOCK_STREAM);
  if (connect(descriptor, Generic(address), sizeof address) != 0) {
    const int error = errno;
    close(descriptor);
    throw std::system_error(error, std::generic_category(), "connect " + path);
  }
  return descriptor;
}

}  // namespace harness
