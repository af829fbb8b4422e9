#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// The system's functions take UTF-16 as wchar_t, the rest of the tool has it as char16_t.
namespace platform {

inline std::wstring ToWide(std::u16string_view text) { return {text.begin(), text.end()}; }
inline std::u16string ToUnits(std::wstring_view text) { return {text.begin(), text.end()}; }

// The path in the form in which the system takes any length of it, whatever its settings: complete, with backslashes,
// without "." and "..", and with the mark of a literal path where it is long.
std::wstring ToSystem(const std::filesystem::path& path);

// Whether a path in that form leads to a device, such as `NUL`, rather than into a file system.
bool IsDevice(std::wstring_view systemPath);

}  // namespace platform
