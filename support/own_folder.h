#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// The tool keeps its files beside its executable, so a test program runs from its own folder, whose name has blanks and
// non-ASCII letters: in a fresh compatibility prefix, or on a Windows set up only for tests.
namespace support {

namespace fs = std::filesystem;

// Restarts this program in a fresh folder, waits for it, and removes the folder. In the restarted program, returns the
// result of `run`.
int RunInOwnFolder(int argumentCount, char** arguments, int (*run)(int argumentCount, char** arguments));

// The program's own folders.
fs::path Root();              // a fresh folder; removed with all that is in it
fs::path DriveC();            // the folder behind drive C:
fs::path ExecutableFolder();  // on drive C:
fs::path SettingsFile();

// Restores the initial state: the templates, no settings file, no game in the registry.
void Reset();

void WriteFile(const fs::path& file, std::string_view bytes);
std::string ReadFile(const fs::path& file);  // empty when there is none

// An edition of the game in the registry and its install folder; text in the code page.
struct Installation {
  std::string edition;
  std::string folder;
  bool isIn64BitView = false;
  std::uint32_t type = 0;  // of the registry value, whose bytes are then `folder`; 0 for text
};

// The rest is implemented per system.

// Makes these the only installations in the registry.
void SetRegistry(const std::vector<Installation>& installations);

// Asks this program to quit, like the end of the desktop session.
void AskToQuit();

// Used by RunInOwnFolder: prepares Root once, and its drives. MakeRoot ends the program if Root is not allowed.
void MakeRoot();
void MakeDrives();

}  // namespace support
