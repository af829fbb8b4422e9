#include "platform/registry.h"

#include <algorithm>
#include <cstddef>

#include "platform/files.h"
#include "platform/linux/drives.h"
#include "platform/linux/launchers.h"
#include "platform/linux/registry_text.h"

namespace platform {
namespace {

// Paths in a prefix's registry are on its own drives, and everybody else speaks of those of the tool's prefix: there,
// the drives of another one have other letters, or none. Other text stays as it is. Whether the path could be given so.
bool GiveOnOwnDrives(const HostPath& prefix, std::string& data) {
  const std::string_view text = std::string_view(data).substr(0, data.find('\0'));
  const auto own = PrefixFolder();
  if (text.find(':') != 1 || (own && own->text == prefix.text)) return true;
  const auto path = MapBetween(prefix, own, text);
  if (path) data = *path + '\0';
  return path.has_value();
}

// Whether the prefix's value answers; it is brought into the form that is handed out.
bool Take(const HostPath& prefix, std::optional<RegistryValue>& value) {
  if (!value) return false;
  const bool mayBePath = value->type == kRegSz || value->type == kRegExpandSz;
  if (mayBePath && !GiveOnOwnDrives(prefix, value->data)) return false;
  if (value->data.size() > kMostValueBytes) return false;
  value->data.resize(kMostValueBytes);
  return true;
}

}  // namespace

// The first prefix that has the key and in it a value that can be given answers.
std::vector<std::optional<RegistryValue>> ReadRegistry(std::int32_t root, std::span<const std::string> keyNames,
                                                       std::string_view valueName) {
  std::vector<std::optional<RegistryValue>> values(keyNames.size());
  if (root != kHkeyLocalMachine) return values;
  constexpr std::size_t kMost = std::size_t{128} * 1024 * 1024;  // a full prefix has tens of megabytes
  std::string file;
  for (const HostPath& prefix : Prefixes()) {
    if (ReadFile({prefix.text + "/system.reg"}, file, kMost)) continue;
    auto found = FindRegistryValues(file, keyNames, valueName);
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (!values[i] && Take(prefix, found[i])) values[i] = std::move(found[i]);
    }
    if (std::ranges::all_of(values, [](const auto& value) { return value.has_value(); })) break;
  }
  return values;
}

}  // namespace platform
