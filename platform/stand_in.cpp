// Stand-in for the camera's platform library, for machines without camera firmware: the shared
// memory is a file, written by the simulated camera or the tests.
#include <fcntl.h>
#include <unistd.h>

#include "platform/read_data.h"

int read_data(std::uint32_t base, std::uint32_t address, std::uint32_t length, void* buffer) {
  constexpr char kSharedAreaImage[] = "/var/run/camera_memory";
  if (address < base) {
    return -1;
  }
  const int file = open(kSharedAreaImage, O_RDONLY);
  if (file < 0) {
    return -1;
  }
  const off_t start = static_cast<off_t>(address - base);
  std::uint32_t copied = 0;
  while (copied < length) {
    const ssize_t count =
        pread(file, static_cast<char*>(buffer) + copied, length - copied, start + copied);
    if (count <= 0) {
      break;
    }
    copied += static_cast<std::uint32_t>(count);
  }
  close(file);
  return copied == length ? 0 : -1;
}
