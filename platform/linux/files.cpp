#include "platform/files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <memory>
#include <thread>
#include <utility>

#include "platform/linux/file_names.h"
#include "platform/paths.h"

namespace fs = std::filesystem;

namespace platform {
namespace {

std::error_code LastError() { return {errno, std::generic_category()}; }

// Retries a system call that a signal interrupted.
template <typename Call>
auto Uninterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

// An open file; closes it. Does not follow links: Find resolves them before.
class File {
 public:
  File(const fs::path& path, int flags, mode_t mode = 0)
      : descriptor_(Uninterrupted([&] { return open(path.c_str(), flags | O_CLOEXEC | O_NOFOLLOW, mode); })) {
    if (!IsOpen()) openFailure_ = LastError();
  }
  ~File() {
    if (IsOpen()) close(descriptor_);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  File(File&&) = delete;
  File& operator=(File&&) = delete;

  bool IsOpen() const { return descriptor_ >= 0; }
  int Descriptor() const { return descriptor_; }
  std::error_code OpenFailure() const { return openFailure_; }

  // Also reports late write errors, on a network or a full disk.
  std::error_code Close() {
    const int result = close(std::exchange(descriptor_, -1));
    return result == 0 || errno == EINTR ? std::error_code() : LastError();
  }

  // Appends up to `most` bytes; none at the end of the file.
  std::error_code Read(std::string& bytes, std::size_t most) const {
    const std::size_t before = bytes.size();
    bytes.resize(before + most);
    const ssize_t count = Uninterrupted([&] { return read(descriptor_, bytes.data() + before, most); });
    if (count < 0) return LastError();
    bytes.resize(before + static_cast<std::size_t>(count));
    return {};
  }

  std::error_code Write(std::string_view bytes) const {
    while (!bytes.empty()) {
      const ssize_t count = Uninterrupted([&] { return write(descriptor_, bytes.data(), bytes.size()); });
      if (count < 0) return LastError();
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
  }

  std::error_code Flush() const { return fsync(descriptor_) == 0 ? std::error_code() : LastError(); }

 private:
  int descriptor_;
  std::error_code openFailure_;
};

// The kernel's own rule (fs.protected_symlinks), which is not enabled everywhere: in a world-writable folder, anyone
// could redirect the user's writes to one of the user's own files.
std::error_code CheckMayBeFollowed(const fs::path& path, const struct stat& link) {
  struct stat folder = {};
  if (stat((path.parent_path() / "").c_str(), &folder) != 0) return LastError();
  constexpr mode_t kForAll = S_ISVTX | S_IWOTH;
  const bool isForAll = (folder.st_mode & kForAll) == kForAll;
  if (!isForAll || link.st_uid == geteuid() || link.st_uid == folder.st_uid) return {};
  return FileRefusal::LinkOfAnother;
}

// Resolves `path` to the file itself: as spelled, else in another letter case, with all links followed, even one whose
// target is missing.
std::error_code Find(fs::path& path) {
  std::error_code failure = SpellAsOnDisk(path);
  constexpr int kMostLinks = 40;
  for (int i = 0; i < kMostLinks && !failure; ++i) {
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0) return errno == ENOENT ? std::error_code() : LastError();
    if (!S_ISLNK(status.st_mode)) return {};
    failure = CheckMayBeFollowed(path, status);
    if (!failure) path = path.parent_path() / fs::read_symlink(path, failure);
  }
  return failure ? failure : std::make_error_code(std::errc::too_many_symbolic_link_levels);
}

std::error_code CheckIsFile(const struct stat& status) {
  if (S_ISDIR(status.st_mode)) return std::make_error_code(std::errc::is_a_directory);
  if (!S_ISREG(status.st_mode)) return FileRefusal::NotOrdinary;
  return {};
}

std::error_code CheckMayBeReplaced(const fs::path& path, const struct stat& old) {
  constexpr mode_t kAnyonesWrite = S_IWUSR | S_IWGRP | S_IWOTH;  // read-only means read-only, even for root
  if (const auto refusal = CheckIsFile(old)) return refusal;
  if (access(path.c_str(), W_OK) != 0) return LastError();
  return (old.st_mode & kAnyonesWrite) != 0 ? std::error_code() : std::make_error_code(std::errc::permission_denied);
}

// Not derived from the file's name, which may already have maximum length. The number identifies the tool's folder:
// tools in different folders that write one module file do not share it; those in one folder hold the lock.
fs::path NewFileBeside(const fs::path& path) {
  struct stat tool = {};
  stat(BesideExecutable("").c_str(), &tool);
  return path.parent_path() / (".gantrel-new-" + std::to_string(tool.st_ino));
}

// Permissions must be kept, if the disk has any; they come last, since a change of owner clears some. Only root can
// keep the owner.
std::error_code KeepOwnerAndPermissions(const File& file, const struct stat& old) {
  if (fchown(file.Descriptor(), old.st_uid, old.st_gid) != 0) [[maybe_unused]]
    const int groupKept = fchown(file.Descriptor(), static_cast<uid_t>(-1), old.st_gid);
  constexpr mode_t kPermissions = 07777;
  if (fchmod(file.Descriptor(), old.st_mode & kPermissions) == 0) return {};
  const std::error_code failure = LastError();
  struct stat made = {};
  const bool isAlike = fstat(file.Descriptor(), &made) == 0 && ((made.st_mode ^ old.st_mode) & kPermissions) == 0;
  return isAlike ? std::error_code() : failure;
}

std::error_code ReplaceByRenaming(const fs::path& path, std::string_view bytes, const struct stat* old,
                                  const OldFile& oldFile);

// Link: a hard link, if supported, for a file about to be replaced by renaming. Otherwise Copy.
enum class Way : std::uint8_t { Link, Copy };
std::error_code Keep(const OldFile& oldFile, const fs::path& path, const struct stat* old, Way way) {
  if (!oldFile.keptAs.is_absolute()) return {};
  std::error_code failure;
  struct stat another = {};
  if (mkdir(oldFile.keptAs.parent_path().c_str(), 0777) != 0 && errno != EEXIST) failure = LastError();
  if (!failure && lstat(oldFile.keptAs.c_str(), &another) == 0) failure = std::make_error_code(std::errc::file_exists);
  const bool isLinked =
      !failure && old != nullptr && way == Way::Link && link(path.c_str(), oldFile.keptAs.c_str()) == 0;
  if (isLinked) return {};
  std::string bytes;
  if (!failure && old != nullptr) failure = ReadFile(path, bytes);
  if (!failure) failure = ReplaceByRenaming(oldFile.keptAs, bytes, old, {});
  return oldFile.mustBeKept ? failure : std::error_code();
}

void Unkeep(const OldFile& oldFile) {
  if (oldFile.keptAs.is_absolute()) unlink(oldFile.keptAs.c_str());
}

// Flushes before the rename, so that the name never has unwritten bytes. Creates the new file exclusively: never writes
// to a link or file planted under its name.
std::error_code ReplaceByRenaming(const fs::path& path, std::string_view bytes, const struct stat* old,
                                  const OldFile& oldFile) {
  const fs::path newPath = NewFileBeside(path);
  unlink(newPath.c_str());
  File file(newPath, O_WRONLY | O_CREAT | O_EXCL, 0666);
  if (!file.IsOpen()) return file.OpenFailure();
  std::error_code failure = old != nullptr ? KeepOwnerAndPermissions(file, *old) : std::error_code();
  if (!failure) failure = file.Write(bytes);
  if (!failure) failure = file.Flush();
  if (const auto late = file.Close(); !failure) failure = late;
  if (!failure) failure = Keep(oldFile, path, old, Way::Link);
  if (!failure && rename(newPath.c_str(), path.c_str()) != 0) {
    failure = LastError();
    Unkeep(oldFile);
  }
  if (failure) unlink(newPath.c_str());
  return failure;
}

std::error_code Overwrite(const File& file, std::string_view bytes) {
  if (lseek(file.Descriptor(), 0, SEEK_SET) != 0) return LastError();
  if (const auto failure = file.Write(bytes)) return failure;
  if (ftruncate(file.Descriptor(), static_cast<off_t>(bytes.size())) != 0) return LastError();
  return file.Flush();
}

// For folders that take no new file. Reads the old bytes first, and restores them if the new ones do not fit.
std::error_code ReplaceInPlace(const fs::path& path, std::string_view bytes, const struct stat& status,
                               const OldFile& oldFile) {
  std::string old;
  if (const auto failure = ReadFile(path, old)) return failure;
  const File file(path, O_WRONLY);
  if (!file.IsOpen()) return file.OpenFailure();
  if (const auto failure = Keep(oldFile, path, &status, Way::Copy)) return failure;
  const auto failure = Overwrite(file, bytes);
  if (!failure) return {};
  [[maybe_unused]] const auto restored = Overwrite(file, old);
  Unkeep(oldFile);
  return failure;
}

// Whether replacing failed for a reason that still permits writing in place: the folder takes no new file, or the name
// is locked.
bool OnlyTheFolderRefused(const std::error_code& failure) {
  return failure == std::errc::permission_denied || failure == std::errc::operation_not_permitted ||
         failure == std::errc::read_only_file_system || failure == std::errc::device_or_resource_busy;
}

}  // namespace

// Not strerror: its text is in the user's language and in UTF-8.
std::string Reason(const std::error_code& failure) {
  const bool isSystems = failure.category() == std::generic_category() || failure.category() == std::system_category();
  const char* const text = isSystems ? strerrordesc_np(failure.value()) : nullptr;
  return text != nullptr ? text : failure.message();
}

// Not every file system supports locks, and an unlistable folder cannot be opened for one.
ToolLock LockTool() {
  constexpr auto kMoment = std::chrono::milliseconds(1);
  constexpr auto kPatience = std::chrono::seconds(5);
  const auto folder = std::make_shared<File>(BesideExecutable(""), O_RDONLY | O_DIRECTORY);
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (flock(folder->Descriptor(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK && errno != EINTR) return {};
    if (std::chrono::steady_clock::now() > end) return {nullptr, FileRefusal::Busy};
    std::this_thread::sleep_for(kMoment);
  }
  return {folder, {}};
}

// Reads to the real end: some system files are longer than their reported size.
std::error_code ReadFile(const fs::path& path, std::string& bytes, std::size_t most) {
  bytes.clear();
  if (!path.is_absolute()) return FileRefusal::FolderUnknown;
  fs::path found = path;
  if (const auto failure = Find(found)) return failure;
  const File file(found, O_RDONLY | O_NONBLOCK);  // opening a pipe must not wait for a writer
  if (!file.IsOpen()) return file.OpenFailure();
  struct stat status = {};
  if (fstat(file.Descriptor(), &status) != 0) return LastError();
  if (const auto refusal = CheckIsFile(status)) return refusal;
  constexpr off_t kLeastAtOnce = 4096;
  constexpr off_t kMostAtOnce = 65536;
  const auto atOnce = static_cast<std::size_t>(std::clamp(status.st_size + 1, kLeastAtOnce, kMostAtOnce));
  std::error_code failure;
  for (std::size_t before = 1; !failure && bytes.size() != before && bytes.size() <= most;) {
    before = bytes.size();
    failure = file.Read(bytes, atOnce);
  }
  if (failure) bytes.clear();
  if (bytes.size() <= most) return failure;
  bytes.resize(most);
  return FileRefusal::TooLarge;
}

std::error_code ReplaceFile(const fs::path& path, std::string_view bytes, const OldFile& oldFile) {
  if (!path.is_absolute() || (oldFile.mustBeKept && !oldFile.keptAs.is_absolute())) return FileRefusal::FolderUnknown;
  fs::path target = path;
  if (const auto failure = Find(target)) return failure;
  struct stat old = {};
  const bool isThere = lstat(target.c_str(), &old) == 0;
  if (!isThere && errno != ENOENT) return LastError();
  if (isThere) {
    if (const auto refusal = CheckMayBeReplaced(target, old)) return refusal;
  }
  const std::error_code failure = ReplaceByRenaming(target, bytes, isThere ? &old : nullptr, oldFile);
  return isThere && OnlyTheFolderRefused(failure) ? ReplaceInPlace(target, bytes, old, oldFile) : failure;
}

std::error_code RenameFile(const fs::path& from, const fs::path& to) {
  return rename(from.c_str(), to.c_str()) == 0 ? std::error_code() : LastError();
}

void RemoveFile(const fs::path& path) { unlink(path.c_str()); }

bool TakesFiles(const fs::path& folder) { return access(folder.c_str(), W_OK | X_OK) == 0; }

}  // namespace platform
