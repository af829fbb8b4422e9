#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "support/own_folder.h"

// A registered game with a given number of mods, each with two folders by default.
namespace sample {

constexpr const char* kGame = "Dawn of War";

enum class Active : std::uint8_t { None, EverySecond, All };

inline std::filesystem::path GameFolder() { return support::DriveC() / "Games" / "DoW"; }

inline std::string Folder(int mod, int folder) {
  return "Mod" + std::to_string(mod) + (folder == 1 ? "_Data" : "_Sound");
}

// The first two data folders of each mod, and no others.
inline void MakeFolders(int mods) {
  std::filesystem::remove_all(GameFolder());
  for (int n = 1; n <= mods; ++n) {
    for (const int j : {1, 2}) std::filesystem::create_directories(GameFolder() / "W40k" / Folder(n, j));
  }
}

inline std::string Settings(int mods, Active active, int folders = 2) {
  const std::string game = kGame;
  std::string text = "[Games]\r\nCount=1\r\nDoW1=" + game + "\r\n[" + game +
                     "]\r\nPath=C:\\Games\\DoW\\\r\nModCount=" + std::to_string(mods) + "\r\n";
  for (int n = 1; n <= mods; ++n) {
    const std::string number = std::to_string(n);
    const bool isActive = active == Active::All || (active == Active::EverySecond && n % 2 == 0);
    text += "[" + game + "." + number + "]\r\nName=Mod " + number + "\r\nActive=" + (isActive ? "1" : "0") +
            "\r\nDirCount=" + std::to_string(folders) + "\r\n";
    for (int j = 1; j <= folders; ++j) text += "Dir" + std::to_string(j) + "=" + Folder(n, j) + "\r\n";
  }
  return text;
}

}  // namespace sample
