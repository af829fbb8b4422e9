#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

// The drives of a compatibility prefix: the folder in which the game's Windows lives on this system. The functions take
// the prefix, so that they can be tried on any folder.
namespace platform {

// The user's; the root folder when the system does not tell.
std::filesystem::path HomeFolder();

// The prefix whose drives the settings' paths are on: the one that holds the running executable, or else the one in the
// user's home folder; nothing when there is none, or where the executable is could not be found out. One that another
// user owns, in a folder that everybody may write to, is passed over.
std::optional<std::filesystem::path> PrefixFolder();

// Below, no prefix means that there is z: alone.

// The folder of one drive. A letter is the link that the prefix's `dosdevices` has for it, and none if that leads
// nowhere; without a link, c: is the prefix's `drive_c` and z: is the root folder. A link that the system does not tell
// about is the drive all the same, so that what is below it fails for the true reason rather than being elsewhere.
std::optional<std::filesystem::path> DriveFolder(const std::optional<std::filesystem::path>& prefix, char letter);

std::optional<std::filesystem::path> MapToHost(const std::optional<std::filesystem::path>& prefix,
                                               std::string_view windowsPath);

// On the drive that is nearest above it; nothing when there is none, or the code page cannot spell the path. `path` is
// absolute.
std::optional<std::string> MapToWindows(const std::optional<std::filesystem::path>& prefix,
                                        const std::filesystem::path& path);

// What a path on a drive of one prefix is on the drives of another; nothing when there is no such drive, or the code
// page cannot spell the path. The links behind the drive's letter are followed, those below it stay.
std::optional<std::string> MapBetween(const std::optional<std::filesystem::path>& from,
                                      const std::optional<std::filesystem::path>& to, std::string_view windowsPath);

}  // namespace platform
