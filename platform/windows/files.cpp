#include "platform/files.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/paths.h"
#include "platform/read_to_end.h"
#include "platform/windows/system.h"
#include "platform/windows/wide.h"

namespace fs = std::filesystem;

namespace platform {
namespace {

// Beside the file that is about to be replaced. Not made from that file's name, which may already be as long as names
// can be; one left behind by a crash is taken over by the next write.
constexpr std::wstring_view kNewFileName = L".gantrel-new";

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// In the sentences that all systems have in common, where they have one. That another program holds the file only this
// system says, and in its own words.
std::error_code ToError(DWORD code) {
  const std::error_code error(static_cast<int>(code), std::system_category());
  if (code == ERROR_SUCCESS) return {};
  if (code == ERROR_INVALID_NAME) return std::make_error_code(std::errc::no_such_file_or_directory);
  if (code == ERROR_BUSY) return FileRefusal::Busy;
  if (code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION) return error;
  const std::error_condition common = error.default_error_condition();
  if (common.category() != std::generic_category()) return error;
  return {common.value(), std::generic_category()};
}

// Another program has the file open in a way that keeps us from it. Virus scanners and indexers do so for a moment
// after a file was written.
bool IsHeld(DWORD code) {
  return code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION || code == ERROR_USER_MAPPED_FILE ||
         code == ERROR_DELETE_PENDING;
}

// Not every system and disk knows how to do it.
bool IsUnknown(DWORD code) {
  return code == ERROR_NOT_SUPPORTED || code == ERROR_INVALID_FUNCTION || code == ERROR_INVALID_PARAMETER;
}

constexpr DWORD kPatience = 150;             // milliseconds
constexpr DWORD kPatienceForWriters = 5000;  // other programs of ours, which write to the disk meanwhile

// The result of `attempt`, tried again while `isMomentary` says so of its result.
template <typename Attempt>
DWORD Retried(Attempt attempt, bool (*isMomentary)(DWORD), DWORD patience = kPatience) {
  DWORD code = attempt();
  for (DWORD pause = 10; patience > 0 && isMomentary(code); pause = std::min(2 * pause, patience)) {
    Sleep(pause);
    patience -= pause;
    code = attempt();
  }
  return code;
}

DWORD ResultOf(BOOL hasWorked) { return hasWorked != 0 ? ERROR_SUCCESS : GetLastError(); }

// An open file, closed with it. What can fail gives the system's number.
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

  // Up to `size` bytes, fewer only at the file's end. `count` is how many there were.
  DWORD Read(char* room, std::size_t size, std::size_t& count) const {
    for (count = 0; count < size;) {
      DWORD more = 0;
      const DWORD wanted = static_cast<DWORD>(std::min(size - count, kMostAtOnce));
      if (::ReadFile(handle_, room + count, wanted, &more, nullptr) == 0) return GetLastError();
      if (more == 0) break;
      count += more;
    }
    return ERROR_SUCCESS;
  }

  DWORD Write(std::string_view bytes) const {
    while (!bytes.empty()) {
      DWORD count = 0;
      const DWORD wanted = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
      if (WriteFile(handle_, bytes.data(), wanted, &count, nullptr) == 0) return GetLastError();
      bytes.remove_prefix(count);
    }
    return ERROR_SUCCESS;
  }

  DWORD Flush() const { return ResultOf(FlushFileBuffers(handle_)); }

 private:
  static constexpr std::size_t kMostAtOnce = std::size_t{64} * 1024 * 1024;

  HANDLE handle_ = INVALID_HANDLE_VALUE;
  DWORD openFailure_ = ERROR_SUCCESS;
};

// What is refused before a byte is read or written: folders and devices.
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

// Makes `path` that of the file itself, at the end of all links.
DWORD FollowLinks(std::wstring& path) {
  const File file(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
  if (!file.IsOpen()) return file.OpenFailure();
  constexpr DWORD kLongestPath = 32768;
  std::wstring target(kLongestPath, L'\0');
  const DWORD length = GetFinalPathNameByHandleW(file.Handle(), target.data(), kLongestPath, FILE_NAME_NORMALIZED);
  if (length == 0) return GetLastError();
  if (length >= kLongestPath) return ERROR_FILENAME_EXCED_RANGE;
  target.resize(length);
  path = std::move(target);
  return ERROR_SUCCESS;
}

// Who may do what with the file, as the system keeps it; empty on disks that keep no such thing.
std::vector<std::byte> AccessRights(const std::wstring& path) {
  DWORD size = 0;
  GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<std::byte> rights(size);
  if (GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size) == 0) rights.clear();
  return rights;
}

// What a file keeps when its bytes are replaced.
struct Kept {
  DWORD attributes = FILE_ATTRIBUTE_NORMAL;
  FILETIME creationTime = {};
  std::vector<std::byte> accessRights;
};

DWORD GiveWhatIsKept(const File& file, const std::wstring& path, Kept& kept) {
  // The time is nice to have, and not on every disk. It is set together with the attributes, since wine 10 forgets that
  // a file is hidden when its times are set alone.
  FILE_BASIC_INFO info = {};  // where zero leaves what is there
  info.CreationTime.LowPart = kept.creationTime.dwLowDateTime;
  info.CreationTime.HighPart = static_cast<LONG>(kept.creationTime.dwHighDateTime);
  info.FileAttributes = kept.attributes;
  SetFileInformationByHandle(file.Handle(), FileBasicInfo, &info, sizeof info);
  if (kept.accessRights.empty()) return ERROR_SUCCESS;
  return ResultOf(SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, kept.accessRights.data()));
}

