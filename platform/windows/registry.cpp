#include "platform/registry.h"

#include "platform/windows/system.h"

namespace platform {
namespace {

// Ignores the data's size: the rest of the buffer is zero bytes.
std::optional<RegistryValue> Read(HKEY root, const std::string& keyName, const std::string& valueName) {
  HKEY key = nullptr;
  if (RegOpenKeyExA(root, keyName.c_str(), 0, KEY_QUERY_VALUE | KEY_WOW64_32KEY, &key) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::string data(kMostValueBytes, '\0');
  DWORD type = 0;
  DWORD size = kMostValueBytes;
  const LONG result =
      RegQueryValueExA(key, valueName.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(data.data()), &size);
  RegCloseKey(key);
  if (result != ERROR_SUCCESS) return std::nullopt;
  return RegistryValue{static_cast<std::uint32_t>(type), data};
}

}  // namespace

std::vector<std::optional<RegistryValue>> ReadRegistry(std::int32_t root, std::span<const std::string> keyNames,
                                                       std::string_view valueName) {
  // Predefined keys are sign-extended numbers, not handles.
  auto* const rootKey = reinterpret_cast<HKEY>(static_cast<std::intptr_t>(root));
  std::vector<std::optional<RegistryValue>> values;
  for (const std::string& keyName : keyNames) values.push_back(Read(rootKey, keyName, std::string(valueName)));
  return values;
}

}  // namespace platform
