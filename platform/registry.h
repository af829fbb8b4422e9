#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// Reading the registry, by the names, arguments and result numbers of the system functions: 0 is success, any other
// number a failure. Always the 32-bit view, whatever the program was built for. Text is in the code page.
namespace platform {

using RegistryKey = struct OpenRegistryKey*;

constexpr std::int32_t kHkeyLocalMachine = static_cast<std::int32_t>(0x80000002U);
constexpr std::uint32_t kKeyQueryValue = 1;

constexpr std::uint32_t kRegSz = 1;
constexpr std::uint32_t kRegExpandSz = 2;
constexpr std::uint32_t kRegDword = 4;

constexpr std::int32_t kErrorSuccess = 0;
constexpr std::int32_t kErrorFileNotFound = 2;
constexpr std::int32_t kErrorInvalidHandle = 6;
constexpr std::int32_t kErrorMoreData = 234;

// Opens `keyName` below the root; the key is released with RegCloseKey.
std::int32_t RegOpenKeyExA(std::int32_t root, std::string_view keyName, std::uint32_t options, std::uint32_t access,
                           RegistryKey* key);

// Copies a value's data. `size` is the room in bytes on entry and the data's size on return; when the room is too small
// nothing is copied and the result is kErrorMoreData. Text comes with its terminating zero byte, where the registry
// has one. An empty `valueName` is the key's default value.
std::int32_t RegQueryValueExA(RegistryKey key, std::string_view valueName, const std::uint32_t* reserved,
                              std::uint32_t* type, std::byte* data, std::uint32_t* size);

std::int32_t RegCloseKey(RegistryKey key);

}  // namespace platform
