// The cost of writing one key, compared with writing, flushing and renaming the same bytes. Each pass does both in
// turn, since disk speed fluctuates.

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <string>

#include "bench/raw_files.h"
#include "bench/sample.h"
#include "settings/Module1.h"

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

void Measure(benchmark::State& state, int mods, const char* key) {
  const std::string file = support::SettingsFile();
  const std::string section = std::string(sample::kGame) + "." + std::to_string(mods / 2);
  const std::string before = sample::Settings(mods, sample::Active::None);
  Seconds limit{0};
  std::string after;
  for ([[maybe_unused]] auto pass : state) {
    raw::Replace(file, before);
    const auto start = Clock::now();
    Module1::PutSetting(section, key, "1");
    const auto written = Clock::now();
    if (after.empty()) after = support::ReadFile(file);
    const auto limitStart = Clock::now();
    raw::Replace(file, after);
    limit += Clock::now() - limitStart;
    state.SetIterationTime(Seconds(written - start).count());
  }
  if (after == before) state.SkipWithError("nothing was written");
  state.counters["limit"] = benchmark::Counter(limit.count(), benchmark::Counter::kAvgIterations);
}

// The same change with and without keeping the old file, and undone. The history is full.
void MeasureHistory(benchmark::State& state, int mods) {
  const std::string section = std::string(sample::kGame) + "." + std::to_string(mods / 2);
  const std::string before = sample::Settings(mods, sample::Active::None);
  const auto seconds = [](auto act) {
    const auto start = Clock::now();
    act();
    return Seconds(Clock::now() - start).count();
  };
  const auto put = [&](bool isWithout) {
    raw::Replace(support::SettingsFile(), before);
    Module1::Step step = {isWithout};
    return seconds([&] {
      Module1::Change change;
      change.PutSetting(section, "Active", "1");
      if (change.Save(step)) state.SkipWithError("nothing was written");
    });
  };
  for (int i = 0; i < 60; ++i) put(false);
  double without = 0;
  double undo = 0;
  for ([[maybe_unused]] auto pass : state) {
    without += put(true);
    state.SetIterationTime(put(false));
    undo += seconds([&] {
      if (Module1::Change().Undo()) state.SkipWithError("nothing was taken back");
    });
  }
  state.counters["without"] = benchmark::Counter(without, benchmark::Counter::kAvgIterations);
  state.counters["undo"] = benchmark::Counter(undo, benchmark::Counter::kAvgIterations);
}

int Run(int argumentCount, char** arguments) {
  support::Reset();
  for (const int mods : {10, 100, 1000}) {
    const std::string size = std::to_string(mods) + "/";
    for (const auto& [name, key] : {std::pair{"changed", "Active"}, std::pair{"added", "New"}}) {
      benchmark::RegisterBenchmark((size + "PutSetting/" + name).c_str(), Measure, mods, key)->UseManualTime();
    }
    benchmark::RegisterBenchmark((size + "history").c_str(), MeasureHistory, mods)->UseManualTime();
  }
  benchmark::Initialize(&argumentCount, arguments);
  benchmark::RunSpecifiedBenchmarks();
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argumentCount, char** arguments) { return support::RunInOwnFolder(argumentCount, arguments, Run); }
