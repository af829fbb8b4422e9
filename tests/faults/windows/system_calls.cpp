#include "tests/faults/system_calls.h"

#include <stdexcept>
#include <type_traits>
#include <utility>

#include "platform/windows/system.h"
#include "support/own_folder.h"

// The program calls the system through a table of addresses, where ours take the place of the system's: the call's
// name, and what it returns when it fails.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming, cppcoreguidelines-macro-usage)
#define GANTREL_CALLS(CALL)                         \
  CALL(CreateFileW, INVALID_HANDLE_VALUE)           \
  CALL(CreateDirectoryW, FALSE)                     \
  CALL(CreateHardLinkW, FALSE)                      \
  CALL(DeleteFileW, FALSE)                          \
  CALL(FindFirstFileExW, INVALID_HANDLE_VALUE)      \
  CALL(FlushFileBuffers, FALSE)                     \
  CALL(GetFileAttributesW, INVALID_FILE_ATTRIBUTES) \
  CALL(GetFileInformationByHandle, FALSE)           \
  CALL(GetFileSecurityW, FALSE)                     \
  CALL(GetFileType, FILE_TYPE_UNKNOWN)              \
  CALL(GetFinalPathNameByHandleW, 0)                \
  CALL(GetFullPathNameW, 0)                         \
  CALL(GetModuleFileNameW, 0)                       \
  CALL(MoveFileExW, FALSE)                          \
  CALL(ReadFile, FALSE)                             \
  CALL(SetEndOfFile, FALSE)                         \
  CALL(SetFileInformationByHandle, FALSE)           \
  CALL(SetFilePointerEx, FALSE)                     \
  CALL(SetFileSecurityW, FALSE)                     \
  CALL(WriteFile, FALSE)
#define GANTREL_ADDRESS(name, ...) extern "C" decltype(&(name)) __imp_##name;
GANTREL_CALLS(GANTREL_ADDRESS)
GANTREL_ADDRESS(Sleep)

namespace faults {
namespace {

std::filesystem::path link;        // a simulated link,
std::filesystem::path linkTarget;  // and its target

// Replaces the pointer by ours; returns the old one.
template <typename Function>
Function Take(Function& address, std::type_identity_t<Function> ours) {
  DWORD before = 0;
  if (VirtualProtect(&address, sizeof address, PAGE_READWRITE, &before) == 0) throw std::runtime_error("not taken");
  return std::exchange(address, ours);
}

[[maybe_unused]] const bool areTaken = [] {
  static decltype(__imp_CreateFileW) create;
  create =
      Take(__imp_CreateFileW, [](auto path, auto access, auto share, auto security, auto disposition, auto... more) {
        if (disposition != CREATE_NEW || calls.takeNewFiles || wcsstr(path, L"History") != nullptr)
          return create(path == link ? linkTarget.c_str() : path, access, share, security, disposition, more...);
        SetLastError(ERROR_ACCESS_DENIED);
        return INVALID_HANDLE_VALUE;
      });
  static decltype(__imp_GetFileAttributesW) attributes;
  attributes = Take(__imp_GetFileAttributesW, [](auto path) {
    return attributes(path) | (path == link ? DWORD{FILE_ATTRIBUTE_REPARSE_POINT} : 0);
  });
  static decltype(__imp_SetFileInformationByHandle) rename;
  rename = Take(__imp_SetFileInformationByHandle, [](auto file, auto what, auto... information) {
    EXPECT_FALSE(calls.areWatched && what == FileRenameInfo && calls.areUnflushed) << "renamed before it is flushed";
    return rename(file, what, information...);
  });
  // Disk time would be most of the test's.
  Take(__imp_FlushFileBuffers, [](auto) { return TRUE; });
  Take(__imp_Sleep, [](auto) {});
#define GANTREL_TAKE(name, failed)                                             \
  static decltype(__imp_##name) system##name;                                  \
  system##name = Take(__imp_##name, [](auto... arguments) {                    \
    return Meet(#name) == Verdict::Fail ? failed : system##name(arguments...); \
  });
  GANTREL_CALLS(GANTREL_TAKE)
  return true;
}();
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming, cppcoreguidelines-macro-usage)

}  // namespace

std::vector<Reason> Reasons(std::string_view call) {
  const bool isTriedAgain = call == "CreateFileW" || call == "SetFileInformationByHandle";
  return {{ERROR_IO_DEVICE},
          {ERROR_DISK_FULL},
          {ERROR_ACCESS_DENIED},
          {ERROR_SHARING_VIOLATION, isTriedAgain},
          {ERROR_NOT_SUPPORTED}};
}

void MakeLink(const std::filesystem::path& theLink, const std::filesystem::path& target) {
  support::WriteFile(theLink, "a link");
  link = theLink;
  linkTarget = target;
}

void SetReason(int reason) { SetLastError(static_cast<DWORD>(reason)); }

}  // namespace faults
