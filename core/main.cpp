// Request handler of the camera's web remote control. The camera's web server starts it once for
// every POST of the remote-control API; people start it with arguments to try it out.
#include "core/cgi.h"
#include "core/command_line.h"
#include "core/dlog.h"
#include "core/os.h"

int main(int argc, const char** argv) {
  os::PrepareDescriptors();
  INIT_DLOG();
  // Web servers may make arguments out of a query string; those are nobody's test.
  const bool from_web_server = os::Environment("GATEWAY_INTERFACE") != nullptr;
  return argc > 1 && !from_web_server ? RunCommandLine(argc, argv) : ServeRequest();
}
