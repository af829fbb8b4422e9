#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Reading the registry. Always the 32-bit view, whatever the program was built for. Text is in the code page.
namespace platform {

constexpr std::int32_t kHkeyLocalMachine = static_cast<std::int32_t>(0x80000002U);

constexpr std::uint32_t kRegSz = 1;
constexpr std::uint32_t kRegExpandSz = 2;
constexpr std::uint32_t kRegDword = 4;

struct RegistryValue {
  std::uint32_t type = 0;
  std::string data;  // bytes; text has its terminating zero byte where the registry has one
};

constexpr std::size_t kMostValueBytes = 1024;

// The value of this name in each of the keys below `root`, in the order of `keyNames`; nothing where the key or the
// value is missing or cannot be read, or where its data takes more than kMostValueBytes. Zero bytes fill the data up to
// exactly that size. An empty `valueName` is the key's default value. All keys cost one reading of the registry's
// files.
std::vector<std::optional<RegistryValue>> ReadRegistry(std::int32_t root, std::span<const std::string> keyNames,
                                                       std::string_view valueName);

}  // namespace platform
