// Work in long lists: moving a mod far, finding a name, and which mod wins among many files.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "bench/raw_files.h"
#include "bench/sample.h"
#include "mods/mod_list.h"
#include "mods/which_mod_wins.h"
#include "platform/find_name.h"

namespace {

// One saved change, with history.
void MoveFar(benchmark::State& state) {
  std::vector<std::string> passed;
  for (int n = 999; n >= 100; --n) passed.push_back("Mod " + std::to_string(n));
  for ([[maybe_unused]] auto pass : state) {
    state.PauseTiming();
    raw::Replace(support::SettingsFile(), sample::Settings(1000, sample::Active::All));
    state.ResumeTiming();
    Module1::Change change;
    if (!MoveMod(change, sample::kGame, "Mod 1000", passed) || change.Save()) state.SkipWithError("it did not move");
  }
}

void FindName(benchmark::State& state) {
  std::vector<std::string> names;
  for (int n = 1; n <= 10'000; ++n) names.push_back("A mod of a usual name " + std::to_string(n));
  for ([[maybe_unused]] auto pass : state) {
    const int found = platform::FindName(names, "NAME 10000", 5, platform::FindStep::Next);
    if (found != 9'999) state.SkipWithError("it was not found");
  }
}

// Fifty mods with the same thousand files.
void WhichWins(benchmark::State& state) {
  for (int n = 1; n <= 50; ++n) {
    for (int file = 0; file < 1000; ++file) {
      const auto folder =
          sample::GameFolder() / "W40k" / ("Mod" + std::to_string(n) + "_Data") / std::to_string(file % 20);
      support::WriteFile(folder / ("texture " + std::to_string(file) + ".tga"), "");
    }
  }
  const Module1::Settings settings(sample::Settings(50, sample::Active::All, 1));
  for ([[maybe_unused]] auto pass : state) {
    const auto text = WhichModWins(settings, sample::kGame, "Mod 25");
    if (!text || text->find("49 other") == std::string::npos) state.SkipWithError("files were not found");
  }
}

int Run(int argumentCount, char** arguments) {
  support::Reset();
  benchmark::RegisterBenchmark("move", MoveFar)->UseRealTime();
  benchmark::RegisterBenchmark("find", FindName)->UseRealTime();
  benchmark::RegisterBenchmark("wins", WhichWins)->UseRealTime()->Iterations(1);
  benchmark::Initialize(&argumentCount, arguments);
  benchmark::RunSpecifiedBenchmarks();
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argumentCount, char** arguments) { return support::RunInOwnFolder(argumentCount, arguments, Run); }
