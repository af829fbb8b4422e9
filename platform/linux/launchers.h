#pragma once

#include <filesystem>
#include <vector>

// The user's compatibility prefixes: the tool's own, and those of Steam, Heroic, Lutris and Bottles, installed as
// system packages, Flatpaks or Snaps. Searches the user's home folder and the launchers' files at every call. Silently
// skips what is missing, damaged, unreadable or circular.
namespace platform {

// Each once, however many links lead to it, in the order in which their registries are searched: the tool's own, the
// one in the home folder, then Steam's, Heroic's, Lutris' and Bottles'. Each has a `system.reg`.
std::vector<std::filesystem::path> Prefixes();

// The folders of Steam's libraries, without duplicates. Each has a folder `steamapps`.
std::vector<std::filesystem::path> SteamLibraries();

// The folder's entries that match the shell pattern, braces included; full paths, sorted. The folder's own name may
// contain any characters.
std::vector<std::filesystem::path> Glob(const std::filesystem::path& folder, const char* pattern);

}  // namespace platform
