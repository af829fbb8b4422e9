#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "settings/file_failure.h"

// The older settings files, in the folder Ulvane.history beside the settings file. Nothing is kept in memory.
//
//   <number>.ini       what was there before a step; the greatest number is taken back first
//   <number>.redo.ini  what was there before a step was taken back; the smallest number above all of the former is done
//                      again first
//   <number>.old.ini   what is no longer on the way of either: a backup
//
// The newest 50 are kept, 16 MB at most. A step that equals the settings is passed over, so it does not matter at which
// moment a program is killed. Other files in the folder are left alone. All below is called under the tool's lock, but
// for Can.
namespace history {

enum class Way : std::uint8_t { Undo, Redo };

// Whether there is a step that way, and the folder can be written.
bool Can(Way way);

// Where the file that a new step replaces is to be kept; and what follows once it is replaced: the oldest files go.
// Where the file could not be kept, the steps before it no longer fit, and become backups.
std::filesystem::path NewStep();
void EndStep(const std::filesystem::path& keptAs);

// Puts the file of the next step that way in the place of the settings, which are `current` and are kept for the way
// back. Does nothing when there is no step.
std::optional<FileFailure> Go(Way way, const std::filesystem::path& settingsFile, const std::string& current);

}  // namespace history
