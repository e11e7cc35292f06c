// Writes the compiler's counters whenever a process of the product ends.
#include <sys/resource.h>

#include <initializer_list>

extern "C" {

[[noreturn]] void __real__exit(int status);
[[noreturn]] void __wrap__exit(int status);
void __gcov_dump();

/// Lifts the limits that a test has set for the handler: the counters need more.
[[gnu::destructor]] static void LiftLimits() {
  for (const auto resource : {RLIMIT_AS, RLIMIT_FSIZE, RLIMIT_NOFILE}) {
    rlimit limit = {};
    getrlimit(resource, &limit);
    limit.rlim_cur = limit.rlim_max;
    setrlimit(resource, &limit);
  }
}

/// The linker redirects calls of _exit to this function: _exit itself does not write the counters.
void __wrap__exit(int status) {
  LiftLimits();
  __gcov_dump();
  __real__exit(status);
}

}  // extern "C"
