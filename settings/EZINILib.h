#pragma once

#include <string>
#include <string_view>

#include "platform/paths.h"

// One value of any profile file. Each call opens the file and is complete in itself.
namespace EZINILib {

// The value, or `fallback` when the file, the section or the key is missing or the file cannot be read. Of either, the
// first 254 characters at most.
std::string ReadINI(const platform::HostPath& file, std::string_view section, std::string_view key,
                    std::string_view fallback);

// A failure is silent and leaves the file as it was.
void WriteINI(const platform::HostPath& file, std::string_view section, std::string_view key, std::string_view value);

}  // namespace EZINILib
