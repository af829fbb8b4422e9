#include "settings/Module1.h"

#include <optional>
#include <utility>

#include "platform/paths.h"
#include "settings/EZINILib.h"
#include "settings/schema.h"
#include "settings/whole_number.h"

namespace Module1 {
namespace {

platform::HostPath SettingsFile() { return platform::BesideExecutable("Ulvane.ini"); }
platform::HostPath MakeFile() { return platform::BesideExecutable("Make.ini"); }

// Of the WholeChange that now lives. Those who read and write settings within it need not know of it.
std::optional<EZINILib::WholeINI> wholeSettings;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

// Of the innermost Command that now lives.
Command::State* command = nullptr;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

std::string Read(const platform::HostPath& file, std::string_view section, std::string_view key,
                 std::string_view fallback) {
  std::error_code failure;
  std::string value = EZINILib::ReadINI(file, section, key, fallback, &failure);
  if (failure && command != nullptr) {
    command->mayWrite = false;
    if (!command->unread) command->unread = {file, failure};
  }
  return value;
}

}  // namespace

Command::Command() : outer_(std::exchange(command, &state_)) {}

Command::~Command() { command = outer_; }

WholeChange::WholeChange() { wholeSettings.emplace(SettingsFile()); }

WholeChange::~WholeChange() {
  wholeSettings->Save();
  wholeSettings.reset();
}

std::string GetSetting(std::string_view section, std::string_view key, std::string_view fallback) {
  if (wholeSettings) return wholeSettings->Read(section, key, fallback);
  return Read(SettingsFile(), section, key, fallback);
}

void PutSetting(std::string_view section, std::string_view key, std::string_view value) {
  if (wholeSettings) return wholeSettings->Write(section, key, value);
  if (command != nullptr && !command->mayWrite) return;
  const bool isWritten = EZINILib::WriteINI(SettingsFile(), section, key, value);
  if (command != nullptr) command->mayWrite = isWritten;
}

std::string GetMakeSetting(std::string_view section, std::string_view key, std::string_view fallback) {
  return Read(MakeFile(), section, key, fallback);
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

std::int64_t GameCount() { return WholeNumber(GetSetting("Games", "Count", std::to_string(kNoGameCount))).value_or(0); }

std::string GameName(std::int64_t game) { return GetSetting("Games", schema::GameKey(game), "Unknown"); }

std::string GamePath(std::string_view game) { return GetSetting(game, "Path", "C:\\"); }

std::int64_t ModCount(std::string_view game) { return GetNumber(game, "ModCount", 0); }

std::int64_t FindMod(std::string_view game, std::string_view name) {
  const std::int64_t count = ModCount(game);
  for (std::int64_t i = 1; i <= count; ++i) {
    if (GetSetting(schema::ModSection(game, i), "Name", "Unknown") == name) return i;
  }
  return kNoMod;
}

}  // namespace Module1
