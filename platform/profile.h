#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <system_error>

#include "platform/paths.h"

// The profile functions, by the names under which Windows programmers know them, over the rules of profile_text.h.
// They are our own on every system, because only ours leave every byte that a change does not concern as it is.
// Nothing is remembered between calls: each call opens, reads and, to write, replaces the file once.
namespace platform {

// Copies the value, or `fallback` when the file, the section or the key is missing or the file cannot be read, into
// `buffer`: at most its size - 1 bytes, and a NUL. Returns the number of bytes copied, the NUL not counted. `failure`,
// if given, becomes the reason why a file that is there could not be read, and stays as it is otherwise.
std::size_t GetPrivateProfileStringA(std::string_view section, std::string_view key, std::string_view fallback,
                                     std::span<char> buffer, const HostPath& file, std::error_code* failure = nullptr);

// Creates the file when it is missing. Returns whether the value is in the file, on the disk. On failure the file is as
// it was; one that exists but cannot be read is never replaced.
bool WritePrivateProfileStringA(std::string_view section, std::string_view key, std::string_view value,
                                const HostPath& file);

}  // namespace platform
