#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/Module1.h"

// The rules of a game's mods, on settings in memory. A mod's number is its place in the load order. Mods are named as
// the lists show them; of two with one name, the first is meant.

struct ModList {
  std::vector<std::string> names;
  std::vector<bool> lacksFolder;
};
struct ModLists {
  ModList available;
  ModList active;
};
using IsMissing = std::function<bool(std::string_view folder)>;
ModLists ListMods(const Module1::Settings& settings, std::string_view game, const IsMissing& isMissing);

// A mod's data folders in their stored order; nothing when it is not registered.
std::optional<std::vector<std::string>> DataFolders(const Module1::Settings& settings, std::string_view game,
                                                    std::string_view name);

// False when it is not registered.
bool IsActive(const Module1::Settings& settings, std::string_view game, std::string_view name);

// A mod keeps its number. Changes nothing when it is not registered, and so do the next two.
void SetActive(Module1::Change& change, std::string_view game, std::string_view name, bool isActive);

// Removes the mod; the later ones move down by one number.
void DeleteMod(Module1::Change& change, std::string_view game, std::string_view name);

// Moves the mod past these, one after the other: it exchanges numbers with each, and what is stored of it passes
// through the scratch section. `passed` are its neighbours from the nearest on, as the list shows them, one for each
// place. False, and nothing moves, when one of them or the mod is not registered.
bool MoveMod(Module1::Change& change, std::string_view game, std::string_view name,
             const std::vector<std::string>& passed);

// Appends the mod to the game's, as an available one.
void RegisterMod(Module1::Change& change, std::string_view game, std::string_view name,
                 const std::vector<std::string>& folders);

// Gives the mod another name and other folders; it keeps its number and stays active or available. False when it is not
// registered.
bool EditMod(Module1::Change& change, std::string_view game, std::string_view name, std::string_view newName,
             const std::vector<std::string>& folders);

// Whether another mod than the edited one, if there is one, has the name.
bool IsNameTaken(const Module1::Settings& settings, std::string_view game, std::string_view name,
                 std::string_view edited = {});

// The folder below a game's install folder that holds the data folders; empty for an empty one. Windows paths.
std::string DataFolderBase(std::string installFolder);
