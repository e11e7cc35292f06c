// Request handler of the camera's web remote control. The camera's web server starts it once for
// every POST of the remote-control API. With arguments, it takes a request from the command line.
#include "core/cgi.h"
#include "core/command_line.h"
#include "core/dlog.h"
#include "core/os.h"

int main(int argc, const char** argv) {
  os::PrepareDescriptors();
  INIT_DLOG();
  // A web server may turn a query string into arguments: never treat those as a command line.
  const bool from_web_server = os::Environment("GATEWAY_INTERFACE") != nullptr;
  return argc > 1 && !from_web_server ? RunCommandLine(argc, argv) : ServeRequest();
}
