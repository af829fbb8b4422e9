#include "platform/files.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "platform/windows/system.h"
#include "platform/windows/wide.h"

namespace platform {
namespace {

// Beside the file that it is about to replace. Not made from that file's name, which may already be as long as names
// can be; one left behind by a crash is taken over by the next write.
constexpr std::wstring_view kNewFileName = L".gantrel-new";

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// In the sentences that all systems have in common, where they have one. That another program holds the file only this
// system says, and in its own words.
std::error_code ToError(DWORD code) {
  const std::error_code error(static_cast<int>(code), std::system_category());
  if (code == ERROR_SUCCESS) return {};
  if (code == ERROR_INVALID_NAME) return std::make_error_code(std::errc::no_such_file_or_directory);
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

// The result of `attempt`, tried again for a sixth of a second while `isMomentary` says so of its result.
template <typename Attempt>
DWORD Retried(Attempt attempt, bool (*isMomentary)(DWORD)) {
  for (const DWORD milliseconds : {10UL, 20UL, 40UL, 80UL}) {
    const DWORD code = attempt();
    if (!isMomentary(code)) return code;
    Sleep(milliseconds);
  }
  return attempt();
}

DWORD ResultOf(BOOL hasWorked) { return hasWorked != 0 ? ERROR_SUCCESS : GetLastError(); }

// An open file, closed with it. What can fail gives the system's number.
class File {
 public:
  File(const std::wstring& path, DWORD access, DWORD disposition, DWORD attributes) {
    openFailure_ = Retried(
        [&] {
          handle_ = CreateFileW(path.c_str(), access, kShareAll, nullptr, disposition, attributes, nullptr);
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

  // Also tells a write that failed late, on a network.
  DWORD Close() { return ResultOf(CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE))); }

  // Up to `size` bytes, fewer only at the file's end. `count` is how many there were.
  DWORD Read(char* room, std::size_t size, std::size_t& count) const {
    for (count = 0; count < size;) {
      DWORD more = 0;
      const DWORD wanted = static_cast<DWORD>(std::min(size - count, kMostAtOnce));
      if (ReadFile(handle_, room + count, wanted, &more, nullptr) == 0) return GetLastError();
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
  if (GetFileType(file.Handle()) != FILE_TYPE_DISK) return std::make_error_code(std::errc::invalid_argument);
  if (GetFileInformationByHandle(file.Handle(), &information) == 0) return ToError(GetLastError());
  if ((information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    return std::make_error_code(std::errc::is_a_directory);
  }
  return {};
}

// The file itself, at the end of all links. `path` as given when there is no link, or none that can be followed.
std::wstring FollowLinks(std::wstring path, DWORD attributes) {
  if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return path;
  const File file(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
  if (!file.IsOpen()) return path;
  constexpr DWORD kLongestPath = 32768;
  std::wstring target(kLongestPath, L'\0');
  const DWORD length = GetFinalPathNameByHandleW(file.Handle(), target.data(), kLongestPath, FILE_NAME_NORMALIZED);
  if (length == 0 || length >= kLongestPath) return path;
  target.resize(length);
  return target;
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
  SetFileTime(file.Handle(), &kept.creationTime, nullptr, nullptr);  // nice to have, and not on every disk
  if (kept.accessRights.empty()) return ERROR_SUCCESS;
  return ResultOf(SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, kept.accessRights.data()));
}

// The system's own ReplaceFile keeps as much, but moves the old file away before the new one takes its name: for a
// moment, and after a crash for good, there would be nothing under the name. One renaming over the old file has no such
// moment. A file that another program has open is refused with "access denied" as well.
DWORD TakeTheName(const std::wstring& newPath, const std::wstring& path) {
  return Retried(
      [&] {
        return ResultOf(MoveFileExW(newPath.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
      },
      [](DWORD code) { return IsHeld(code) || code == ERROR_ACCESS_DENIED; });
}

// Nothing but what the disk holds counts as written: the bytes are flushed before the new file takes the name.
DWORD ReplaceByRenaming(const std::wstring& path, std::string_view bytes, Kept* kept) {
  std::wstring newPath = path.substr(0, path.rfind(L'\\') + 1).append(kNewFileName);
  SetFileAttributesW(newPath.c_str(), FILE_ATTRIBUTE_NORMAL);
  DeleteFileW(newPath.c_str());
  File file(newPath, GENERIC_WRITE, CREATE_NEW, kept != nullptr ? kept->attributes : FILE_ATTRIBUTE_NORMAL);
  if (!file.IsOpen()) return file.OpenFailure();
  DWORD failure = file.Write(bytes);
  if (failure == ERROR_SUCCESS && kept != nullptr) failure = GiveWhatIsKept(file, newPath, *kept);
  if (failure == ERROR_SUCCESS) failure = file.Flush();
  const DWORD late = file.Close();
  if (failure == ERROR_SUCCESS) failure = late;
  if (failure == ERROR_SUCCESS) failure = TakeTheName(newPath, path);
  if (failure != ERROR_SUCCESS) DeleteFileW(newPath.c_str());
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
  FileBytes old;
  if (const auto failure = old.Read({path})) return failure;
  const File file(path, GENERIC_WRITE, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL);
  if (!file.IsOpen()) return ToError(file.OpenFailure());
  const DWORD failure = Overwrite(file, bytes);
  if (failure != ERROR_SUCCESS) [[maybe_unused]]
    const DWORD restored = Overwrite(file, old.View());
  return ToError(failure);
}

// Whether a file could not be replaced for a reason that does not keep it from being written itself: its folder takes
// no new file, another program holds its name, or the disk cannot give a new file the old one's access rights.
bool OnlyTheExchangeWasRefused(DWORD code) {
  constexpr std::array<DWORD, 5> kCodes = {ERROR_ACCESS_DENIED, ERROR_PRIVILEGE_NOT_HELD, ERROR_INVALID_OWNER,
                                           ERROR_NOT_SUPPORTED, ERROR_INVALID_FUNCTION};
  return IsHeld(code) || std::ranges::find(kCodes, code) != kCodes.end();
}

}  // namespace

std::error_code FileBytes::Read(const HostPath& path) {
  bytes_ = {};
  const File file(ToSystem(path), GENERIC_READ, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);  // which opens folders, too
  if (!file.IsOpen()) return ToError(file.OpenFailure());
  BY_HANDLE_FILE_INFORMATION information = {};
  if (const auto failure = CheckIsFile(file, information)) return failure;

  const auto size =
      static_cast<std::size_t>(std::uint64_t{information.nFileSizeHigh} << 32U | information.nFileSizeLow);
  if (size > room_.size()) largeRoom_ = std::make_unique_for_overwrite<char[]>(size);
  char* const room = largeRoom_ ? largeRoom_.get() : room_.data();
  std::size_t count = 0;
  if (const DWORD failure = file.Read(room, size, count)) return ToError(failure);
  bytes_ = {room, count};
  return {};
}

// A link that leads to a file that is not there yet is not followed: the file is reported as missing.
std::error_code ReplaceFile(const HostPath& path, std::string_view bytes) {
  const std::wstring named = ToSystem(AsSpelledOnDisk(path));
  if (IsDevice(named)) return std::make_error_code(std::errc::invalid_argument);
  const DWORD attributes = GetFileAttributesW(named.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    const DWORD code = GetLastError();
    return ToError(code == ERROR_FILE_NOT_FOUND ? ReplaceByRenaming(named, bytes, nullptr) : code);
  }
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return std::make_error_code(std::errc::is_a_directory);

  const std::wstring target = FollowLinks(named, attributes);
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
