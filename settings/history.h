#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "settings/file_failure.h"

// Older versions of the settings file, in the folder Ulvane.history beside it. Nothing is kept in memory.
//
//   <number>.ini       the state before a step; undo takes the highest number
//   <number>.redo.ini  the state before an undo; redo takes the lowest number above all of the former
//   <number>.old.ini   no longer reachable by undo or redo: a backup
//
// The newest 50 are kept, 16 MB at most. Steps equal to the current settings are skipped, so a program may be killed at
// any moment. Other files in the folder are left alone.
class History {
 public:
  // Lists the folder beside the settings file. Requires the tool's lock, except for Can.
  explicit History(const std::filesystem::path& settingsFile);

  // Whether there is a step in this direction and the folder is writable.
  enum class Way : std::uint8_t { Undo, Redo };
  bool Can(Way way) const;

  // Replaces the settings with the next step in this direction. `current`, their text, is kept for the way back. Does
  // nothing without a step.
  std::optional<FileFailure> Go(Way way, const std::string& current);

  // NewStep: where to keep the file that a new step replaces; empty if the folder cannot be listed. EndStep, after it
  // was replaced: deletes the oldest files. If the file was not kept, older steps no longer fit and become backups.
  std::filesystem::path NewStep() const;
  void EndStep();

 private:
  enum class Kind : std::uint8_t { Undo, Redo, Old };
  struct Step {
    std::uint64_t number = 0;
    Kind kind = Kind::Undo;
    auto operator<=>(const Step&) const = default;  // NOLINT(modernize-use-nullptr): takes the operator's 0 for one
  };
  static std::string NameOf(const Step& step);
  static std::optional<Step> StepOf(const std::string& name);
  std::filesystem::path PathOf(const Step& step) const { return folder_ / NameOf(step); }
  Step New() const { return {steps_.empty() ? 1 : steps_.back().number + 1, Kind::Undo}; }
  std::optional<Step> Next(Way way) const;
  std::optional<FileFailure> FindNext(Way way, const std::string& current, std::optional<Step>& step,
                                      std::string& bytes);
  void Retire(Kind kind, std::uint64_t upTo);

  std::filesystem::path settingsFile_;
  std::filesystem::path folder_;
  std::error_code unlisted_;  // why the existing folder could not be listed
  std::vector<Step> steps_;   // by number
};
