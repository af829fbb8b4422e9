#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

// Host file names are UTF-8; the tool cannot use names that are not valid UTF-8. The way back is std::filesystem::path,
// which takes UTF-16.
namespace platform {

// Nothing if the bytes are not UTF-8, or the code page lacks a character.
std::optional<std::string> FromUtf8Exactly(std::string_view utf8);

// For display: invalid bytes and characters that the code page lacks become "?".
std::string FromUtf8(std::string_view utf8);

// Like AsSpelledOnDisk, but returns why the disk could not be read, and then leaves the path unchanged.
std::error_code SpellAsOnDisk(std::filesystem::path& path);

// No failure if the path exists; broken links count as existing.
std::error_code Look(const std::filesystem::path& path);

// Whether the failure means that the path is known to be missing.
bool IsMissing(const std::error_code& failure);

}  // namespace platform
