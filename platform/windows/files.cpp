#include "platform/files.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/windows/system.h"
#include "platform/windows/wide.h"

namespace fs = std::filesystem;

namespace platform {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Uses the portable error texts where they exist. Sharing errors have only Windows's own.
std::error_code ToError(DWORD code) {
  const std::error_code error(static_cast<int>(code), std::system_category());
  if (code == ERROR_SUCCESS) return {};
  if (code == ERROR_INVALID_NAME) return std::make_error_code(std::errc::no_such_file_or_directory);
  if (code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION) return error;
  const std::error_condition common = error.default_error_condition();
  if (common.category() != std::generic_category()) return error;
  return {common.value(), std::generic_category()};
}

// Another program has the file open without sharing. Virus scanners and indexers do so briefly after a file was
// written.
bool IsHeld(DWORD code) {
  return code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION || code == ERROR_USER_MAPPED_FILE ||
         code == ERROR_DELETE_PENDING;
}

// Not supported by every system and disk.
bool IsUnknown(DWORD code) {
  return code == ERROR_NOT_SUPPORTED || code == ERROR_INVALID_FUNCTION || code == ERROR_INVALID_PARAMETER;
}

// Retries `attempt` for a short time while `isMomentary` is true for its result.
template <typename Attempt>
DWORD Retried(Attempt attempt, bool (*isMomentary)(DWORD)) {
  constexpr DWORD kPause = 10;  // milliseconds
  constexpr int kMostAttempts = 15;
  DWORD code = attempt();
  for (int i = 1; i < kMostAttempts && isMomentary(code); ++i) {
    Sleep(kPause);
    code = attempt();
  }
  return code;
}

DWORD ResultOf(BOOL hasWorked) { return hasWorked != 0 ? ERROR_SUCCESS : GetLastError(); }

// An open file; closes it. Functions that can fail return the system's error code.
class File {
 public:
  File(const std::wstring& path, DWORD access, DWORD disposition, DWORD attributes, DWORD share = kShareAll) {
    openFailure_ = Retried(
        [&] {
          handle_ = CreateFileW(path.c_str(), access, share, nullptr, disposition, attributes, nullptr);
          return ResultOf(IsOpen());
        },
        IsHeld);
  }
  ~File() {
    if (IsOpen()) CloseHandle(handle_);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  File(File&&) = delete;
  File& operator=(File&&) = delete;

  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE Handle() const { return handle_; }
  DWORD OpenFailure() const { return openFailure_; }

  // Appends up to `most` bytes; none at the end of the file.
  DWORD Read(std::string& bytes, DWORD most) const {
    const std::size_t before = bytes.size();
    bytes.resize(before + most);
    DWORD count = 0;
    if (::ReadFile(handle_, bytes.data() + before, most, &count, nullptr) == 0) return GetLastError();
    bytes.resize(before + count);
    return ERROR_SUCCESS;
  }

  // To the end, wherever it is, but no further than a little over `most` bytes.
  DWORD ReadAll(std::string& bytes, std::size_t most) const {
    constexpr DWORD kAtOnce = 64 * 1024;
    DWORD failure = ERROR_SUCCESS;
    for (std::size_t before = 1; failure == ERROR_SUCCESS && bytes.size() != before && bytes.size() <= most;) {
      before = bytes.size();
      failure = Read(bytes, kAtOnce);
    }
    return failure;
  }

  DWORD Write(std::string_view bytes) const {
    while (!bytes.empty()) {
      DWORD count = 0;
      if (WriteFile(handle_, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) == 0) {
        return GetLastError();
      }
      bytes.remove_prefix(count);
    }
    return ERROR_SUCCESS;
  }

  DWORD Flush() const { return ResultOf(FlushFileBuffers(handle_)); }

 private:
  HANDLE handle_ = INVALID_HANDLE_VALUE;
  DWORD openFailure_ = ERROR_SUCCESS;
};

// Rejects folders and devices before anything is read or written.
std::error_code CheckIsFile(const File& file, BY_HANDLE_FILE_INFORMATION& information) {
  const DWORD type = GetFileType(file.Handle());
  if (type == FILE_TYPE_UNKNOWN && GetLastError() != NO_ERROR) return ToError(GetLastError());
  if (type != FILE_TYPE_DISK) return FileRefusal::NotOrdinary;
  if (GetFileInformationByHandle(file.Handle(), &information) == 0) return ToError(GetLastError());
  if ((information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    return std::make_error_code(std::errc::is_a_directory);
  }
  return {};
}

// The file's access control list; empty on disks without one.
std::vector<std::byte> AccessRights(const std::wstring& path) {
  DWORD size = 0;
  GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<std::byte> rights(size);
  if (GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size) == 0) rights.clear();
  return rights;
}

// Identifies the tool's folder, whichever path leads to it; empty if unknown.
std::wstring ToolNumber() {
  const File folder(ToSystem(BesideExecutable("")), FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
  BY_HANDLE_FILE_INFORMATION information = {};
  if (!folder.IsOpen() || GetFileInformationByHandle(folder.Handle(), &information) == 0) return {};
  return L"-" + std::to_wstring(information.dwVolumeSerialNumber) + L"-" + std::to_wstring(information.nFileIndexHigh) +
         L"-" + std::to_wstring(information.nFileIndexLow);
}

// Not derived from the file's name, which may already have maximum length. The number identifies the tool's folder:
// tools in different folders that write one module file do not share it; those in one folder hold the lock.
fs::path NewFileBeside(const fs::path& path) { return path.parent_path() / (L".gantrel-new" + ToolNumber()); }

// Renames over the old file in one step. The system's ReplaceFile first moves the old file away: for a moment, or after
// a crash forever, no file has the name. Renames by handle, so no other file can take the new file's place. The newer
// way also replaces files that others are reading; not all systems and disks support it. If another program has the
// file open, the error may also be "access denied".
DWORD TakeTheName(const File& file, const std::wstring& path) {
  constexpr auto kNewerWay = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);  // FileRenameInfoEx
  constexpr DWORD kReplaceEvenOpen = 3;  // FILE_RENAME_FLAG_REPLACE_IF_EXISTS | FILE_RENAME_FLAG_POSIX_SEMANTICS
  const std::size_t size = sizeof(FILE_RENAME_INFO) + path.size() * sizeof(wchar_t);
  std::vector<std::byte> room(size);
  auto* const info = reinterpret_cast<FILE_RENAME_INFO*>(room.data());
  info->FileNameLength = static_cast<DWORD>(path.size() * sizeof(wchar_t));
  std::ranges::copy(path, info->FileName);
  const auto rename = [&](FILE_INFO_BY_HANDLE_CLASS way, DWORD flags) {
    std::memcpy(info, &flags, sizeof flags);  // older headers lack the flags member
    return ResultOf(SetFileInformationByHandle(file.Handle(), way, info, static_cast<DWORD>(size)));
  };
  return Retried(
      [&] {
        const DWORD failure = rename(kNewerWay, kReplaceEvenOpen);
        return IsUnknown(failure) ? rename(FileRenameInfo, TRUE) : failure;
      },
      [](DWORD code) { return IsHeld(code) || code == ERROR_ACCESS_DENIED; });
}

// Deletes by handle; takes effect on close.
void Remove(const File& file) {
  FILE_DISPOSITION_INFO removal = {TRUE};
  SetFileInformationByHandle(file.Handle(), FileDispositionInfo, &removal, sizeof removal);
}

// What a replacement keeps: attributes and access rights.
struct Traits {
  DWORD attributes = INVALID_FILE_ATTRIBUTES;  // no file
  std::vector<std::byte> accessRights = {};
};

DWORD ReplaceByRenaming(const std::wstring& path, std::string_view bytes, const Traits& old, const OldFile& oldFile);

// Link: a hard link, if supported, for a file about to be replaced by renaming. Otherwise Copy.
enum class Way : std::uint8_t { Link, Copy };
DWORD Keep(const OldFile& oldFile, const std::wstring& path, const Traits& old, Way way) {
  if (!oldFile.keptAs.is_absolute()) return ERROR_SUCCESS;
  const std::wstring keptAs = ToSystem(oldFile.keptAs);
  const bool isThere = old.attributes != INVALID_FILE_ATTRIBUTES;
  DWORD failure = ResultOf(CreateDirectoryW(ToSystem(oldFile.keptAs.parent_path()).c_str(), nullptr));
  if (failure == ERROR_ALREADY_EXISTS) failure = ERROR_SUCCESS;
  const bool isTaken = GetFileAttributesW(keptAs.c_str()) != INVALID_FILE_ATTRIBUTES;
  if (failure == ERROR_SUCCESS && isTaken) failure = ERROR_FILE_EXISTS;
  const bool isLinked = failure == ERROR_SUCCESS && isThere && way == Way::Link &&
                        CreateHardLinkW(keptAs.c_str(), path.c_str(), nullptr) != 0;
  if (isLinked) return ERROR_SUCCESS;
  std::string bytes;
  if (failure == ERROR_SUCCESS && isThere) {
    const File file(path, GENERIC_READ, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL);
    failure = file.IsOpen() ? file.ReadAll(bytes, kMostBytes) : file.OpenFailure();
  }
  if (failure == ERROR_SUCCESS) failure = ReplaceByRenaming(keptAs, bytes, old, {});
  return oldFile.mustBeKept ? failure : ERROR_SUCCESS;
}

void Unkeep(const OldFile& oldFile) {
  if (oldFile.keptAs.is_absolute()) DeleteFileW(ToSystem(oldFile.keptAs).c_str());
}

// Flushes before the rename, so that the name never has unwritten bytes.
DWORD ReplaceByRenaming(const std::wstring& path, std::string_view bytes, const Traits& old, const OldFile& oldFile) {
  const std::wstring newPath = NewFileBeside(path);
  DeleteFileW(newPath.c_str());  // left by a killed program
  const DWORD attributes = old.attributes != INVALID_FILE_ATTRIBUTES ? old.attributes : FILE_ATTRIBUTE_NORMAL;
  const File file(newPath, GENERIC_WRITE | DELETE, CREATE_NEW, attributes, FILE_SHARE_READ);
  if (!file.IsOpen()) return file.OpenFailure();
  DWORD failure = file.Write(bytes);
  if (failure == ERROR_SUCCESS && !old.accessRights.empty()) {
    std::vector<std::byte> rights = old.accessRights;
    failure = ResultOf(SetFileSecurityW(newPath.c_str(), DACL_SECURITY_INFORMATION, rights.data()));
  }
  if (failure == ERROR_SUCCESS) failure = file.Flush();
  if (failure == ERROR_SUCCESS) failure = Keep(oldFile, path, old, Way::Link);
  if (failure == ERROR_SUCCESS) {
    failure = TakeTheName(file, path);
    if (failure != ERROR_SUCCESS) Unkeep(oldFile);
  }
  if (failure != ERROR_SUCCESS) Remove(file);
  return failure;
}

DWORD Overwrite(const File& file, std::string_view bytes) {
  if (SetFilePointerEx(file.Handle(), {}, nullptr, FILE_BEGIN) == 0) return GetLastError();
  if (const DWORD failure = file.Write(bytes)) return failure;
  if (SetEndOfFile(file.Handle()) == 0) return GetLastError();
  return file.Flush();
}

// For files that cannot be replaced by renaming. Reads the old bytes first, and restores them if the new ones do not
// fit.
std::error_code ReplaceInPlace(const std::wstring& path, std::string_view bytes, const Traits& traits,
                               const OldFile& oldFile) {
  std::string old;
  if (const auto failure = ReadFile(path, old)) return failure;
  const File file(path, GENERIC_WRITE, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL);
  if (!file.IsOpen()) return ToError(file.OpenFailure());
  if (const DWORD failure = Keep(oldFile, path, traits, Way::Copy)) return ToError(failure);
  const DWORD failure = Overwrite(file, bytes);
  if (failure == ERROR_SUCCESS) return {};
  [[maybe_unused]] const DWORD restored = Overwrite(file, old);
  Unkeep(oldFile);
  return ToError(failure);
}

// Whether replacing failed for a reason that still permits writing in place: the folder takes no new file, another
// program locks the name, or the new file cannot get the old one's access rights.
bool OnlyTheExchangeWasRefused(DWORD code) {
  return IsHeld(code) || IsUnknown(code) || code == ERROR_ACCESS_DENIED || code == ERROR_PRIVILEGE_NOT_HELD ||
         code == ERROR_INVALID_OWNER;
}

}  // namespace

std::string Reason(const std::error_code& failure) { return failure.message(); }

// The system releases it at the program's end.
ToolLock LockTool() {
  constexpr DWORD kPatience = 5000;  // milliseconds
  const std::wstring number = ToolNumber();
  HANDLE const mutex = number.empty() ? nullptr : CreateMutexW(nullptr, FALSE, (L"Global\\Gantrel" + number).c_str());
  if (mutex == nullptr) return {};
  const std::shared_ptr<void> opened(mutex, CloseHandle);
  if (WaitForSingleObject(mutex, kPatience) == WAIT_TIMEOUT) return {nullptr, FileRefusal::Busy};
  return {std::shared_ptr<void>(mutex, [opened](HANDLE held) { ReleaseMutex(held); }), {}};
}

std::error_code ReadFile(const fs::path& path, std::string& bytes, std::size_t most) {
  bytes.clear();
  if (!path.is_absolute()) return FileRefusal::FolderUnknown;
  const File file(ToSystem(path), GENERIC_READ, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);  // also opens folders
  if (!file.IsOpen()) return ToError(file.OpenFailure());
  BY_HANDLE_FILE_INFORMATION information = {};
  if (const auto failure = CheckIsFile(file, information)) return failure;
  const DWORD failure = file.ReadAll(bytes, most);
  if (failure != ERROR_SUCCESS) bytes.clear();
  if (bytes.size() <= most) return ToError(failure);
  bytes.resize(most);
  return FileRefusal::TooLarge;
}

// Does not follow a link whose target is missing: the file is reported as missing.
std::error_code ReplaceFile(const fs::path& path, std::string_view bytes, const OldFile& oldFile) {
  if (!path.is_absolute() || (oldFile.mustBeKept && !oldFile.keptAs.is_absolute())) return FileRefusal::FolderUnknown;
  std::wstring target = ToSystem(AsSpelledOnDisk(path));
  if (IsDevice(target)) return FileRefusal::NotOrdinary;
  const DWORD attributes = GetFileAttributesW(target.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    const DWORD code = GetLastError();
    return ToError(code == ERROR_FILE_NOT_FOUND ? ReplaceByRenaming(target, bytes, {}, oldFile) : code);
  }
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return std::make_error_code(std::errc::is_a_directory);
  if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
    std::optional<fs::path> followed;
    const auto follow = [&] {
      followed = WithoutLinks(target);
      return followed ? DWORD{ERROR_SUCCESS} : GetLastError();
    };
    if (const DWORD failure = Retried(follow, IsHeld)) return ToError(failure);
    target = *followed;
  }

  BY_HANDLE_FILE_INFORMATION information = {};
  {
    const File old(target, GENERIC_WRITE | FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL);
    if (!old.IsOpen()) return ToError(old.OpenFailure());
    if (const auto failure = CheckIsFile(old, information)) return failure;
    if ((information.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0) return ToError(ERROR_ACCESS_DENIED);
  }
  constexpr DWORD kKept = FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                          FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_ENCRYPTED;
  const Traits traits = {information.dwFileAttributes & kKept, AccessRights(target)};
  const DWORD failure = ReplaceByRenaming(target, bytes, traits, oldFile);
  return OnlyTheExchangeWasRefused(failure) ? ReplaceInPlace(target, bytes, traits, oldFile) : ToError(failure);
}

std::error_code RenameFile(const fs::path& from, const fs::path& to) {
  return ToError(ResultOf(MoveFileExW(ToSystem(from).c_str(), ToSystem(to).c_str(), MOVEFILE_REPLACE_EXISTING)));
}

void RemoveFile(const fs::path& path) { DeleteFileW(ToSystem(path).c_str()); }

bool TakesFiles(const fs::path& folder) {
  return File(ToSystem(folder), FILE_ADD_FILE, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS).IsOpen();
}

}  // namespace platform
