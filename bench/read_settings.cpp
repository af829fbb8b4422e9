// The cost of reading the settings (read, parse, look up each mod), compared with reading the file alone.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

#include "bench/raw_files.h"
#include "bench/sample.h"
#include "mods/mod_list.h"
#include "settings/Module1.h"

namespace {

void MeasureLimit(benchmark::State& state, int mods) {
  const std::string file = support::SettingsFile();
  support::WriteFile(file, sample::Settings(mods, sample::Active::None));
  for ([[maybe_unused]] auto pass : state) benchmark::DoNotOptimize(raw::Read(file));
}

void MeasureReading(benchmark::State& state, int mods) {
  support::WriteFile(support::SettingsFile(), sample::Settings(mods, sample::Active::None));
  const auto isMissing = [](std::string_view) { return false; };
  std::size_t listed = 0;
  for ([[maybe_unused]] auto pass : state) {
    const Module1::Settings settings;
    listed = ListMods(settings, sample::kGame, isMissing).available.names.size();
  }
  if (listed != static_cast<std::size_t>(mods)) state.SkipWithError("not all mods are listed");
}

int Run(int argumentCount, char** arguments) {
  support::Reset();
  for (const int mods : {10, 100, 1000}) {
    const std::string size = std::to_string(mods) + "/";
    benchmark::RegisterBenchmark((size + "limit").c_str(), MeasureLimit, mods);
    benchmark::RegisterBenchmark((size + "reading").c_str(), MeasureReading, mods);
  }
  benchmark::Initialize(&argumentCount, arguments);
  benchmark::RunSpecifiedBenchmarks();
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argumentCount, char** arguments) { return support::RunInOwnFolder(argumentCount, arguments, Run); }
