#include "core/fatal.h"

#include "core/dlog.h"
#include "core/os.h"

void Fatal(const char* message) {
  DLOG(1, "%s", message);
  os::Exit(1);
}
