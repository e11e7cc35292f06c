// How the time to read what clients and daemons send grows with its size: it must grow linearly.
// Start this with `measure camera`, which provides the daemon.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdint>
#include <fstream>
#include <iostream>
#include <string>

#include "core/cmd/status.h"
#include "core/json_parser.h"
#include "status/clip_upload_bitmap.h"
#include "streaming/streaming_settings.h"

namespace {

std::size_t Size(const benchmark::State& state) { return static_cast<std::size_t>(state.range(0)); }

void JsonParser(benchmark::State& state) {
  const std::string text = R"({"Request":{"Filler":")" + std::string(Size(state), 'x') +
                           R"(","Command":"GetCamStatus"}})";
  char value[100];
  for (auto _ : state) {
    benchmark::DoNotOptimize(json_parser(text.c_str(), "Command", value));
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(JsonParser)->RangeMultiplier(32)->Range(1 << 10, 1 << 20)->Complexity();

void Select(benchmark::State& state, const std::string& text) {
  std::uint32_t blocks[kClipBlockCount] = {};
  for (auto _ : state) {
    SetClipUploadBitmap(text.c_str(), blocks);
    benchmark::DoNotOptimize(blocks);
  }
  state.SetComplexityN(state.range(0));
}

/// No block is present, so the search for each one fails.
void SelectionOfNothing(benchmark::State& state) {
  Select(state, "{" + std::string(Size(state), 'x') + "}}");
}
BENCHMARK(SelectionOfNothing)->RangeMultiplier(32)->Range(1 << 10, 1 << 20)->Complexity();

/// All blocks are present, followed by a long text in which no value ends.
void SelectionWithoutEnd(benchmark::State& state) {
  std::string text = "{";
  for (std::size_t block = 0; block < kClipBlockCount; ++block) {
    text += "\"block" + std::to_string(block) + "\":1;";
  }
  Select(state, text + std::string(Size(state), 'x'));
}
BENCHMARK(SelectionWithoutEnd)->RangeMultiplier(32)->Range(1 << 10, 1 << 20)->Complexity();

/// Repeats the beginning of a key.
void SelectionOfHalfKeys(benchmark::State& state) {
  std::string text;
  while (text.size() < Size(state)) {
    text += "\"block1";
  }
  Select(state, text);
}
BENCHMARK(SelectionOfHalfKeys)->RangeMultiplier(32)->Range(1 << 10, 1 << 20)->Complexity();

/// A command as the dispatcher prepares it, but without the trace of its reply.
template <typename Class>
class Prepared : public Class {
 public:
  explicit Prepared(const CommandPreset& preset) { this->Prepare(preset, "Command", false); }
};

constexpr CommandPreset kStatusPreset = {5, 0, 0, 5, 7};
constexpr CommandPreset kClipPreset = {6, 11, 0, 20, 1};

void StatusReport(benchmark::State& state) {
  for (auto _ : state) {
    Prepared<GetCamStatus> command(kStatusPreset);
    command.Output();
  }
}
BENCHMARK(StatusReport);

/// Includes the exchanges with the daemon, one for every 15 clips.
void ClipList(benchmark::State& state) {
  const std::string params =
      R"({"Slot":"A","StartIndexNo":1,"ClipNum":)" + std::to_string(state.range(0)) + "}}}";
  for (auto _ : state) {
    Prepared<GetClipInfo> command(kClipPreset);
    command.Parse(params.c_str());
    command.Transmit();
    command.Output();
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(ClipList)->RangeMultiplier(4)->Range(15, 3840)->Complexity();

/// A file with this many lines that set nothing.
void SettingsReader(benchmark::State& state) {
  const char* const path = "/var/tmp/lighttpd/streaming";
  {
    std::ofstream file(path);
    for (std::size_t line = 0; line < Size(state); ++line) {
      file << "unknown\t12345\n";
    }
    file << "resolution\t1\nquality\t42\nserver\t2\n";
  }
  _STREAMING_SETTING setting;
  for (auto _ : state) {
    kStreamingFile.Read(path, setting);
    benchmark::DoNotOptimize(setting);
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(SettingsReader)->RangeMultiplier(16)->Range(16, 1 << 16)->Complexity();

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  // Replies go to standard output.
  dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
  benchmark::ConsoleReporter reporter(benchmark::ConsoleReporter::OO_Tabular);
  reporter.SetOutputStream(&std::cerr);
  reporter.SetErrorStream(&std::cerr);
  benchmark::RunSpecifiedBenchmarks(&reporter);
}
