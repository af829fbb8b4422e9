#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// The tool keeps its files beside its executable, so a test program runs from a folder of its own, whose names have
// blanks and letters beyond ASCII: in a fresh compatibility prefix, or on a Windows that is there for the tests alone.
namespace support {

namespace fs = std::filesystem;

// Starts this program again from a fresh folder, waits for it, and removes the folder. In the started program, returns
// what `run` returns.
int RunInOwnFolder(int argumentCount, char** arguments, int (*run)(int argumentCount, char** arguments));

// All below are of the program's own folder.
fs::path Root();              // a fresh folder; removed with all that is in it
fs::path DriveC();            // where Windows paths on drive C: lead
fs::path ExecutableFolder();  // on drive C:
fs::path SettingsFile();

// Everything as at the start again, with the templates and no settings file. The registry knows nothing of the game.
void Reset();

void WriteFile(const fs::path& file, std::string_view bytes);
std::string ReadFile(const fs::path& file);  // empty when there is none

// An edition of the game in the registry, and where it is installed; text in the code page.
struct Installation {
  std::string edition;
  std::string folder;
  bool isIn64BitView = false;
  std::uint32_t type = 0;  // of the registry's value, whose bytes `folder` is then; 0 for a text
};

// What follows each system has its own way to do.

// Makes these the installations that the registry knows.
void SetRegistry(const std::vector<Installation>& installations);

// Asks this program to quit, as the desktop does at the end of its session.
void AskToQuit();

// For the above: where Root is, which is asked for once, and the drives in it. The first ends the program where it may
// have none.
void MakeRoot();
void MakeDrives();

}  // namespace support
