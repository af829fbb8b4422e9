#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/Module1.h"

// The rules of the list of registered games, on settings in memory.

// The entries of the setup's list: a game's name, and its install folder in parentheses.
std::vector<std::string> GameEntries(const Module1::Settings& settings);

// Registers an edition of the game whose folder is known from the registry: not where the folder is empty, or longer
// than a setting can be read. The separator at the folder's end is added where it is missing.
void TryGame(Module1::Change& change, std::string_view name, std::string folder);

// Registers a game that the user has named, and picked the folder of, which ends in a separator.
void AddGame(Module1::Change& change, std::string_view name, std::string_view folder);

// Takes the game out of the list alone: its mods stay in the file, and are there again when it is registered again. `n`
// was its number when the user was asked; where another game has it by now, the first of that name is meant.
void RemoveGame(Module1::Change& change, std::int64_t n, std::string_view name);
