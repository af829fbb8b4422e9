#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// Windows takes UTF-16 as wchar_t, the rest of the tool uses char16_t.
namespace platform {

inline std::wstring ToWide(std::u16string_view text) { return {text.begin(), text.end()}; }
inline std::u16string ToUnits(std::wstring_view text) { return {text.begin(), text.end()}; }

// The path in the form that Windows accepts at any length, whatever its settings: absolute, with backslashes, without
// "." and "..", and with the literal-path prefix if it is long.
std::wstring ToSystem(const std::filesystem::path& path);

// Whether a path in that form is a device, such as `NUL`, not in a file system.
bool IsDevice(std::wstring_view systemPath);

}  // namespace platform
