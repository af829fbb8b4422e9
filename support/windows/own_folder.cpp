#include "support/own_folder.h"

#include <cstdio>
#include <cstdlib>
#include <ranges>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "platform/windows/system.h"
#include "support/system.h"

namespace fs = std::filesystem;

// The settings hold paths on drive C:, and the registry is one for the whole machine, so the tests take both for
// themselves. Whoever starts them says by an environment variable that the machine is there for that.
namespace support {
namespace {

constexpr const wchar_t* kPermission = L"GANTREL_TEST_MACHINE";
constexpr const wchar_t* kRootVariable = L"GANTREL_TEST_ROOT";
constexpr const wchar_t* kNotOursVariable = L"GANTREL_TEST_NOT_OURS";  // what was on drive C: before, divided by "|"

fs::path Executable() {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
  return path;
}

std::wstring NamesOnDriveC() {
  std::wstring names = L"|";
  for (const auto& entry : fs::directory_iterator(DriveC())) names += entry.path().filename().native() + L"|";
  return names;
}

// Removes what is on drive C: now and was not before, but for `kept` and the folders above it.
void RemoveOurs(const std::wstring& notOurs, const fs::path& kept) {
  std::vector<fs::path> ours;
  for (const auto& entry : fs::directory_iterator(DriveC())) {
    if (notOurs.find(L"|" + entry.path().filename().native() + L"|") != std::wstring::npos) continue;
    ours.push_back(entry.path());
    if (!entry.is_directory()) continue;
    for (const auto& below : fs::recursive_directory_iterator(entry)) ours.push_back(below.path());
  }
  std::error_code isNotEmpty;
  for (const fs::path& path : ours | std::views::reverse) {  // what is in a folder comes behind it
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (fs::is_directory(path)) {
      fs::remove(path, isNotEmpty);
    } else if (path != kept) {
      fs::remove(path);
    }
  }
}

}  // namespace

fs::path Root() {
  const wchar_t* const root = _wgetenv(kRootVariable);
  if (root == nullptr) throw std::logic_error("not started by RunInOwnFolder");
  return root;
}

fs::path DriveC() { return L"C:\\"; }

void Reset() {
  RemoveOurs(_wgetenv(kNotOursVariable), Executable());
  fs::create_directories(Root());
  SetRegistry({});
  for (const char* const name : {"Make.ini", "HEADER", "FOOTER"}) {
    fs::copy_file(fs::path(GANTREL_SOURCE_DIR) / "templates" / name, ExecutableFolder() / name);
  }
}

int RunInOwnFolder(int argumentCount, char** arguments, int (*run)(int, char**)) {
  if (_wgetenv(kRootVariable) != nullptr) return run(argumentCount, arguments);
  if (_wgetenv(kPermission) == nullptr) {
    std::fputs(
        "The tests put games on drive C: and into the registry, and remove them again. On a machine where nothing of\n"
        "that can be lost, set GANTREL_TEST_MACHINE to 1.\n",
        stderr);
    return EXIT_FAILURE;
  }
  const std::wstring notOurs = NamesOnDriveC();
  _wputenv_s(kNotOursVariable, notOurs.c_str());
  _wputenv_s(kRootVariable, (DriveC() / u8"gantrel \u00FCber all").c_str());
  const fs::path copy = ExecutableFolder() / "gantrel-test.exe";
  fs::create_directories(ExecutableFolder());
  fs::copy_file(Executable(), copy, fs::copy_options::overwrite_existing);

  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION child = {};
  DWORD exitCode = EXIT_FAILURE;
  if (CreateProcessW(copy.c_str(), GetCommandLineW(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &child) !=
      0) {
    WaitForSingleObject(child.hProcess, INFINITE);
    GetExitCodeProcess(child.hProcess, &exitCode);
    CloseHandle(child.hThread);
    CloseHandle(child.hProcess);
  }
  SetRegistry({});
  RemoveOurs(notOurs, {});
  return static_cast<int>(exitCode);
}

}  // namespace support
