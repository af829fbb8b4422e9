#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "settings/EZINILib.h"
#include "settings/file_failure.h"
#include "settings/history.h"

// Access to the two profile files beside the executable: the settings file Ulvane.ini (layout in settings/schema.h) and
// Make.ini, which is only read.
namespace Module1 {

constexpr std::int64_t kNoGameCount = -1;  // nothing stored yet
constexpr std::int64_t kNoMod = -1;

// Each call reads or replaces the file once. Failures are silent.
std::string GetSetting(std::string_view section, std::string_view key, std::string_view fallback);
void PutSetting(std::string_view section, std::string_view key, std::string_view value);
std::string GetMakeSetting(std::string_view section, std::string_view key, std::string_view fallback);
std::int64_t FindMod(std::string_view game, std::string_view name);

// One reading of both files, for operations that need several values: the settings at construction, Make.ini on first
// use. If a file cannot be read, its values are the fallbacks.
class Settings {
 public:
  Settings();
  explicit Settings(std::string_view settings, std::string_view make = "");  // from these texts, without files

  // Why the existing settings file, or Make.ini once used, could not be read.
  std::optional<FileFailure> Unread() const;

  std::string GetSetting(std::string_view section, std::string_view key, std::string_view fallback) const;
  std::string GetMakeSetting(std::string_view section, std::string_view key, std::string_view fallback) const;

  // The stored number; `fallback` if missing or not a 32-bit whole number.
  std::int64_t GetNumber(std::string_view section, std::string_view key, std::int32_t fallback) const;
  std::int64_t GetMakeNumber(std::string_view section, std::string_view key, std::int32_t fallback) const;

  // The number of games or of a game's mods; kNoGameCount if none was ever stored. A damaged count (not a whole number,
  // negative, or above 32,767) reads as the number of consecutive entries from 1, so that no existing entry is
  // overwritten. So does the count of a mod's data folders.
  std::int64_t GameCount() const;
  std::int64_t ModCount(std::string_view game) const;
  std::vector<std::string> Folders(std::string_view modSection) const;

  std::string GameName(std::int64_t game) const;
  std::string GamePath(std::string_view game) const;  // a Windows path

  // The number of the first game, or mod of the game, of exactly this name; nothing, or kNoMod, if there is none.
  std::optional<std::int64_t> FindGame(std::string_view name) const;
  std::int64_t FindMod(std::string_view game, std::string_view name) const;

  // A game's path; empty if it is not registered.
  std::string InstallFolder(std::string_view game) const;

 protected:
  explicit Settings(const std::error_code& lockFailure);

  EZINILib::WholeINI settings_;
  std::optional<FileFailure> unread_;

 private:
  mutable EZINILib::WholeINI make_{ProfileText("")};
  mutable bool isMakeRead_ = false;
};

// One undo step: usually one saved change; "all" shares one step among several.
struct Step {
  bool isKept = false;  // the state before it is in the history
};

// Whether there is a step to undo or redo. Cheap: lists a folder, opens no file.
bool CanUndo();
bool CanRedo();

// A transaction on the settings: locks the tool's folder, reads, and collects writes; Save then replaces the file once.
// The lock lasts as long as the object, so that no Gantrel overwrites another one's changes. Every command that writes
// uses it. It must not live while a message or dialog is open, and cannot be nested.
class Change : public Settings {
 public:
  Change();
  explicit Change(std::string_view settings) : Settings(settings) {}  // from a text, without a file

  void PutSetting(std::string_view section, std::string_view key, std::string_view value);
  void PutNumber(std::string_view section, std::string_view key, std::int64_t number);
  std::string Text() const { return settings_.Text(); }

  // Replaces the settings file if anything was written. Returns why reading or writing failed; then the file is
  // unchanged, and the change holds its content again. Without Save, writes are dropped. The first save of a step keeps
  // the old file (settings/history.h).
  [[nodiscard]] std::optional<FileFailure> Save(Step& step);
  [[nodiscard]] std::optional<FileFailure> Save();

  // Restores the whole settings file from before the last step (Redo: from before the last Undo); does nothing without
  // one. Keeps the current file, other programs' changes included, for the way back. Returns why it failed; the change
  // then holds the file on disk. Requires a change without writes.
  [[nodiscard]] std::optional<FileFailure> Undo();
  [[nodiscard]] std::optional<FileFailure> Redo();

 private:
  explicit Change(platform::ToolLock lock);
  std::optional<FileFailure> Go(History::Way way);

  platform::ToolLock lock_;
};

}  // namespace Module1
