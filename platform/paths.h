#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Two kinds of path, told apart by their types.
//
// The settings, the registry and the game's own files speak Windows paths, `C:\Games\DoW\`, on every system: plain
// text in the code page. What the system's own functions take is a std::filesystem::path, which holds names that the
// code page cannot spell as well.
namespace platform {

// A file beside the running executable. The folder is asked for at every call. `name` is text in the code page, with
// separators in either direction; it need not exist. Where the system does not tell the folder, the path is not
// absolute, and no function reads or replaces it.
std::filesystem::path BesideExecutable(std::string_view name);

// Where a Windows path leads on this system; nothing when it names no drive that there is. A path that begins with a
// slash is taken as the system's own. Touches no file but the links that say where the drives are.
std::optional<std::filesystem::path> ToHostPath(std::string_view windowsPath);

// The path with each component as it is spelled on the disk: as given where that exists, otherwise in the first
// spelling, by byte order, that differs in letter case alone. From the first missing component on, as given; all of it
// where the disk does not tell.
std::filesystem::path AsSpelledOnDisk(const std::filesystem::path& path);

// The Windows path of a file or folder, on the drive whose folder is the nearest above it; nothing when there is none,
// or the code page cannot spell the path.
std::optional<std::string> ToWindowsPath(const std::filesystem::path& path);

// For showing: characters outside the code page are "?".
std::string DisplayName(const std::filesystem::path& path);

enum class Hidden : std::uint8_t { LeftOut, Listed };

// The names of the folders immediately below a folder, links to folders included, sorted without regard to letter
// case. Left out are those whose name the code page cannot spell, since the game could not find them. Nothing when the
// folder is missing or cannot be listed.
std::optional<std::vector<std::string>> ListSubfolders(std::string_view windowsPath, Hidden hidden = Hidden::LeftOut);

}  // namespace platform