// A file that nobody else may write, rename or remove while it is open. What is found under its name was left behind,
// or is being written by a tool of another folder.
DWORD CreateNewFile(const std::wstring& path, DWORD attributes, std::optional<File>& file) {
  const auto create = [&] {
    const DWORD removal = ResultOf(DeleteFileW(path.c_str()));
    if (IsHeld(removal)) return removal;
    file.emplace(path, GENERIC_WRITE | DELETE, CREATE_NEW, attributes, FILE_SHARE_READ);
    const bool wasOvertaken = file->OpenFailure() == ERROR_FILE_EXISTS && removal != ERROR_ACCESS_DENIED;
    return wasOvertaken ? ERROR_SHARING_VIOLATION : file->OpenFailure();
  };
  const DWORD failure = Retried(create, IsHeld, kPatienceForWriters);
  return IsHeld(failure) ? ERROR_BUSY : failure;
}

// One renaming over the old file. The system's own ReplaceFile keeps as much, but moves the old file away before the
// new one takes its name: for a moment, and after a crash for good, there would be nothing under the name. It is the
// open file that is renamed, not whatever has its name by then. The newer way also replaces what others are reading;
// not all systems and disks have it. A file that another program has open is refused with "access denied" as well.
DWORD TakeTheName(const File& file, const std::wstring& path) {
  constexpr auto kNewerWay = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);  // FileRenameInfoEx
  constexpr DWORD kReplaceEvenOpen = 3;  // FILE_RENAME_FLAG_REPLACE_IF_EXISTS | FILE_RENAME_FLAG_POSIX_SEMANTICS
  const std::size_t size = sizeof(FILE_RENAME_INFO) + path.size() * sizeof(wchar_t);
  std::vector<std::byte> room(size);
  auto* const info = reinterpret_cast<FILE_RENAME_INFO*>(room.data());
  info->FileNameLength = static_cast<DWORD>(path.size() * sizeof(wchar_t));
  std::ranges::copy(path, info->FileName);
  const auto rename = [&](FILE_INFO_BY_HANDLE_CLASS way, DWORD flags) {
    std::memcpy(info, &flags, sizeof flags);  // older headers know no flags here
    return ResultOf(SetFileInformationByHandle(file.Handle(), way, info, static_cast<DWORD>(size)));
  };
  return Retried(
      [&] {
        const DWORD failure = rename(kNewerWay, kReplaceEvenOpen);
        return IsUnknown(failure) ? rename(FileRenameInfo, TRUE) : failure;
      },
      [](DWORD code) { return IsHeld(code) || code == ERROR_ACCESS_DENIED; });
}

// The open file itself; it is gone when it is closed.
void Remove(const File& file) {
  FILE_DISPOSITION_INFO removal = {TRUE};
  SetFileInformationByHandle(file.Handle(), FileDispositionInfo, &removal, sizeof removal);
}

// Nothing but what the disk holds counts as written: the bytes are flushed before the new file takes the name.
DWORD ReplaceByRenaming(const std::wstring& path, std::string_view bytes, Kept* kept) {
  std::optional<File> file;
  const std::wstring newPath = path.substr(0, path.rfind(L'\\') + 1).append(kNewFileName);
  DWORD failure = CreateNewFile(newPath, kept != nullptr ? kept->attributes : FILE_ATTRIBUTE_NORMAL, file);
  if (failure != ERROR_SUCCESS) return failure;
  failure = file->Write(bytes);
  if (failure == ERROR_SUCCESS && kept != nullptr) failure = GiveWhatIsKept(*file, newPath, *kept);
  if (failure == ERROR_SUCCESS) failure = file->Flush();
  if (failure == ERROR_SUCCESS) failure = TakeTheName(*file, path);
  if (failure != ERROR_SUCCESS) Remove(*file);
  return failure;
}

