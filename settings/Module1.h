#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/files.h"
#include "settings/EZINILib.h"
#include "settings/file_failure.h"
#include "settings/history.h"

// The accessors of the two profile files beside the executable: the settings file Ulvane.ini (settings/schema.h says
// what it holds), and Make.ini, which is only read.
namespace Module1 {

constexpr std::int64_t kNoGameCount = -1;  // none was stored yet
constexpr std::int64_t kNoMod = -1;

// Each of these reads the file as it is, or replaces it, once, and reports no failure.
std::string GetSetting(std::string_view section, std::string_view key, std::string_view fallback);
void PutSetting(std::string_view section, std::string_view key, std::string_view value);
std::string GetMakeSetting(std::string_view section, std::string_view key, std::string_view fallback);
std::int64_t FindMod(std::string_view game, std::string_view name);

// One reading of both files, for an operation that needs several values: of the settings now, of Make.ini when it is
// first asked for. What cannot be read answers with the fallbacks.
class Settings {
 public:
  Settings();
  explicit Settings(std::string_view settings, std::string_view make = "");  // of these texts, and no files

  // What keeps the settings file, or Make.ini once it was asked for, from being read although it is there.
  std::optional<FileFailure> Unread() const;

  std::string GetSetting(std::string_view section, std::string_view key, std::string_view fallback) const;
  std::string GetMakeSetting(std::string_view section, std::string_view key, std::string_view fallback) const;

  // The stored number; `fallback` where it is missing or not a whole number of 32 bits.
  std::int64_t GetNumber(std::string_view section, std::string_view key, std::int32_t fallback) const;
  std::int64_t GetMakeNumber(std::string_view section, std::string_view key, std::int32_t fallback) const;

  // How many games, mods of a game, and folders of a mod there are; kNoGameCount where no game was ever counted. A
  // count that is there but is no whole number, negative, or above 32,767, is damaged: it reads as the number of
  // entries that follow each other from 1, so that nothing new is written over one of them.
  std::int64_t GameCount() const;
  std::int64_t ModCount(std::string_view game) const;
  std::int64_t DirCount(std::string_view modSection) const;

  std::string GameName(std::int64_t game) const;
  std::string GamePath(std::string_view game) const;  // a Windows path

  // The number of the first game, or mod of the game, of that name, every character compared; nothing, or kNoMod, when
  // there is none.
  std::optional<std::int64_t> FindGame(std::string_view name) const;
  std::int64_t FindMod(std::string_view game, std::string_view name) const;

  // The path of a registered game; empty when it is not registered.
  std::string InstallFolder(std::string_view game) const;

 protected:
  explicit Settings(const std::error_code& lockFailure);

  EZINILib::WholeINI settings_;
  std::optional<FileFailure> unread_;

 private:
  mutable EZINILib::WholeINI make_{ProfileText("")};
  mutable bool isMakeRead_ = false;
};

// What undo takes back at once: usually one saved change, with "all" several, which share their step.
struct Step {
  bool isKept = false;  // what was there before it
};

// Whether there is a step to take back, or to do again. Cheap: looks into a folder, and opens no file.
bool CanUndo();
bool CanRedo();

// A transaction on the settings: it locks the tool's folder, reads, and collects what is written until Save replaces
// the file once. The lock lasts as long as the change, so that another Gantrel neither loses this change nor has its
// own lost. For every command that writes. It must not live while the user is asked or told something, and no second
// one within it.
class Change : public Settings {
 public:
  Change();
  explicit Change(std::string_view settings) : Settings(settings) {}  // of a text, and no file

  void PutSetting(std::string_view section, std::string_view key, std::string_view value);
  void PutNumber(std::string_view section, std::string_view key, std::int64_t number);
  std::string Text() const { return settings_.Text(); }

  // Replaces the settings file where something was written, and says what kept it from that, or from being read; then
  // the file is as it was, and the change holds that again. Without it, what was written is dropped. The first save of
  // a step keeps the file that it replaces (settings/history.h).
  [[nodiscard]] std::optional<FileFailure> Save(Step& step);
  [[nodiscard]] std::optional<FileFailure> Save();

  // Puts the whole settings file back that was there before the last step, or before that was taken back; changes
  // nothing when there is none. What another program has changed since is kept as well. Says what kept it from that,
  // and the change then holds the file that is there. Of a change in which nothing was written.
  [[nodiscard]] std::optional<FileFailure> Undo();
  [[nodiscard]] std::optional<FileFailure> Redo();

 private:
  explicit Change(platform::ToolLock lock);
  std::optional<FileFailure> Go(History::Way way);

  platform::ToolLock lock_;
};

}  // namespace Module1
