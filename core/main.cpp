// Request handler of the camera's web remote control. The camera's web server starts it once for
// every POST of the remote-control API.
#include "core/cgi.h"
#include "core/dlog.h"
#include "core/os.h"

int main() {
  os::PrepareDescriptors();
  INIT_DLOG();
  return ServeRequest();
}
