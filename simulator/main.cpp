// The simulated camera: everything that the request handler talks to, for machines that have no
// camera.
#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <exception>

#include "simulator/control_interface.h"
#include "simulator/simulated_camera.h"

int main(int argc, char** argv) {
  try {
    simulator::Options options;
    CLI::App app(
        "A simulated camera: the daemons, the status block, the login component and the control "
        "interface that the request handler and its clients work with.");
    app.add_option("--session", options.session, "Session id of the client logged in at the start")
        ->capture_default_str();
    app.add_option("--session-lifetime", options.session_lifetime,
                   "How many seconds a session lasts without renewal");
    app.add_option("--serial", options.serial, "The camera's serial number");
    app.add_option("--name", options.name, "What to call the camera where requests are shown");
    app.add_option("--scenes", options.scenes, "Folder of the scenes")->capture_default_str();
    app.add_option("--scene", options.scene, "Scene to start in: a name, or a file");
    app.add_option("--journal", options.journal, "Append every request to this file");
    app.add_flag("--show-secrets", options.show_secrets,
                 "Show passwords and stream keys in the journal");
    app.add_flag("--quiet", options.quiet, "Show nothing of what happens");
    app.add_flag("--log", options.log, "Stand in for the system log and show what is logged");
    CLI11_PARSE(app, argc, argv);
    std::signal(SIGPIPE, SIG_IGN);
    simulator::SimulatedCamera camera(options);
    const simulator::ControlInterface interface(camera);
    camera.Run();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "simulated_camera: %s\n", error.what());
    return 1;
  }
  return 0;
}
