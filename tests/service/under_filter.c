// Runs a program that may make only the named system calls; any other one kills it. Names that this
// architecture does not know are skipped.
//
//   under_filter NAME... -- PROGRAM [ARGUMENT...]
#include <seccomp.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

int main(int argc, char** argv) {
  scmp_filter_ctx filter = seccomp_init(SCMP_ACT_KILL_PROCESS);
  int i = 1;
  for (; i < argc && strcmp(argv[i], "--") != 0; ++i) {
    const int number = seccomp_syscall_resolve_name(argv[i]);
    if (number != __NR_SCMP_ERROR && number >= 0 &&
        seccomp_rule_add(filter, SCMP_ACT_ALLOW, number, 0) != 0) {
      fprintf(stderr, "under_filter: no rule for %s\n", argv[i]);
      return 2;
    }
  }
  if (i + 1 >= argc || seccomp_load(filter) != 0) {
    fprintf(stderr, "usage: %s NAME... -- PROGRAM [ARGUMENT...]\n", argv[0]);
    return 2;
  }
  seccomp_release(filter);
  execv(argv[i + 1], argv + i + 1);
  perror(argv[i + 1]);
  return 2;
}
