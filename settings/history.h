#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "settings/file_failure.h"

// The older settings files, in the folder Ulvane.history beside the settings file. Nothing is kept in memory.
//
//   <number>.ini       what was there before a step; the greatest number is taken back first
//   <number>.redo.ini  what was there before a step was taken back; the smallest number above all of the former is done
//                      again first
//   <number>.old.ini   what is no longer on the way of either: a backup
//
// The newest 50 are kept, 16 MB at most. A step that equals the settings is passed over, so it does not matter at which
// moment a program is killed. Other files in the folder are left alone.
class History {
 public:
  // As the folder beside the settings file is now. Under the tool's lock, but for Can.
  explicit History(const std::filesystem::path& settingsFile);

  // Whether there is a step that way, and the folder can be written.
  enum class Way : std::uint8_t { Undo, Redo };
  bool Can(Way way) const;

  // Puts the file of the next step that way in the place of the settings, which are `current` and are kept for the way
  // back. Does nothing when there is no step.
  std::optional<FileFailure> Go(Way way, const std::string& current);

  // Where the file that a new step replaces is to be kept, nowhere when the folder cannot be listed; and what follows
  // once it is replaced: the oldest files go. Where the file could not be kept, the steps before it no longer fit, and
  // become backups.
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
  std::error_code unlisted_;  // why the folder, which is there, could not be listed
  std::vector<Step> steps_;   // by their numbers
};
