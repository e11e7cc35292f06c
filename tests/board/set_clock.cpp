// Sets the board's clock, also beyond 2038, which the 32-bit busybox cannot.
//
//   board_set_clock SECONDS   since 1970
#include <cstdio>
#include <cstdlib>
#include <ctime>

int main(int argc, char** argv) {
  timespec now = {};
  now.tv_sec = argc == 2 ? std::strtoll(argv[1], nullptr, 10) : 0;
  if (now.tv_sec <= 0 || clock_settime(CLOCK_REALTIME, &now) != 0) {
    std::fprintf(stderr, "usage, as root: %s SECONDS\n", argv[0]);
    return 2;
  }
}
