#pragma once

#include <string>
#include <string_view>

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
