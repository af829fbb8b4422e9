#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Reads the registry, always in the 32-bit view. Text is in the code page.
namespace platform {

constexpr std::int32_t kHkeyLocalMachine = static_cast<std::int32_t>(0x80000002U);

constexpr std::uint32_t kRegSz = 1;
constexpr std::uint32_t kRegExpandSz = 2;
constexpr std::uint32_t kRegDword = 4;

struct RegistryValue {
  std::uint32_t type = 0;
  std::string data;  // raw bytes; text keeps its terminating zero byte if it has one
};

constexpr std::size_t kMostValueBytes = 1024;

// This value in each of the keys below `root`, in the order of `keyNames`; nothing if the key or the value is missing
// or unreadable, or its data exceeds kMostValueBytes. The data is padded to exactly that size with zero bytes. An empty
// `valueName` is the key's default value. Reads the registry files once for all keys.
std::vector<std::optional<RegistryValue>> ReadRegistry(std::int32_t root, std::span<const std::string> keyNames,
                                                       std::string_view valueName);

}  // namespace platform
