#include "platform/registry.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/files.h"
#include "platform/linux/drives.h"
#include "platform/linux/launchers.h"
#include "platform/linux/registry_text.h"

namespace platform {

// What an open key answers queries from; the file is closed by then.
struct OpenRegistryKey {
  std::string lines;
  HostPath prefix;
};

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

}  // namespace

// Whoever may read the file may read every key in it, so the access rights do not matter. The first prefix that has the
// key answers.
std::int32_t RegOpenKeyExA(std::int32_t root, std::string_view keyName, std::uint32_t /*options*/,
                           std::uint32_t /*access*/, RegistryKey* key) {
  *key = nullptr;
  if (root != kHkeyLocalMachine) return kErrorFileNotFound;
  constexpr std::size_t kMost = std::size_t{256} * 1024 * 1024;  // a full prefix has tens of megabytes
  std::string file;
  for (const HostPath& prefix : Prefixes()) {
    if (ReadFile({prefix.text + "/system.reg"}, file, kMost)) continue;
    const auto lines = FindRegistryKey(file, keyName);
    if (!lines) continue;
    *key = new OpenRegistryKey{std::string(*lines), prefix};
    return kErrorSuccess;
  }
  return kErrorFileNotFound;
}

std::int32_t RegQueryValueExA(RegistryKey key, std::string_view valueName, const std::uint32_t* /*reserved*/,
                              std::uint32_t* type, std::byte* data, std::uint32_t* size) {
  if (key == nullptr) return kErrorInvalidHandle;
  auto value = FindRegistryValue(key->lines, valueName);
  if (!value) return kErrorFileNotFound;
  const bool mayBePath = value->type == kRegSz || value->type == kRegExpandSz;
  if (mayBePath && !GiveOnOwnDrives(key->prefix, value->data)) return kErrorFileNotFound;
  const std::uint32_t room = *size;
  *type = value->type;
  *size = static_cast<std::uint32_t>(value->data.size());
  if (*size > room) return kErrorMoreData;
  std::ranges::copy(std::as_bytes(std::span(value->data)), data);
  return kErrorSuccess;
}

std::int32_t RegCloseKey(RegistryKey key) {
  if (key == nullptr) return kErrorInvalidHandle;
  delete key;
  return kErrorSuccess;
}

}  // namespace platform
