#pragma once

#include <filesystem>
#include <vector>

// The compatibility prefixes of this user: the tool's own, and those that Steam, Heroic, Lutris and Bottles keep, be
// they packages of the system, Flatpaks or Snaps. Looked for anew at every call, below the user's home folder and in
// the launchers' own files. What is missing, damaged or unreadable, or leads round in a circle, is passed over in
// silence.
namespace platform {

// Each once, however many links lead to it, in the order in which their registries are asked: the tool's own, the one
// in the home folder, then Steam's, Heroic's, Lutris' and Bottles'. Each has a `system.reg`.
std::vector<std::filesystem::path> Prefixes();

// The folders of Steam's libraries, each once. Each has a folder `steamapps`.
std::vector<std::filesystem::path> SteamLibraries();

// What is in the folder and matches the shell's pattern, with full paths, sorted; braces offer a choice. The folder's
// own name may have any characters.
std::vector<std::filesystem::path> Glob(const std::filesystem::path& folder, const char* pattern);

}  // namespace platform
