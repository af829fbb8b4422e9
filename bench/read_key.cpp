// The price of reading one key: the tool's own accessor, the system's limit, and four libraries, all on the same file.

#include <benchmark/benchmark.h>
#include <glib.h>
#include <ini.h>
#define SI_NO_CONVERSION  // plain bytes, as the others take them
#include <SimpleIni.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

extern "C" {
#include <iniparser/iniparser.h>
}

#include "bench/raw_files.h"
#include "bench/sample.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/profile_text.h"
#include "settings/Module1.h"

namespace {

struct Wanted {
  std::string section;
  const char* key = "Dir1";
};

std::string WithGetSetting(const std::string& /*file*/, const Wanted& wanted) {
  return Module1::GetSetting(wanted.section, wanted.key, "");
}

// Calls back with every entry of the file; keeps nothing but the one that is wanted.
std::string WithInih(const std::string& file, const Wanted& wanted) {
  struct Search {
    const Wanted* wanted;
    std::string value;
  };
  Search search{&wanted, ""};
  const auto take = [](void* user, const char* section, const char* key, const char* value) {
    auto& itsSearch = *static_cast<Search*>(user);
    if (itsSearch.wanted->section == section && std::strcmp(itsSearch.wanted->key, key) == 0) itsSearch.value = value;
    return 1;
  };
  ini_parse(file.c_str(), take, &search);
  return search.value;
}

std::string WithGKeyFile(const std::string& file, const Wanted& wanted) {
  const std::unique_ptr<GKeyFile, decltype(&g_key_file_free)> keys(g_key_file_new(), g_key_file_free);
  g_key_file_load_from_file(keys.get(), file.c_str(), G_KEY_FILE_NONE, nullptr);
  const std::unique_ptr<char, decltype(&g_free)> value(
      g_key_file_get_value(keys.get(), wanted.section.c_str(), wanted.key, nullptr), g_free);
  return value ? value.get() : "";
}

std::string WithSimpleIni(const std::string& file, const Wanted& wanted) {
  CSimpleIniA ini;
  ini.LoadFile(file.c_str());
  return ini.GetValue(wanted.section.c_str(), wanted.key, "");
}

std::string WithIniparser(const std::string& file, const Wanted& wanted) {
  const std::unique_ptr<dictionary, decltype(&iniparser_freedict)> ini(iniparser_load(file.c_str()),
                                                                       iniparser_freedict);
  return iniparser_getstring(ini.get(), (wanted.section + ":" + wanted.key).c_str(), "");
}

// The parts of a read, each by itself.
void MeasureFolder(benchmark::State& state) {
  for ([[maybe_unused]] auto pass : state) benchmark::DoNotOptimize(platform::BesideExecutable("Ulvane.ini"));
}

void MeasureFileBytes(benchmark::State& state, int mods) {
  const platform::HostPath file = {support::SettingsFile()};
  support::WriteFile(file.text, sample::Settings(mods, sample::Active::None));
  for ([[maybe_unused]] auto pass : state) {
    platform::FileBytes bytes;
    benchmark::DoNotOptimize(bytes.Read(file));
  }
}

void MeasureSearch(benchmark::State& state, int mods) {
  const std::string text = sample::Settings(mods, sample::Active::None);
  const std::string section = std::string(sample::kGame) + "." + std::to_string(mods / 2);
  for ([[maybe_unused]] auto pass : state)
    benchmark::DoNotOptimize(platform::ProfileText::FindIn(text, section, "Dir1"));
}

using Reader = std::string (*)(const std::string& file, const Wanted& wanted);

void MeasureLimit(benchmark::State& state, int mods) {
  const std::string file = support::SettingsFile();
  support::WriteFile(file, sample::Settings(mods, sample::Active::None));
  for ([[maybe_unused]] auto pass : state) benchmark::DoNotOptimize(raw::Read(file));
}

void MeasureReader(benchmark::State& state, Reader reader, int mods, int mod) {
  const std::string file = support::SettingsFile();
  support::WriteFile(file, sample::Settings(mods, sample::Active::None));
  const Wanted wanted = {std::string(sample::kGame) + "." + std::to_string(mod)};
  const std::string expected = mod > mods ? "" : "Mod" + std::to_string(mod) + "_Data";
  std::string value;
  for ([[maybe_unused]] auto pass : state) value = reader(file, wanted);
  if (value != expected) state.SkipWithError(("read '" + value + "'").c_str());
}

int Run(int argumentCount, char** arguments) {
  struct Subject {
    const char* name;
    Reader reader;
  };
  constexpr std::array kSubjects = {Subject{"GetSetting", WithGetSetting}, Subject{"inih", WithInih},
                                    Subject{"GKeyFile", WithGKeyFile}, Subject{"SimpleIni", WithSimpleIni},
                                    Subject{"iniparser", WithIniparser}};
  support::Reset();
  for (const int mods : {10, 100, 1000}) {
    struct Place {
      const char* name;
      int mod;
    };
    const std::array places = {Place{"first", 1}, Place{"middle", mods / 2}, Place{"last", mods},
                               Place{"missing", mods + 1}};
    const std::string size = std::to_string(mods) + "/";
    benchmark::RegisterBenchmark((size + "limit").c_str(), MeasureLimit, mods);
    benchmark::RegisterBenchmark((size + "folder").c_str(), MeasureFolder);
    benchmark::RegisterBenchmark((size + "bytes").c_str(), MeasureFileBytes, mods);
    benchmark::RegisterBenchmark((size + "search").c_str(), MeasureSearch, mods);
    for (const Subject& subject : kSubjects) {
      for (const Place& place : places) {
        benchmark::RegisterBenchmark((size + subject.name + "/" + place.name).c_str(), MeasureReader, subject.reader,
                                     mods, place.mod);
      }
    }
  }
  benchmark::Initialize(&argumentCount, arguments);
  benchmark::RunSpecifiedBenchmarks();
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argumentCount, char** arguments) { return support::RunInOwnFolder(argumentCount, arguments, Run); }
