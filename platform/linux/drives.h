#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

// The drives of a compatibility prefix: the folder that holds the game's Windows. The functions take the prefix as an
// argument, so that tests can use any folder.
namespace platform {

// The user's; the root folder if unknown.
std::filesystem::path HomeFolder();

// The prefix that defines the drives of the settings' paths: the one that contains the executable, else the one in the
// user's home. Nothing if there is none or the executable's folder is unknown. A prefix of another user in a
// world-writable folder is skipped.
std::optional<std::filesystem::path> PrefixFolder();

// In the functions below, without a prefix there is only z:.

// The folder of a drive: the target of the letter's link in the prefix's `dosdevices`, none if that is broken; without
// a link, c: is the prefix's `drive_c` and z: the root folder. An unreadable link still counts as the drive, so that
// paths below it fail for the true reason and do not lead elsewhere.
std::optional<std::filesystem::path> DriveFolder(const std::optional<std::filesystem::path>& prefix, char letter);

std::optional<std::filesystem::path> MapToHost(const std::optional<std::filesystem::path>& prefix,
                                               std::string_view windowsPath);

// On the drive whose folder is the nearest parent; nothing if there is none, or the code page cannot spell the path.
// `path` is absolute.
std::optional<std::string> MapToWindows(const std::optional<std::filesystem::path>& prefix,
                                        const std::filesystem::path& path);

// Converts a path on a drive of one prefix to the drives of another; nothing if there is no such drive, or the code
// page cannot spell the path. Follows the drive's link, but no links below it.
std::optional<std::string> MapBetween(const std::optional<std::filesystem::path>& from,
                                      const std::optional<std::filesystem::path>& to, std::string_view windowsPath);

}  // namespace platform
