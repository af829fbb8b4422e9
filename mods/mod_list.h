#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/Module1.h"

// The rules for a game's mods, on settings in memory. A mod's number is its place in the load order. Mods are
// identified by name; of two with the same name, the first counts.

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

// A mod's data folders in stored order; nothing if it is not registered.
std::optional<std::vector<std::string>> DataFolders(const Module1::Settings& settings, std::string_view game,
                                                    std::string_view name);

// False if it is not registered.
bool IsActive(const Module1::Settings& settings, std::string_view game, std::string_view name);

// Keeps the mod's number. This and the next two do nothing if the mod is not registered.
void SetActive(Module1::Change& change, std::string_view game, std::string_view name, bool isActive);

// Removes the mod; later mods move down by one number.
void DeleteMod(Module1::Change& change, std::string_view game, std::string_view name);

// Moves the mod past these neighbours, listed from the nearest on as in the shown list: swaps numbers with each in
// turn, through the scratch section. False without any change if the mod or a neighbour is not registered.
bool MoveMod(Module1::Change& change, std::string_view game, std::string_view name,
             const std::vector<std::string>& passed);

// Appends an available mod.
void RegisterMod(Module1::Change& change, std::string_view game, std::string_view name,
                 const std::vector<std::string>& folders);

// Changes the mod's name and folders; keeps its number and whether it is active. False if it is not registered.
bool EditMod(Module1::Change& change, std::string_view game, std::string_view name, std::string_view newName,
             const std::vector<std::string>& folders);

// Whether a mod other than `edited` has the name.
bool IsNameTaken(const Module1::Settings& settings, std::string_view game, std::string_view name,
                 std::string_view edited = {});

// The folder that contains a game's data folders; empty for an empty folder. Windows paths.
std::string DataFolderBase(std::string installFolder);
