#include "platform/file_dialog.h"

#include <string>

#include "platform/windows/system.h"

namespace platform {
std::vector<HostPath> GamePlaces() { return {}; }

std::optional<HostPath> FindSteamGame(std::string_view /*fileName*/) { return std::nullopt; }

// Below a key that ends with the session, no key can be made that does not.
void WithoutTraces(const std::function<void()>& act) {
  const std::wstring name = L"Software\\Gantrel-" + std::to_wstring(GetCurrentProcessId());
  HKEY key = nullptr;
  const LONG result = RegCreateKeyExW(HKEY_CURRENT_USER, name.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS,
                                      nullptr, &key, nullptr);
  if (result == ERROR_SUCCESS) RegOverridePredefKey(HKEY_CURRENT_USER, key);
  act();
  if (result != ERROR_SUCCESS) return;
  RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
  ::RegCloseKey(key);
  RegDeleteKeyW(HKEY_CURRENT_USER, name.c_str());
}

}  // namespace platform
