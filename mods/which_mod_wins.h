#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/Module1.h"

// Which of two active mods wins if both have a file of the same path: the lower one in the list, whose folders have
// lower numbers in the module file.

struct ModFiles {
  std::string mod;
  std::vector<std::string> files;  // paths in its data folders
};

// The files that a mod shares with another mod.
struct SharedFiles {
  std::string mod;                 // the other mod
  bool wins;                       // whether it wins
  std::vector<std::string> files;  // sorted, without duplicates, spelled as in the first mod
};

// `mods` are the active ones from the top of the list; the result starts with the lowest, which wins over all. Mods
// without shared files are left out. Ignores letter case.
std::vector<SharedFiles> FindSharedFiles(const std::vector<ModFiles>& mods, std::string_view mod);

// What could not be checked.
struct LeftOut {
  std::vector<std::string> missing;  // data folders
  bool hasUnread = false;
  bool hasLinksOut = false;
  bool isCut = false;
};

// The result in sentences, limited to the first few mods and files.
std::string SharedFilesText(std::string_view mod, const std::vector<SharedFiles>& shared, const LeftOut& leftOut);

// The same for the active mods in the settings. Lists their data folders, which may take a second. Nothing if the mod
// is not active.
std::optional<std::string> WhichModWins(const Module1::Settings& settings, std::string_view game, std::string_view mod);
