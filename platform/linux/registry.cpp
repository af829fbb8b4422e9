#include "platform/registry.h"

#include <algorithm>
#include <cstddef>

#include "platform/files.h"
#include "platform/linux/drives.h"
#include "platform/linux/launchers.h"
#include "platform/linux/registry_text.h"

namespace platform {
namespace {

// Translates a prefix's value for the caller; false if impossible. Its paths are on the prefix's own drives; callers
// expect those of the tool's prefix, whose letters may differ.
bool Give(const std::filesystem::path& prefix, const std::optional<std::filesystem::path>& own, RegistryValue& value) {
  if (value.data.size() > kMostValueBytes) return false;
  const std::string_view text = std::string_view(value.data).substr(0, value.data.find('\0'));
  const bool mayBePath = (value.type == kRegSz || value.type == kRegExpandSz) && text.find(':') == 1;
  if (mayBePath && !(own && *own == prefix)) {
    const auto path = MapBetween(prefix, own, text);
    if (!path) return false;
    value.data = *path + '\0';
  }
  value.data.resize(kMostValueBytes);
  return true;
}

}  // namespace

// Takes the first prefix that has the key with a usable value.
std::vector<std::optional<RegistryValue>> ReadRegistry(std::int32_t root, std::span<const std::string> keyNames,
                                                       std::string_view valueName) {
  std::vector<std::optional<RegistryValue>> values(keyNames.size());
  if (root != kHkeyLocalMachine) return values;
  constexpr std::size_t kMost = std::size_t{128} * 1024 * 1024;  // a full prefix has tens of megabytes
  std::string file;
  const auto own = PrefixFolder();
  for (const std::filesystem::path& prefix : Prefixes()) {
    if (ReadFile(prefix / "system.reg", file, kMost)) continue;
    auto found = FindRegistryValues(file, keyNames, valueName);
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (!values[i] && found[i] && Give(prefix, own, *found[i])) values[i] = std::move(found[i]);
    }
    if (std::ranges::all_of(values, [](const auto& value) { return value.has_value(); })) break;
  }
  return values;
}

}  // namespace platform
