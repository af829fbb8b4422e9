#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/paths.h"

// What the open-file dialog has from the system.
namespace platform {

// Folders that games are in: the user's home, those of Steam's libraries, and drive C: of each compatibility prefix.
// Empty where the system's own dialog is used, which has places of its own.
std::vector<HostPath> GamePlaces();

// The folder of the game in the first of Steam's libraries that has one with a file of this name, in any letter case;
// nothing when none has.
std::optional<HostPath> FindSteamGame(std::string_view fileName);

// Makes or ends the toolkit's dialog, which then looks up, and writes down, what was visited, in the user's settings
// for all programs of its kind. Where these settings are the system's own, they take nothing from this program
// meanwhile.
void WithoutTraces(const std::function<void()>& act);

}  // namespace platform
