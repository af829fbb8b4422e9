#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/own_folder.h"

// A registered game with four mods, of which the first and the third are active.
namespace support {

using Lines = std::initializer_list<const char*>;
using Names = std::vector<std::string>;

inline std::string Text(Lines lines) {
  std::string text;
  for (const char* const line : lines) text.append(line).append("\r\n");
  return text;
}

inline std::filesystem::path GameFolder() { return DriveC() / "Games" / u8"D\u00F6W"; }
inline std::filesystem::path ModuleFile() { return GameFolder() / "Ulvane.module"; }

inline std::string FourMods() {
  return Text({"[Games]",          "Count=1",
               "DoW1=Dawn of War",  //
               "[Dawn of War]",    "Path=C:\\Games\\D\xF6W\\",
               "ModCount=4",  //
               "[Dawn of War.1]",  "Name=Alpha",
               "Active=1",         "DirCount=1",
               "Dir1=AlphaData",   "[Dawn of War.2]",
               "Name=Beta",        "Active=0",
               "DirCount=1",       "Dir1=BetaData",
               "[Dawn of War.3]",  "Name=Gamma",
               "Active=1",         "DirCount=2",
               "Dir1=GammaData",   "Dir2=GammaSound",
               "[Dawn of War.4]",  "Name=Delta",
               "Active=0",         "DirCount=0"});
}

// The whole module file, when these are the lines between header and footer.
inline std::string Module(Lines folders) {
  return ReadFile(ExecutableFolder() / "HEADER") + Text(folders) + ReadFile(ExecutableFolder() / "FOOTER");
}

inline void ResetWithFourMods() {
  Reset();
  std::filesystem::create_directories(GameFolder());
  WriteFile(SettingsFile(), FourMods());
}

// `text` with its one `old` replaced, to say what a command changed in it. Throws when there is none, or more.
inline std::string With(std::string text, const std::string& old, const std::string& with) {
  const std::size_t at = text.find(old);
  if (at == std::string::npos || text.find(old, at + 1) != std::string::npos) throw std::logic_error("not one " + old);
  return text.replace(at, old.size(), with);
}

class WithFourMods : public testing::Test {
 protected:
  void SetUp() override { ResetWithFourMods(); }
};

}  // namespace support
