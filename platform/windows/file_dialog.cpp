#include "platform/file_dialog.h"

#include <memory>
#include <string>
#include <type_traits>

#include "platform/windows/system.h"

namespace fs = std::filesystem;

namespace platform {

std::vector<fs::path> GamePlaces() { return {}; }

std::vector<fs::path> StartFolders(std::string_view /*fileName*/) { return {}; }

// A volatile key cannot have persistent subkeys.
void WithoutTraces(const std::function<void()>& act) {
  const std::wstring name = L"Software\\Gantrel-" + std::to_wstring(GetCurrentProcessId());
  HKEY key = nullptr;
  const LONG result = RegCreateKeyExW(HKEY_CURRENT_USER, name.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS,
                                      nullptr, &key, nullptr);
  const auto undo = [&name](HKEY replacement) {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    ::RegCloseKey(replacement);
    RegDeleteKeyW(HKEY_CURRENT_USER, name.c_str());
  };
  // Restores also when `act` throws.
  const std::unique_ptr<std::remove_pointer_t<HKEY>, decltype(undo)> held(result == ERROR_SUCCESS ? key : nullptr,
                                                                          undo);
  if (held) RegOverridePredefKey(HKEY_CURRENT_USER, held.get());
  act();
}

}  // namespace platform
