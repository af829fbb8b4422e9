#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>

#include "mods/frmMain.h"
#include "platform/registry.h"

namespace {

using ValueData = std::array<std::byte, 1024>;

// A text without a zero byte has no end that could be trusted.
std::string ValueText(std::uint32_t type, const ValueData& data) {
  if (type == platform::kRegSz || type == platform::kRegExpandSz) {
    const auto* const end = std::ranges::find(data, std::byte{0});
    if (end == data.end()) return "";
    std::string text(static_cast<std::size_t>(end - data.begin()), '\0');
    std::memcpy(text.data(), data.data(), text.size());
    return text;
  }
  if (type == platform::kRegDword) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < sizeof number; ++i) number |= std::to_integer<std::uint32_t>(data[i]) << 8 * i;
    return std::to_string(std::bit_cast<std::int32_t>(number));
  }
  return "";
}

}  // namespace

std::string frmMain::GetKeyValue(std::int32_t KeyRoot, std::string_view KeyName, std::string_view SubKeyRef) {
  platform::RegistryKey key = nullptr;
  if (platform::RegOpenKeyExA(KeyRoot, KeyName, 0, platform::kKeyQueryValue, &key) != platform::kErrorSuccess)
    return "";
  ValueData data = {};
  auto size = static_cast<std::uint32_t>(data.size());
  std::uint32_t type = 0;
  const auto result = platform::RegQueryValueExA(key, SubKeyRef, nullptr, &type, data.data(), &size);
  platform::RegCloseKey(key);
  return result == platform::kErrorSuccess ? ValueText(type, data) : "";
}
