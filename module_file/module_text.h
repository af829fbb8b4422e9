#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "settings/Module1.h"

// The rules of the module file, on settings and templates in memory.

// The whole text: the header's lines, a line for each data folder of each active mod of the game, and the footer's
// lines, each ended by CR LF. The mod of the highest number comes first; folders count up from NextDirNum of Make.ini.
// Of a template, lines end at CR or CR LF; a line feed alone ends none and is copied.
std::string ModuleText(const Module1::Settings& settings, std::string_view game, std::string_view header,
                       std::string_view footer);

// The game's module file, a Windows path; empty when the game is not registered.
std::string ModulePath(const Module1::Settings& settings, std::string_view game);

// What the game is to be started with to use its module file: "-modname Ulvane".
std::string LaunchOption(const Module1::Settings& settings);

// The registered games whose module file is another after a change of the settings than before it: it has other
// folders, or another place. One that was not registered before has no other place, as its file may be there.
std::vector<std::string> GamesWithOtherModules(const Module1::Settings& before, const Module1::Settings& after);
