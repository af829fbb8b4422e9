#include "platform/registry.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>

#include "platform/files.h"
#include "platform/linux/drives.h"
#include "platform/linux/registry_text.h"

namespace platform {

// What an open key answers queries from; the file is closed by then.
struct OpenRegistryKey {
  std::string lines;
};

// Whoever may read the file may read every key in it, so the access rights do not matter.
std::int32_t RegOpenKeyExA(std::int32_t root, std::string_view keyName, std::uint32_t /*options*/,
                           std::uint32_t /*access*/, RegistryKey* key) {
  *key = nullptr;
  if (root != kHkeyLocalMachine) return kErrorFileNotFound;
  const auto prefix = PrefixFolder();
  if (!prefix) return kErrorFileNotFound;
  constexpr std::size_t kMost = std::size_t{256} * 1024 * 1024;  // a full prefix has tens of megabytes
  FileBytes file(kMost);
  if (file.Read(HostPath{prefix->text + "/system.reg"})) return kErrorFileNotFound;
  const auto lines = FindRegistryKey(file.View(), keyName);
  if (!lines) return kErrorFileNotFound;
  *key = new OpenRegistryKey{std::string(*lines)};
  return kErrorSuccess;
}

std::int32_t RegQueryValueExA(RegistryKey key, std::string_view valueName, const std::uint32_t* /*reserved*/,
                              std::uint32_t* type, std::byte* data, std::uint32_t* size) {
  if (key == nullptr) return kErrorInvalidHandle;
  const auto value = FindRegistryValue(key->lines, valueName);
  if (!value) return kErrorFileNotFound;
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
