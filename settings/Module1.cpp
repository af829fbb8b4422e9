#include "settings/Module1.h"

#include <utility>

#include "platform/paths.h"
#include "settings/schema.h"
#include "settings/whole_number.h"

namespace Module1 {
namespace {

std::filesystem::path SettingsFile() { return platform::BesideExecutable("Ulvane.ini"); }
std::filesystem::path MakeFile() { return platform::BesideExecutable("Make.ini"); }

// Nothing without a reason. Computes the path only on failure: it costs a system call.
std::optional<FileFailure> FailureOf(std::filesystem::path (*file)(), const char* what, const std::error_code& reason) {
  if (!reason) return std::nullopt;
  return FileFailure{platform::DisplayName(file()), what, reason};
}

// A line break as fallback is unambiguous: no value from a file contains one.
bool IsThere(const Settings& settings, std::string_view section, std::string_view key) {
  return settings.GetSetting(section, key, "\n") != "\n";
}

template <typename IsEntry>
std::int64_t Count(const Settings& settings, std::string_view section, std::string_view key, std::int32_t none,
                   IsEntry isEntry) {
  constexpr std::int32_t kMost = 32'767;
  const auto count = WholeNumber(settings.GetSetting(section, key, std::to_string(none)));
  if (count && *count <= kMost && (*count >= 0 || *count == none)) return *count;
  std::int64_t entries = 0;
  while (isEntry(entries + 1)) ++entries;
  return entries;
}

}  // namespace

std::string GetSetting(std::string_view section, std::string_view key, std::string_view fallback) {
  return Settings().GetSetting(section, key, fallback);
}

void PutSetting(std::string_view section, std::string_view key, std::string_view value) {
  Change change;
  change.PutSetting(section, key, value);
  [[maybe_unused]] const auto failure = change.Save();
}

std::string GetMakeSetting(std::string_view section, std::string_view key, std::string_view fallback) {
  return EZINILib::ReadINI(MakeFile(), section, key, fallback);
}

std::int64_t FindMod(std::string_view game, std::string_view name) { return Settings().FindMod(game, name); }

bool CanUndo() { return History(SettingsFile()).Can(History::Way::Undo); }
bool CanRedo() { return History(SettingsFile()).Can(History::Way::Redo); }

// On some file systems a file is briefly missing while it is replaced; not under the lock. So a missing file is read
// again under the lock.
Settings::Settings() : Settings(std::error_code()) {
  if (!settings_.IsMissing()) return;
  const platform::ToolLock lock = platform::LockTool();
  settings_ = EZINILib::WholeINI(SettingsFile());
  unread_ = FailureOf(SettingsFile, "read", settings_.Unread());
}

Settings::Settings(std::string_view settings, std::string_view make)
    : settings_(ProfileText(settings)), make_(ProfileText(make)), isMakeRead_(true) {}

Settings::Settings(const std::error_code& lockFailure)
    : settings_(SettingsFile()),
      unread_(lockFailure ? FailureOf(SettingsFile, "written", lockFailure)
                          : FailureOf(SettingsFile, "read", settings_.Unread())) {}

std::optional<FileFailure> Settings::Unread() const {
  return unread_ ? unread_ : FailureOf(MakeFile, "read", make_.Unread());
}

std::string Settings::GetSetting(std::string_view section, std::string_view key, std::string_view fallback) const {
  return settings_.Read(section, key, fallback);
}

std::string Settings::GetMakeSetting(std::string_view section, std::string_view key, std::string_view fallback) const {
  if (!std::exchange(isMakeRead_, true)) make_ = EZINILib::WholeINI(MakeFile());
  return make_.Read(section, key, fallback);
}

std::int64_t Settings::GetNumber(std::string_view section, std::string_view key, std::int32_t fallback) const {
  return WholeNumber(GetSetting(section, key, "")).value_or(fallback);
}

std::int64_t Settings::GetMakeNumber(std::string_view section, std::string_view key, std::int32_t fallback) const {
  return WholeNumber(GetMakeSetting(section, key, "")).value_or(fallback);
}

std::int64_t Settings::GameCount() const {
  return Count(*this, "Games", "Count", kNoGameCount,
               [this](std::int64_t n) { return IsThere(*this, "Games", schema::GameKey(n)); });
}

std::int64_t Settings::ModCount(std::string_view game) const {
  return Count(*this, game, "ModCount", 0, [&](std::int64_t n) {
    const std::string section = schema::ModSection(game, n);
    return IsThere(*this, section, "Name") || IsThere(*this, section, "Active") || IsThere(*this, section, "DirCount");
  });
}

std::vector<std::string> Settings::Folders(std::string_view modSection) const {
  const std::int64_t count = Count(*this, modSection, "DirCount", 0,
                                   [&](std::int64_t k) { return IsThere(*this, modSection, schema::DirKey(k)); });
  std::vector<std::string> folders;
  for (std::int64_t k = 1; k <= count; ++k) folders.push_back(GetSetting(modSection, schema::DirKey(k), ""));
  return folders;
}

std::string Settings::GameName(std::int64_t game) const {
  return GetSetting("Games", schema::GameKey(game), "Unknown");
}

std::string Settings::GamePath(std::string_view game) const { return GetSetting(game, "Path", "C:\\"); }

std::optional<std::int64_t> Settings::FindGame(std::string_view name) const {
  const std::int64_t count = GameCount();
  for (std::int64_t n = 1; n <= count; ++n) {
    if (GameName(n) == name) return n;
  }
  return std::nullopt;
}

std::int64_t Settings::FindMod(std::string_view game, std::string_view name) const {
  const std::int64_t count = ModCount(game);
  for (std::int64_t n = 1; n <= count; ++n) {
    if (GetSetting(schema::ModSection(game, n), "Name", "Unknown") == name) return n;
  }
  return kNoMod;
}

std::string Settings::InstallFolder(std::string_view game) const { return FindGame(game) ? GamePath(game) : ""; }

Change::Change() : Change(platform::LockTool()) {}

Change::Change(platform::ToolLock lock) : Settings(lock.failure), lock_(std::move(lock)) {}

void Change::PutSetting(std::string_view section, std::string_view key, std::string_view value) {
  settings_.Write(section, key, value);
}

void Change::PutNumber(std::string_view section, std::string_view key, std::int64_t number) {
  PutSetting(section, key, std::to_string(number));
}

std::optional<FileFailure> Change::Save() {
  Step step;
  return Save(step);
}

std::optional<FileFailure> Change::Save(Step& step) {
  if (unread_) return unread_;
  const bool isNew = settings_.IsChanged() && !step.isKept;
  const std::filesystem::path file = SettingsFile();
  std::optional<History> history;
  if (isNew) history.emplace(file);
  const platform::OldFile old = {history ? history->NewStep() : std::filesystem::path()};
  auto failure = FailureOf(SettingsFile, "written", settings_.Save(file, old));
  if (failure) {
    settings_ = EZINILib::WholeINI(SettingsFile());
  } else if (history) {
    history->EndStep();
    step.isKept = true;
  }
  return failure;
}

std::optional<FileFailure> Change::Undo() { return Go(History::Way::Undo); }
std::optional<FileFailure> Change::Redo() { return Go(History::Way::Redo); }

std::optional<FileFailure> Change::Go(History::Way way) {
  if (unread_) return unread_;
  auto failure = History(SettingsFile()).Go(way, settings_.Text());
  settings_ = EZINILib::WholeINI(SettingsFile());
  unread_ = FailureOf(SettingsFile, "read", settings_.Unread());
  return failure ? failure : unread_;
}

}  // namespace Module1
