#include "harness/refusal.h"

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace harness {
namespace {

bool Filter(long number, std::uint32_t action) {
  sock_filter filter[] = {
      {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)},
      {BPF_JMP | BPF_JEQ | BPF_K, 0, 1, static_cast<std::uint32_t>(number)},
      {BPF_RET | BPF_K, 0, 0, action},
      {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
  };
  const sock_fprog program = {std::size(filter), filter};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

}  // namespace

bool RefuseSystemCall(long number, int error) {
  return Filter(number, SECCOMP_RET_ERRNO | static_cast<std::uint32_t>(error));
}

bool EndAtSystemCall(long number) { return Filter(number, SECCOMP_RET_KILL_PROCESS); }

}  // namespace harness
