// Compares the handler with two floors: a program that does nothing, and a minimal one that makes
// the system calls of a status request. See docs/performance.md.
#include <sched.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "camera.h"
#include "process.h"

namespace {

using bench::Program;

/// A request that is measured, and the floor it belongs to.
struct Case {
  const char* title;
  const char* command;
  std::string params;
  bool on_work_floor;
  const char* expected;  // in the reply
};

std::string ClipParams(int count) {
  return R"("Slot":"A","StartIndexNo":1,"ClipNum":)" + std::to_string(count);
}

const std::vector<Case>& Cases() {
  static const std::vector<Case> cases = {
      {"HeartbeatConfirmation", "HeartbeatConfirmation", "", false, "Success"},
      {"CommandError", "NoSuchCommand", "", false, "CommandError"},
      {"GetSystemInfo", "GetSystemInfo", "", true, "Success"},
      {"GetCamStatus", "GetCamStatus", "", true, "Success"},
      {"SetWebKeyEvent", "SetWebKeyEvent", R"("Kind":"Iris","Key":"Close3")", true, "Success"},
      {"SetStreamingBitrate", "SetStreamingBitrate", R"("Bitrate":"12M")", true, "Success"},
      {"GetClipInfo, 15 clips", "GetClipInfo", ClipParams(15), true, "\"ClipNum\":15"},
      {"GetClipInfo, 300 clips", "GetClipInfo", ClipParams(300), true, "\"ClipNum\":300"},
  };
  return cases;
}

std::string Body(const Case& request) {
  const std::string params = request.params.empty() ? "" : ",\"Params\":{" + request.params + "}";
  return std::string(R"({"Request":{"Command":")") + request.command + R"(","SessionID":")" +
         bench::kSessionId + "\"" + params + "}}";
}

/// The programs of one build.
struct Build {
  std::string handler;
  std::string floor;
  std::string work_floor;
  std::vector<std::string> emulator;

  [[nodiscard]] Program Start(const std::string& path, std::string body) const {
    std::vector<std::string> command = emulator;
    command.push_back(path);
    return {command, std::move(body)};
  }
};

struct Spread {
  double p10;
  double median;
  double p90;
};

Spread SpreadOf(std::vector<double> times) {
  std::sort(times.begin(), times.end());
  const std::size_t tenth = times.size() / 10;
  return {times[tenth], times[times.size() / 2], times[times.size() - 1 - tenth]};
}

/// Floor and handler alternate, A B B A, so that other load on the machine affects both.
void MeasureTimes(const Build& build, int starts) {
  std::printf("%-24s %27s   %27s  ratio\n", "microseconds", "floor p10 median p90",
              "handler p10 median p90");
  for (const Case& request : Cases()) {
    const std::string body = Body(request);
    const Program a = build.Start(request.on_work_floor ? build.work_floor : build.floor, body);
    const Program b = build.Start(build.handler, body);
    std::vector<double> floor;
    std::vector<double> handler;
    for (int i = 0; i < starts; i += 2) {
      floor.push_back(Microseconds(a, ""));
      handler.push_back(Microseconds(b, request.expected));
      handler.push_back(Microseconds(b, request.expected));
      floor.push_back(Microseconds(a, ""));
    }
    const Spread f = SpreadOf(floor);
    const Spread h = SpreadOf(handler);
    std::printf("%-24s %8.1f %8.1f %8.1f    %8.1f %8.1f %8.1f    %.3f %s\n", request.title, f.p10,
                f.median, f.p90, h.p10, h.median, h.p90, h.median / f.median,
                request.on_work_floor ? "of the work floor" : "of the floor");
    std::fflush(stdout);
  }
}

/// The kernel maps more or fewer pages around a page that is used, depending on the layout of the
/// file in its cache. So this is the median of several copies of the program.
long PeakKib(const Build& build, const std::string& path, const std::string& body) {
  constexpr int kCopies = 9;
  const std::string copy = "/var/tmp/copy";
  std::vector<double> peaks;
  for (int i = 0; i < kCopies; ++i) {
    std::filesystem::remove(copy);
    std::filesystem::copy_file(path, copy);
    peaks.push_back(static_cast<double>(bench::CountCalls(build.Start(copy, body)).peak_kib));
  }
  return static_cast<long>(SpreadOf(peaks).median);
}

void MeasureCounts(const Build& build) {
  const Program nothing = build.Start(build.floor, "");
  const long floor = bench::Instructions(nothing);
  const long floor_peak = PeakKib(build, build.floor, "");
  std::printf("%-24s %13s %8s %13s %8s\n", "", "instructions", "over", "system calls", "KiB over");
  std::printf("%-24s %13ld %8s %13d %8ld (total)\n", "floor", floor, "",
              bench::CountCalls(nothing).system_calls, floor_peak);
  const auto show = [&](const char* title, const std::string& path, const std::string& body) {
    const Program program = build.Start(path, body);
    const long instructions = bench::Instructions(program);
    std::printf("%-24s %13ld %8ld %13d %8ld\n", title, instructions, instructions - floor,
                bench::CountCalls(program).system_calls, PeakKib(build, path, body) - floor_peak);
  };
  show("work floor", build.work_floor, Body(Cases().front()));
  for (const Case& request : Cases()) {
    show(request.title, build.handler, Body(request));
  }
}

/// Memory only: under an emulator, instructions and system calls would be those of the emulator.
void MeasureMemory(const Build& build) {
  const long floor = PeakKib(build, build.floor, "");
  std::printf("%-24s %8s\n%-24s %8ld\n", "emulated", "KiB", "floor", floor);
  for (const Case& request : Cases()) {
    const long peak = PeakKib(build, build.handler, Body(request));
    std::printf("%-24s %+8ld\n", request.title, peak - floor);
  }
}

/// Everything on one processor, as on the camera: nothing migrates.
void StayOnOneProcessor() {
  cpu_set_t set;
  CPU_ZERO(&set);
  CPU_SET(static_cast<std::size_t>(sched_getcpu()), &set);
  sched_setaffinity(0, sizeof set, &set);
}

int Usage() {
  std::fputs(
      "measure times FOLDER STARTS   times compared with the floors\n"
      "measure counts FOLDER         instructions, system calls, memory\n"
      "measure memory FOLDER         memory of a build for the camera's processor\n"
      "measure camera COMMAND...     runs a command next to the same camera\n"
      "FOLDER is a build tree of the product.\n",
      stderr);
  return 2;
}

int Main(int argc, char** argv) {
  if (argc < 3) {
    return Usage();
  }
  const std::string what = argv[1];
  const std::string folder = argv[2];
  Build build = {folder + "/camera_remote.cgi", folder + "/floor", folder + "/work_floor", {}};
  if (what == "times" && argc == 4) {
    StayOnOneProcessor();
    bench::EnterCamera();
    MeasureTimes(build, std::atoi(argv[3]));
  } else if (what == "counts") {
    bench::EnterCamera();
    MeasureCounts(build);
  } else if (what == "memory") {
    build.emulator = {"qemu-arm-static"};
    bench::EnterCamera();
    MeasureMemory(build);
  } else if (what == "camera") {
    bench::EnterCamera();
    execvp(argv[2], argv + 2);
    std::perror(argv[2]);
    return 1;
  } else {
    return Usage();
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Main(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "measure: %s\n", error.what());
    return 1;
  }
}
