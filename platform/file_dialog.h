#pragma once

#include <filesystem>
#include <functional>
#include <string_view>
#include <vector>

// What the open-file dialog has from the system.
namespace platform {

// Folders that games are in: the user's home, those of Steam's libraries, and drive C: of each compatibility prefix.
// Empty where the system's own dialog is used, which has places of its own.
std::vector<std::filesystem::path> GamePlaces();

// Where to start looking for a file, best first: games in Steam's libraries that have a file of this name, in any
// letter case, then drive C: of each prefix, the tool's own first, then the user's home. Not all need be there. Empty
// where the system's own dialog is used.
std::vector<std::filesystem::path> StartFolders(std::string_view fileName);

// Runs `act`, which creates or deletes Qt's file dialog. The dialog reads and writes a list of visited folders in the
// user's settings. On Windows, a temporary registry key takes the place of these settings while `act` runs.
void WithoutTraces(const std::function<void()>& act);

}  // namespace platform
