#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The layout of the settings file.
//
//   [Games]       Count, DoW1 ... DoW<Count>: the names of the registered games
//   [<game>]      Path, AutoPath, ModCount
//   [<game>.<n>]  Name, Active, DirCount, Dir1 ... Dir<DirCount>: mod n of the game, n = 1 ... ModCount
//   [<game>.-1]   scratch, used while two mods are swapped
//
// Entries beyond a count are normal: they remain when games and mods are removed, and are never read.
namespace schema {

constexpr std::int64_t kScratchMod = -1;

inline std::string ModSection(std::string_view game, std::int64_t mod) {
  return std::string(game).append(".").append(std::to_string(mod));
}

inline std::string GameKey(std::int64_t game) { return "DoW" + std::to_string(game); }

inline std::string DirKey(std::int64_t folder) { return "Dir" + std::to_string(folder); }

}  // namespace schema
