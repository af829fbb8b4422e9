#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

// The host's file names are UTF-8; what is not valid UTF-8 is a name that the tool cannot speak of. The way back is
// std::filesystem::path, which takes UTF-16.
namespace platform {

// Nothing when the bytes are no UTF-8, or the code page lacks one of the characters.
std::optional<std::string> FromUtf8Exactly(std::string_view utf8);

// For showing: characters outside the code page, and bytes that are no UTF-8, become "?".
std::string FromUtf8(std::string_view utf8);

// AsSpelledOnDisk for those who must not take what the disk does not tell for missing: then says why, and leaves the
// path as it is.
std::error_code SpellAsOnDisk(std::filesystem::path& path);

// No failure for what is there, which may be a link that leads nowhere.
std::error_code Look(const std::filesystem::path& path);

// Whether what failed so is known not to be there.
bool IsMissing(const std::error_code& failure);

}  // namespace platform
