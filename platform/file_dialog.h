#pragma once

#include <filesystem>
#include <functional>
#include <string_view>
#include <vector>

// The system-specific parts of the open-file dialog.
namespace platform {

// Shortcut folders for finding games: the user's home, Steam libraries, and drive C: of each compatibility prefix.
// Empty where the system's own dialog is used; it has its own shortcuts.
std::vector<std::filesystem::path> GamePlaces();

// Candidate start folders, best first: games in Steam libraries that have a file of this name in any letter case, drive
// C: of each prefix (the tool's own first), the user's home. They need not all exist. Empty where the system's own
// dialog is used.
std::vector<std::filesystem::path> StartFolders(std::string_view fileName);

// Runs `act`, which creates or deletes Qt's file dialog, without reading or writing the list of visited folders in the
// user's settings. On Windows, a temporary registry key replaces these settings while `act` runs.
void WithoutTraces(const std::function<void()>& act);

}  // namespace platform
