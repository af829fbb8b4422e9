#include "tests/faults/system_calls.h"

#include <stdexcept>
#include <type_traits>

#include "platform/windows/system.h"
#include "support/own_folder.h"

// The program calls the system through addresses in a table, in which ours take the place of the system's.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming, cppcoreguidelines-macro-usage)
#define GANTREL_CALL(name) extern "C" decltype(&(name)) __imp_##name
GANTREL_CALL(CreateFileW);
GANTREL_CALL(DeleteFileW);
GANTREL_CALL(FindFirstFileExW);
GANTREL_CALL(FlushFileBuffers);
GANTREL_CALL(GetFileAttributesW);
GANTREL_CALL(GetFileInformationByHandle);
GANTREL_CALL(GetFileSecurityW);
GANTREL_CALL(GetFileType);
GANTREL_CALL(GetFinalPathNameByHandleW);
GANTREL_CALL(GetFullPathNameW);
GANTREL_CALL(GetModuleFileNameW);
GANTREL_CALL(ReadFile);
GANTREL_CALL(SetEndOfFile);
GANTREL_CALL(SetFileInformationByHandle);
GANTREL_CALL(SetFilePointerEx);
GANTREL_CALL(SetFileSecurityW);
GANTREL_CALL(Sleep);
GANTREL_CALL(WriteFile);
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming, cppcoreguidelines-macro-usage)

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
  if (disposition == CREATE_NEW && !TakesNewFiles()) {
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
  NoteWrite();
  return Call<__imp_WriteFile>::system(file, bytes, size, written, overlapped);
}

BOOL WINAPI Flush(HANDLE /*file*/) {
  NoteFlush();
  return TRUE;
}

BOOL WINAPI Rename(HANDLE file, FILE_INFO_BY_HANDLE_CLASS what, void* information, DWORD size) {
  if (what == FileRenameInfo) NoteRename();
  return Call<__imp_SetFileInformationByHandle>::system(file, what, information, size);
}

[[maybe_unused]] const bool areTaken = [] {
  Call<__imp_CreateFileW>::Take("CreateFileW", INVALID_HANDLE_VALUE, Create);
  Call<__imp_DeleteFileW>::Take("DeleteFileW", FALSE);
  Call<__imp_FindFirstFileExW>::Take("FindFirstFileExW", INVALID_HANDLE_VALUE);
  Call<__imp_FlushFileBuffers>::Take("FlushFileBuffers", FALSE, Flush);
  Call<__imp_GetFileAttributesW>::Take("GetFileAttributesW", INVALID_FILE_ATTRIBUTES, Attributes);
  Call<__imp_GetFileInformationByHandle>::Take("GetFileInformationByHandle", FALSE);
  Call<__imp_GetFileSecurityW>::Take("GetFileSecurityW", FALSE);
  Call<__imp_GetFileType>::Take("GetFileType", FILE_TYPE_UNKNOWN);
  Call<__imp_GetFinalPathNameByHandleW>::Take("GetFinalPathNameByHandleW", 0);
  Call<__imp_GetFullPathNameW>::Take("GetFullPathNameW", 0);
  Call<__imp_GetModuleFileNameW>::Take("GetModuleFileNameW", 0);
  Call<__imp_ReadFile>::Take("ReadFile", FALSE);
  Call<__imp_SetEndOfFile>::Take("SetEndOfFile", FALSE);
  Call<__imp_SetFileInformationByHandle>::Take("SetFileInformationByHandle", FALSE, Rename);
  Call<__imp_SetFilePointerEx>::Take("SetFilePointerEx", FALSE);
  Call<__imp_SetFileSecurityW>::Take("SetFileSecurityW", FALSE);
  Call<__imp_WriteFile>::Take("WriteFile", FALSE, Write);
  __imp_Sleep = [](DWORD) {};
  return true;
}();

}  // namespace

std::vector<Reason> Reasons(std::string_view call) {
  const bool isTriedAgain = call == "CreateFileW" || call == "SetFileInformationByHandle";
  return {
      {"input/output error", ERROR_IO_DEVICE}, {"disk full", ERROR_DISK_FULL},
      {"access denied", ERROR_ACCESS_DENIED},  {"held by another program", ERROR_SHARING_VIOLATION, isTriedAgain},
      {"not supported", ERROR_NOT_SUPPORTED},
  };
}

bool CanBeHalf(std::string_view /*call*/) { return false; }

void MakeLink(const std::filesystem::path& theLink, const std::filesystem::path& target) {
  support::WriteFile(theLink, "a link");
  link = theLink;
  linkTarget = target;
}

bool IsKilled(const std::function<void()>& /*act*/) { throw std::logic_error("a process cannot be copied here"); }

void Die() { throw std::logic_error("a process cannot be copied here"); }

void SetReason(int reason) { SetLastError(static_cast<DWORD>(reason)); }

}  // namespace faults
