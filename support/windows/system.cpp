#include "support/system.h"

#include <stdexcept>

#include "platform/windows/system.h"

namespace support {
namespace {

constexpr const char* kPublisher = "Software\\THQ";

REGSAM In(View view) { return view == View::Bits32 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY; }

void Check(LONG result) {
  if (result != ERROR_SUCCESS) throw std::runtime_error("the registry cannot be changed: " + std::to_string(result));
}

void ForgetAll(View view) {
  HKEY key = nullptr;
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, kPublisher, 0, KEY_ALL_ACCESS | In(view), &key) != ERROR_SUCCESS) return;
  Check(RegDeleteTreeA(key, nullptr));
  Check(RegCloseKey(key));
}

void Add(const Installation& installation) {
  HKEY key = nullptr;
  const std::string name = std::string(kPublisher) + "\\" + installation.edition;
  Check(RegCreateKeyExA(HKEY_LOCAL_MACHINE, name.c_str(), 0, nullptr, 0, KEY_SET_VALUE | In(installation.view), nullptr,
                        &key, nullptr));
  const bool isText = installation.type == 0;
  Check(RegSetValueExA(key, "InstallLocation", 0, isText ? REG_SZ : installation.type,
                       reinterpret_cast<const BYTE*>(installation.folder.c_str()),
                       static_cast<DWORD>(installation.folder.size() + (isText ? 1 : 0))));
  Check(RegCloseKey(key));
}

BOOL CALLBACK EndSession(HWND window, LPARAM /*parameter*/) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process != GetCurrentProcessId()) return TRUE;
  if (SendMessageW(window, WM_QUERYENDSESSION, 0, 0) != 0) SendMessageW(window, WM_ENDSESSION, TRUE, 0);
  return TRUE;
}

}  // namespace

void SetRegistry(const std::vector<Installation>& installations) {
  ForgetAll(View::Bits32);
  ForgetAll(View::Bits64);
  for (const Installation& installation : installations) Add(installation);
}

std::vector<std::string> OtherNamesOfDriveC() { return {"c:\\", "C:/", "\\\\?\\C:\\"}; }

void AskToQuit() { EnumWindows(EndSession, 0); }

double ProcessorSeconds() {
  FILETIME created = {};
  FILETIME ended = {};
  FILETIME inKernel = {};
  FILETIME inProgram = {};
  GetProcessTimes(GetCurrentProcess(), &created, &ended, &inKernel, &inProgram);
  const auto seconds = [](const FILETIME& time) {
    constexpr double kUnit = 1e-7;
    return kUnit * (4294967296.0 * static_cast<double>(time.dwHighDateTime) + static_cast<double>(time.dwLowDateTime));
  };
  return seconds(inKernel) + seconds(inProgram);
}

}  // namespace support
