#include "tests/faults/system_calls.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>

#include "platform/windows/system.h"
#include "support/own_folder.h"

// The program calls the system through addresses in a table, in which ours take the place of the system's: the call's
// name, what it returns when it fails, and what is called in its place.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming, cppcoreguidelines-macro-usage)
#define GANTREL_CALLS(CALL)                                     \
  CALL(CreateFileW, INVALID_HANDLE_VALUE, Create)               \
  CALL(DeleteFileW, FALSE)                                      \
  CALL(FindFirstFileExW, INVALID_HANDLE_VALUE)                  \
  CALL(FlushFileBuffers, FALSE, Flush)                          \
  CALL(GetFileAttributesW, INVALID_FILE_ATTRIBUTES, Attributes) \
  CALL(GetFileInformationByHandle, FALSE)                       \
  CALL(GetFileSecurityW, FALSE)                                 \
  CALL(GetFileType, FILE_TYPE_UNKNOWN)                          \
  CALL(GetFinalPathNameByHandleW, 0)                            \
  CALL(GetFullPathNameW, 0)                                     \
  CALL(GetModuleFileNameW, 0)                                   \
  CALL(ReadFile, FALSE)                                         \
  CALL(SetEndOfFile, FALSE)                                     \
  CALL(SetFileInformationByHandle, FALSE, Rename)               \
  CALL(SetFilePointerEx, FALSE)                                 \
  CALL(SetFileSecurityW, FALSE)                                 \
  CALL(WriteFile, FALSE, Write)
#define GANTREL_ADDRESS(name, ...) extern "C" decltype(&(name)) __imp_##name;
GANTREL_CALLS(GANTREL_ADDRESS)
GANTREL_ADDRESS(Sleep)

namespace faults {
namespace {

std::filesystem::path link;        // what the tool is to take for one,
std::filesystem::path linkTarget;  // and the file that it leads to

template <auto& kAddress, typename Function = std::remove_reference_t<decltype(kAddress)>>
struct Call;

template <auto& kAddress, typename Result, typename... Arguments>
struct Call<kAddress, Result(WINAPI*)(Arguments...)> {
  using Function = Result(WINAPI*)(Arguments...);
  static inline const char* name;
  static inline Result failed;
  static inline Function system;
  static inline Function instead;

  static Result WINAPI Meet(Arguments... arguments) { return Fails(name) ? failed : instead(arguments...); }

  static void Take(const char* theName, Result onFailure, Function insteadOfTheSystem = kAddress) {
    name = theName;
    failed = onFailure;
    system = kAddress;
    instead = insteadOfTheSystem;
    DWORD before = 0;
    if (VirtualProtect(&kAddress, sizeof kAddress, PAGE_READWRITE, &before) == 0) throw std::runtime_error(theName);
    kAddress = &Meet;
  }
};

HANDLE WINAPI Create(const wchar_t* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD disposition,
                     DWORD flags, HANDLE pattern) {
  if (disposition == CREATE_NEW && !calls.takeNewFiles) {
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
  }
  return Call<__imp_CreateFileW>::system(path == link ? linkTarget.c_str() : path, access, share, security, disposition,
                                         flags, pattern);
}

DWORD WINAPI Attributes(const wchar_t* path) {
  return Call<__imp_GetFileAttributesW>::system(path) | (path == link ? FILE_ATTRIBUTE_REPARSE_POINT : 0);
}

BOOL WINAPI Write(HANDLE file, const void* bytes, DWORD size, DWORD* written, OVERLAPPED* overlapped) {
  calls.areUnflushed = true;
  return Call<__imp_WriteFile>::system(file, bytes, size, written, overlapped);
}

BOOL WINAPI Flush(HANDLE /*file*/) {
  calls.areUnflushed = false;
  return TRUE;
}

BOOL WINAPI Rename(HANDLE file, FILE_INFO_BY_HANDLE_CLASS what, void* information, DWORD size) {
  EXPECT_FALSE(what == FileRenameInfo && calls.areUnflushed) << "takes the name before it is on the disk";
  return Call<__imp_SetFileInformationByHandle>::system(file, what, information, size);
}

[[maybe_unused]] const bool areTaken = [] {
#define GANTREL_TAKE(name, ...) Call<__imp_##name>::Take(#name, __VA_ARGS__);
  GANTREL_CALLS(GANTREL_TAKE)
  __imp_Sleep = [](DWORD) {};
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
