// The cost of the tool as a process: until its first painted window, compared with an empty Qt window; and while idle.

#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "bench/sample.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using std::chrono::seconds;

struct Ended {
  int status = 0;
  double peakBytes = 0;
};

// Starts a program from the folder of the settings file.
pid_t Start(const char* program, char* argument = nullptr) {
  std::string path = support::ExecutableFolder() / fs::path(program).filename();
  if (!fs::exists(path)) fs::copy_file(program, path);
  pid_t process = 0;
  const std::array<char*, 3> arguments = {path.data(), argument, nullptr};
  if (posix_spawn(&process, path.c_str(), nullptr, nullptr, arguments.data(), environ) != 0) std::abort();
  return process;
}

Ended Await(pid_t process) {
  Ended ended;
  rusage usage = {};
  if (wait4(process, &ended.status, 0, &usage) != process) std::abort();
  ended.peakBytes = static_cast<double>(usage.ru_maxrss) * 1024;
  return ended;
}

void MeasureStart(benchmark::State& state, const char* program, std::string label) {
  support::WriteFile(support::SettingsFile(), sample::Settings(100, sample::Active::EverySecond));
  sample::MakeFolders(100);
  Ended ended;
  for ([[maybe_unused]] auto pass : state) {
    const auto start = Clock::now();
    ended = Await(Start(program, label.empty() ? nullptr : label.data()));
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
    if (ended.status != 0) state.SkipWithError("the program failed");
  }
  state.counters["peak"] = ended.peakBytes;
}

double ProcessorSeconds(pid_t process) {
  clockid_t clock = 0;
  timespec time = {};
  if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &time) != 0) std::abort();
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

// Voluntary context switches: each wake-up ends with one.
double WakeUps(pid_t process) {
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  for (std::string word; status >> word;) {
    double count = 0;
    if (word == "voluntary_ctxt_switches:" && status >> count) return count;
  }
  std::abort();
}

// Without a settings file, the tool opens the setup dialog and waits.
void MeasureRest(benchmark::State& state, bool isSetUp) {
  constexpr auto kToComeToRest = seconds(3);
  constexpr auto kRest = seconds(10);
  fs::remove(support::SettingsFile());
  if (isSetUp) support::WriteFile(support::SettingsFile(), sample::Settings(100, sample::Active::EverySecond));
  for ([[maybe_unused]] auto pass : state) {
    const pid_t tool = Start(GANTREL_TOOL);
    std::this_thread::sleep_for(kToComeToRest);
    const double before = ProcessorSeconds(tool);
    const double wakeUpsBefore = WakeUps(tool);
    std::this_thread::sleep_for(kRest);
    state.SetIterationTime(ProcessorSeconds(tool) - before);
    state.counters["wake_ups"] = WakeUps(tool) - wakeUpsBefore;
    kill(tool, SIGTERM);
    if (Await(tool).status != 0) state.SkipWithError("the tool had not been at rest");
  }
}

int Run(int argumentCount, char** arguments) {
  support::Reset();
  benchmark::RegisterBenchmark("first window/Gantrel", MeasureStart, GANTREL_FIRST_WINDOW, "")->UseManualTime();
  benchmark::RegisterBenchmark("first window/empty", MeasureStart, GANTREL_EMPTY_WINDOW, "")->UseManualTime();
  benchmark::RegisterBenchmark("first window/one label", MeasureStart, GANTREL_EMPTY_WINDOW, "Text")->UseManualTime();
  for (const auto& [name, isSetUp] : {std::pair{"main window", true}, std::pair{"setup dialog", false}}) {
    benchmark::RegisterBenchmark((std::string("at rest/") + name).c_str(), MeasureRest, isSetUp)
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(1);
  }
  benchmark::Initialize(&argumentCount, arguments);
  benchmark::RunSpecifiedBenchmarks();
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argumentCount, char** arguments) { return support::RunInOwnFolder(argumentCount, arguments, Run); }