DWORD Overwrite(const File& file, std::string_view bytes) {
  if (SetFilePointerEx(file.Handle(), {}, nullptr, FILE_BEGIN) == 0) return GetLastError();
  if (const DWORD failure = file.Write(bytes)) return failure;
  if (SetEndOfFile(file.Handle()) == 0) return GetLastError();
  return file.Flush();
}

// Where the file cannot be exchanged for another. The old bytes are read first, and put back when the new ones do not
// fit.
std::error_code ReplaceInPlace(const std::wstring& path, std::string_view bytes) {
  std::string old;
  if (const auto failure = ReadFile(path, old)) return failure;
  const File file(path, GENERIC_WRITE, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL);
  if (!file.IsOpen()) return ToError(file.OpenFailure());
  const DWORD failure = Overwrite(file, bytes);
  if (failure != ERROR_SUCCESS) [[maybe_unused]]
    const DWORD restored = Overwrite(file, old);
  return ToError(failure);
}

// Whether a file could not be replaced for a reason that does not keep it from being written itself: its folder takes
// no new file, another program holds its name, or the disk cannot give a new file the old one's access rights.
bool OnlyTheExchangeWasRefused(DWORD code) {
  return IsHeld(code) || IsUnknown(code) || code == ERROR_ACCESS_DENIED || code == ERROR_PRIVILEGE_NOT_HELD ||
         code == ERROR_INVALID_OWNER;
}

}  // namespace

std::string Reason(const std::error_code& failure) { return failure.message(); }

// Named after the folder itself, whichever path leads to it. The system releases it when the program ends.
ToolLock LockTool() {
  const File folder(ToSystem(BesideExecutable("")), FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
  BY_HANDLE_FILE_INFORMATION information = {};
  if (!folder.IsOpen() || GetFileInformationByHandle(folder.Handle(), &information) == 0) return {};
  const std::wstring name = L"Global\\Gantrel-" + std::to_wstring(information.dwVolumeSerialNumber) + L"-" +
                            std::to_wstring(information.nFileIndexHigh) + L"-" +
                            std::to_wstring(information.nFileIndexLow);
  HANDLE const mutex = CreateMutexW(nullptr, FALSE, name.c_str());
  if (mutex == nullptr) return {};
  const std::shared_ptr<void> opened(mutex, CloseHandle);
  if (WaitForSingleObject(mutex, kPatienceForWriters) == WAIT_TIMEOUT) return {nullptr, FileRefusal::Busy};
  return {std::shared_ptr<void>(mutex, [opened](HANDLE held) { ReleaseMutex(held); }), {}};
}

std::error_code ReadFile(const fs::path& path, std::string& bytes, std::size_t most) {
  bytes.clear();
  if (!path.is_absolute()) return FileRefusal::FolderUnknown;
  const File file(ToSystem(path), GENERIC_READ, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);  // which opens folders, too
  if (!file.IsOpen()) return ToError(file.OpenFailure());
  BY_HANDLE_FILE_INFORMATION information = {};
  if (const auto failure = CheckIsFile(file, information)) return failure;
  const auto size = std::size_t{information.nFileSizeHigh} << 32U | information.nFileSizeLow;
  return ReadToEnd(size, most, bytes, [&file](char* room, std::size_t roomSize, std::size_t& count) {
    return ToError(file.Read(room, roomSize, count));
  });
}

// A link that leads to a file that is not there yet is not followed: the file is reported as missing.
std::error_code ReplaceFile(const fs::path& path, std::string_view bytes) {
  if (!path.is_absolute()) return FileRefusal::FolderUnknown;
  std::wstring target = ToSystem(AsSpelledOnDisk(path));
  if (IsDevice(target)) return FileRefusal::NotOrdinary;
  const DWORD attributes = GetFileAttributesW(target.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    const DWORD code = GetLastError();
    return ToError(code == ERROR_FILE_NOT_FOUND ? ReplaceByRenaming(target, bytes, nullptr) : code);
  }
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return std::make_error_code(std::errc::is_a_directory);
  if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
    if (const DWORD failure = FollowLinks(target)) return ToError(failure);
  }

  Kept kept;
  {
    const File old(target, GENERIC_WRITE | FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL);
    if (!old.IsOpen()) return ToError(old.OpenFailure());
    BY_HANDLE_FILE_INFORMATION information = {};
    if (const auto failure = CheckIsFile(old, information)) return failure;
    if ((information.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0) return ToError(ERROR_ACCESS_DENIED);
    constexpr DWORD kOfTheFile = FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                                 FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_ENCRYPTED;
    kept = {information.dwFileAttributes & kOfTheFile, information.ftCreationTime, AccessRights(target)};
  }
  const DWORD failure = ReplaceByRenaming(target, bytes, &kept);
  return OnlyTheExchangeWasRefused(failure) ? ReplaceInPlace(target, bytes) : ToError(failure);
}

}  // namespace platform
