#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/Module1.h"

// The rules for the list of registered games, on settings in memory.

// The entries of the setup list: a game's name, and its install folder in parentheses.
std::vector<std::string> GameEntries(const Module1::Settings& settings);

// Registers an edition with its folder from the registry. Does nothing if the folder is empty or too long to be read
// back from the settings. Adds a missing trailing separator.
void TryGame(Module1::Change& change, std::string_view name, std::string folder);

// Registers a game with the user's name and folder. The folder ends in a separator.
void AddGame(Module1::Change& change, std::string_view name, std::string_view folder);

// Removes the game from the list only: its mods stay in the file and return when it is registered again. `n` was its
// number when the user was asked; if another game has that number now, removes the first of that name.
void RemoveGame(Module1::Change& change, std::int64_t n, std::string_view name);
