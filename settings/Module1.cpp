#include "settings/Module1.h"

#include <cassert>
#include <memory>

#include "platform/paths.h"
#include "settings/EZINILib.h"
#include "settings/schema.h"
#include "settings/whole_number.h"

namespace Module1 {
namespace {

platform::HostPath SettingsFile() { return platform::BesideExecutable("Ulvane.ini"); }
platform::HostPath MakeFile() { return platform::BesideExecutable("Make.ini"); }

// What the accessors answer from while a Reading lives.
struct Files {
  EZINILib::WholeINI settings{SettingsFile()};
  std::optional<EZINILib::WholeINI> make = {};
  bool maySet = false;
};
std::unique_ptr<Files> files;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): for free functions

FileFailure FailureOf(const EZINILib::WholeINI& file, const char* what, std::error_code reason) {
  return {platform::Shown(file.File()), what, reason};
}

std::optional<FileFailure> UnreadOf(const EZINILib::WholeINI& file) {
  if (!file.Unread()) return std::nullopt;
  return FailureOf(file, "read", file.Unread());
}

// No text that a default could be: a line break never comes out of a file.
bool IsThere(std::string_view section, std::string_view key) { return GetSetting(section, key, "\n") != "\n"; }

template <typename IsEntry>
std::int64_t Count(std::string_view section, std::string_view key, std::int64_t fallback, IsEntry isEntry) {
  constexpr std::int32_t kMost = 32'767;
  const Reading reading;
  const auto count = WholeNumber(GetSetting(section, key, std::to_string(fallback)));
  if (count && *count <= kMost) return *count;
  std::int64_t entries = 0;
  while (isEntry(entries + 1)) ++entries;
  return entries;
}

}  // namespace

Reading::Reading() : isOutermost_(!files) {
  if (isOutermost_) files = std::make_unique<Files>();
}

Reading::~Reading() {
  if (isOutermost_) files.reset();
}

std::optional<FileFailure> Unread() {
  const Reading reading;
  if (auto failure = UnreadOf(files->settings)) return failure;
  return files->make ? UnreadOf(*files->make) : std::nullopt;
}

Change::Change() {
  assert(!files);
  files = std::make_unique<Files>();
  files->maySet = true;
}

Change::~Change() { files.reset(); }

std::optional<FileFailure> Change::Save() {
  EZINILib::WholeINI& settings = files->settings;
  if (auto failure = UnreadOf(settings)) return failure;
  const std::error_code reason = settings.Save();
  if (!reason) return std::nullopt;
  const FileFailure failure = FailureOf(settings, "written", reason);
  files->settings = EZINILib::WholeINI(SettingsFile());
  return failure;
}

std::string GetSetting(std::string_view section, std::string_view key, std::string_view fallback) {
  if (files) return files->settings.Read(section, key, fallback);
  return EZINILib::ReadINI(SettingsFile(), section, key, fallback);
}

void PutSetting(std::string_view section, std::string_view key, std::string_view value) {
  if (!files) return EZINILib::WriteINI(SettingsFile(), section, key, value);
  assert(files->maySet);
  files->settings.Write(section, key, value);
}

std::string GetMakeSetting(std::string_view section, std::string_view key, std::string_view fallback) {
  if (!files) return EZINILib::ReadINI(MakeFile(), section, key, fallback);
  if (!files->make) files->make.emplace(MakeFile());
  return files->make->Read(section, key, fallback);
}

std::int64_t GetNumber(std::string_view section, std::string_view key, std::int32_t fallback) {
  return WholeNumber(GetSetting(section, key, std::to_string(fallback))).value_or(fallback);
}

std::int64_t GetMakeNumber(std::string_view section, std::string_view key, std::int32_t fallback) {
  return WholeNumber(GetMakeSetting(section, key, std::to_string(fallback))).value_or(fallback);
}

void PutNumber(std::string_view section, std::string_view key, std::int64_t number) {
  PutSetting(section, key, std::to_string(number));
}

std::int64_t GameCount() {
  return Count("Games", "Count", kNoGameCount, [](std::int64_t n) { return IsThere("Games", schema::GameKey(n)); });
}

std::int64_t ModCount(std::string_view game) {
  return Count(game, "ModCount", 0, [game](std::int64_t n) {
    const std::string section = schema::ModSection(game, n);
    return IsThere(section, "Name") || IsThere(section, "Active") || IsThere(section, "DirCount");
  });
}

std::int64_t DirCount(std::string_view modSection) {
  return Count(modSection, "DirCount", 0, [=](std::int64_t n) { return IsThere(modSection, schema::DirKey(n)); });
}

std::string GameName(std::int64_t game) { return GetSetting("Games", schema::GameKey(game), "Unknown"); }

std::string GamePath(std::string_view game) { return GetSetting(game, "Path", "C:\\"); }

std::int64_t FindMod(std::string_view game, std::string_view name) {
  const Reading reading;
  const std::int64_t count = ModCount(game);
  for (std::int64_t i = 1; i <= count; ++i) {
    if (GetSetting(schema::ModSection(game, i), "Name", "Unknown") == name) return i;
  }
  return kNoMod;
}

}  // namespace Module1
