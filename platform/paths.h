#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

// Two kinds of path, distinguished by type.
//
// The settings, the registry and the game's files use Windows paths, `C:\Games\DoW\`, on every system: plain text in
// the code page. System functions take std::filesystem::path, which can also hold names that the code page lacks.
namespace platform {

// A file beside the running executable. Looks up the folder at every call. `name` is text in the code page with either
// separator; it need not exist. If the folder is unknown, the path is not absolute, and no function reads or replaces
// it.
std::filesystem::path BesideExecutable(std::string_view name);

// The system path of a Windows path; nothing if it names no existing drive. A path that begins with a slash is taken as
// a system path. Reads only the links that define the drives.
std::optional<std::filesystem::path> ToHostPath(std::string_view windowsPath);

// The path with each component spelled as on the disk: as given if that exists, otherwise the first spelling, by bytes,
// that differs only in letter case. As given from the first missing component on; entirely if the disk cannot be read.
std::filesystem::path AsSpelledOnDisk(const std::filesystem::path& path);

// The Windows path of a file or folder, on the drive whose folder is the nearest parent; nothing if there is none, or
// the code page cannot spell the path.
std::optional<std::string> ToWindowsPath(const std::filesystem::path& path);

// For display: characters that the code page lacks become "?".
std::string DisplayName(const std::filesystem::path& path);

}  // namespace platform
