#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/Module1.h"

// Which of two activated mods wins where both have a file of the same path: the lower one in the list, whose folders
// have the lower numbers in the module file.

struct ModFiles {
  std::string mod;
  std::vector<std::string> files;  // their paths in its data folders
};

// The files that a mod shares with another one.
struct SharedFiles {
  std::string mod;                 // the other one
  bool wins;                       // over the first
  std::vector<std::string> files;  // by name, each once, as the first mod spells it
};

// `mods` are the activated ones from the top of the list; the outcome begins with the lowest, which wins over all.
// Those that share no file are left out. Letter case does not count.
std::vector<SharedFiles> FindSharedFiles(const std::vector<ModFiles>& mods, std::string_view mod);

// What could not be looked at.
struct LeftOut {
  std::vector<std::string> missing;  // data folders
  bool hasUnread = false;
  bool hasLinksOut = false;
  bool isCut = false;
};

// All in sentences, of the first few mods and files.
std::string SharedFilesText(std::string_view mod, const std::vector<SharedFiles>& shared, const LeftOut& leftOut);

// The same of the mods that are activated in the settings: walks through their data folders, which may take a second.
// Nothing when the mod is not one of them.
std::optional<std::string> WhichModWins(const Module1::Settings& settings, std::string_view game, std::string_view mod);
