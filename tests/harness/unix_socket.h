#pragma once

#include <string>

namespace harness {

/// A Unix-domain socket of the given type (SOCK_STREAM, SOCK_DGRAM), bound to a path. An
/// existing file is removed. Closed on exec. Throws std::system_error.
int BoundSocket(const std::string& path, int type);

/// Connects a new socket without waiting. Returns it, or -1 with errno set.
int ConnectNonBlocking(const std::string& path, int type);

/// Connects a new stream socket, however long that takes. Throws std::system_error.
int ConnectedSocket(const std::string& path);

}  // namespace harness
