#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// The tool keeps its files beside its executable, so a test program runs from a folder of its own: a fresh
// compatibility prefix, whose names have blanks and letters beyond ASCII, with the program itself on its drive C:.
namespace support {

// Starts this program again from a fresh folder, waits for it, and removes the folder. In the started program, returns
// what `run` returns.
int RunInOwnFolder(int argumentCount, char** arguments, int (*run)(int argumentCount, char** arguments));

// All below are of the program's own folder.
std::filesystem::path Root();  // holds all the others, and the prefix and the home folder beside it
std::filesystem::path Prefix();
std::filesystem::path DriveC();
std::filesystem::path ExecutableFolder();  // on drive C:
std::filesystem::path SettingsFile();

// Everything as at the start again, with the templates and no settings file.
void Reset();

void WriteFile(const std::filesystem::path& file, std::string_view bytes);
std::string ReadFile(const std::filesystem::path& file);  // empty when there is none

}  // namespace support
