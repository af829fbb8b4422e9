#pragma once

#include <optional>
#include <string>
#include <string_view>

// The host's file names are UTF-8; what is not valid UTF-8 is a name that the tool cannot speak of.
namespace platform {

std::string ToUtf8(std::string_view text);

// Nothing when the bytes are no UTF-8, or the code page lacks one of the characters.
std::optional<std::string> FromUtf8Exactly(std::string_view utf8);

// For showing: characters outside the code page, and bytes that are no UTF-8, become "?".
std::string FromUtf8(std::string_view utf8);

}  // namespace platform
