#include "support/own_folder.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "platform/windows/system.h"

// The settings use paths on drive C:, and the registry is machine-wide, so the tests take over a part of both. An
// environment variable must confirm that the machine may be used for this.
namespace support {
namespace {

std::string KeyIn(bool is64BitView) { return is64BitView ? "Software\\THQ" : "Software\\Wow6432Node\\THQ"; }

BOOL CALLBACK EndSession(HWND window, LPARAM /*parameter*/) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process != GetCurrentProcessId()) return TRUE;
  if (SendMessageW(window, WM_QUERYENDSESSION, 0, 0) != 0) SendMessageW(window, WM_ENDSESSION, TRUE, 0);
  return TRUE;
}

}  // namespace

void SetRegistry(const std::vector<Installation>& installations) {
  for (const bool is64BitView : {false, true}) RegDeleteTreeA(HKEY_LOCAL_MACHINE, KeyIn(is64BitView).c_str());
  for (const auto& [edition, folder, isIn64BitView, type] : installations) {
    const std::string key = KeyIn(isIn64BitView) + "\\" + edition;
    const bool isText = type == 0;
    const LONG result = RegSetKeyValueA(HKEY_LOCAL_MACHINE, key.c_str(), "InstallLocation", isText ? REG_SZ : type,
                                        folder.c_str(), static_cast<DWORD>(folder.size() + (isText ? 1 : 0)));
    if (result != ERROR_SUCCESS) throw std::runtime_error("the registry cannot be changed: " + std::to_string(result));
  }
}

fs::path Root() { return DriveC() / u8"gantrel \u00FCber all"; }
fs::path DriveC() { return L"C:\\"; }

void MakeRoot() {
  if (std::getenv("GANTREL_TEST_MACHINE") != nullptr) return;
  std::fputs(
      "The tests remove C:\\Games and what the registry knows of the game, and put their own there. On a machine\n"
      "where nothing of that can be lost, set GANTREL_TEST_MACHINE to 1.\n",
      stderr);
  std::exit(EXIT_FAILURE);
}

void MakeDrives() {}

void AskToQuit() { EnumWindows(EndSession, 0); }

}  // namespace support
