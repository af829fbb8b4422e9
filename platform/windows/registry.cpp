#include "platform/registry.h"

#include <string>

#include "platform/windows/system.h"

namespace platform {
namespace {

HKEY ToSystem(RegistryKey key) { return reinterpret_cast<HKEY>(key); }

// The predefined keys are numbers in the place of handles, extended by their sign.
HKEY PredefinedKey(std::int32_t root) { return reinterpret_cast<HKEY>(static_cast<std::intptr_t>(root)); }

}  // namespace

std::int32_t RegOpenKeyExA(std::int32_t root, std::string_view keyName, std::uint32_t options, std::uint32_t access,
                           RegistryKey* key) {
  *key = nullptr;
  HKEY opened = nullptr;
  const LONG result =
      ::RegOpenKeyExA(PredefinedKey(root), std::string(keyName).c_str(), options, access | KEY_WOW64_32KEY, &opened);
  if (result == ERROR_SUCCESS) *key = reinterpret_cast<RegistryKey>(opened);
  return static_cast<std::int32_t>(result);
}

std::int32_t RegQueryValueExA(RegistryKey key, std::string_view valueName, const std::uint32_t* /*reserved*/,
                              std::uint32_t* type, std::byte* data, std::uint32_t* size) {
  DWORD itsType = 0;
  DWORD itsSize = *size;
  const LONG result = ::RegQueryValueExA(ToSystem(key), std::string(valueName).c_str(), nullptr, &itsType,
                                         reinterpret_cast<BYTE*>(data), &itsSize);
  *type = static_cast<std::uint32_t>(itsType);
  *size = static_cast<std::uint32_t>(itsSize);
  return static_cast<std::int32_t>(result);
}

std::int32_t RegCloseKey(RegistryKey key) { return static_cast<std::int32_t>(::RegCloseKey(ToSystem(key))); }

}  // namespace platform
