#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "settings/Module1.h"

// The rules for the module file, on settings and templates in memory.

// The whole text: the header's lines, one line per data folder of each active mod, and the footer's lines, each ended
// by CR LF. The mod with the highest number comes first; folder numbers start at NextDirNum of Make.ini. In templates,
// lines end at CR or CR LF; a lone LF is copied.
std::string ModuleText(const Module1::Settings& settings, std::string_view game, std::string_view header,
                       std::string_view footer);

// The game's module file, a Windows path; empty if the game is not registered.
std::string ModulePath(const Module1::Settings& settings, std::string_view game);

// The game's launch option for its module file: "-modname Ulvane".
std::string LaunchOption(const Module1::Settings& settings);

// The registered games whose module file differs after a change of the settings: in its folders or its path. A newly
// registered game does not count as moved, as its file may exist.
std::vector<std::string> GamesWithOtherModules(const Module1::Settings& before, const Module1::Settings& after);
