#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/Module1.h"

// The rules of a game's mods, on settings in memory. A mod's number is its place in the load order. Mods are named as
// the lists show them; of two with one name, the first is meant.

struct ModLists {
  std::vector<std::string> available;
  std::vector<std::string> active;
};
ModLists ListMods(const Module1::Settings& settings, std::string_view game);

// A mod's data folders in their stored order; nothing when it is not registered.
std::optional<std::vector<std::string>> DataFolders(const Module1::Settings& settings, std::string_view game,
                                                    std::string_view name);

// A mod keeps its number. Changes nothing when it is not registered, and so do the next two.
void SetActive(Module1::Change& change, std::string_view game, std::string_view name, bool isActive);

// Removes the mod; the later ones move down by one number.
void DeleteMod(Module1::Change& change, std::string_view game, std::string_view name);

// Exchanges the numbers of two mods. False when one of them is not registered.
bool ExchangeMods(Module1::Change& change, std::string_view game, std::string_view moved, std::string_view neighbour);

// Appends the mod to the game's, as an available one.
void RegisterMod(Module1::Change& change, std::string_view game, std::string_view name,
                 const std::vector<std::string>& folders);

// The folder below a game's install folder that holds the data folders; empty for an empty one. Windows paths.
std::string DataFolderBase(std::string installFolder);
