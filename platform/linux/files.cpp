#include "platform/files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <string>
#include <thread>
#include <utility>

#include "platform/linux/drives.h"

namespace platform {
namespace {

// Beside the file that it is about to replace. Not made from that file's name, which may already be as long as names
// can be; one left behind by a crash is taken over by the next write. The others are for a folder in which something
// that cannot be removed has the first.
constexpr std::array<std::string_view, 3> kNewFileNames = {".gantrel-new", ".gantrel-new2", ".gantrel-new3"};

std::error_code LastError() { return {errno, std::generic_category()}; }

// An open file, closed with it. A link is not followed: Find does that before.
class File {
 public:
  explicit File(const std::error_code& openFailure) : openFailure_(openFailure) {}
  File(const std::string& path, int flags, mode_t mode = 0) {
    do {
      descriptor_ = open(path.c_str(), flags | O_CLOEXEC | O_NOFOLLOW, mode);
    } while (descriptor_ < 0 && errno == EINTR);
    if (!IsOpen()) openFailure_ = LastError();
  }
  ~File() {
    if (IsOpen()) close(descriptor_);
  }
  File(File&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)), openFailure_(other.openFailure_) {}
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  File& operator=(File&&) = delete;

  bool IsOpen() const { return descriptor_ >= 0; }
  int Descriptor() const { return descriptor_; }
  std::error_code OpenFailure() const { return openFailure_; }

  // Also tells a write that failed late, on a network or a full disk.
  std::error_code Close() {
    const int result = close(std::exchange(descriptor_, -1));
    return result == 0 || errno == EINTR ? std::error_code() : LastError();
  }

  // Up to `size` bytes, fewer only at the file's end. `count` is how many there were.
  std::error_code Read(char* room, std::size_t size, std::size_t& count) const {
    for (count = 0; count < size;) {
      const ssize_t more = read(descriptor_, room + count, size - count);
      if (more < 0 && errno != EINTR) return LastError();
      if (more == 0) break;
      if (more > 0) count += static_cast<std::size_t>(more);
    }
    return {};
  }

  std::error_code Write(std::string_view bytes) const {
    while (!bytes.empty()) {
      const ssize_t count = write(descriptor_, bytes.data(), bytes.size());
      if (count < 0 && errno != EINTR) return LastError();
      if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
  }

  std::error_code Flush() const { return fsync(descriptor_) == 0 ? std::error_code() : LastError(); }

 private:
  int descriptor_ = -1;
  std::error_code openFailure_;
};

std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

// The system's own rule (fs.protected_symlinks), which it does not keep everywhere: in a folder that all may write to,
// anyone could lead the user's writing to a file that is the user's alone.
std::error_code CheckMayBeFollowed(const std::string& path, const struct stat& link) {
  struct stat folder = {};
  if (stat(FolderOf(path).c_str(), &folder) != 0) return LastError();
  constexpr mode_t kForAll = S_ISVTX | S_IWOTH;
  const bool isForAll = (folder.st_mode & kForAll) == kForAll;
  if (!isForAll || link.st_uid == geteuid() || link.st_uid == folder.st_uid) return {};
  return FileRefusal::LinkOfAnother;
}

// Makes `path` that of the file itself, at the end of all links; a link that leads nowhere yet is followed as well.
std::error_code FollowLinks(std::string& path) {
  constexpr int kMostLinks = 40;
  for (int i = 0; i < kMostLinks; ++i) {
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0) return errno == ENOENT ? std::error_code() : LastError();
    if (!S_ISLNK(status.st_mode)) return {};
    if (const auto refusal = CheckMayBeFollowed(path, status)) return refusal;
    std::string target(PATH_MAX, '\0');
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    if (length < 0) return LastError();
    target.resize(static_cast<std::size_t>(length));
    path = target.starts_with('/') ? target : FolderOf(path).append(target);
  }
  return std::make_error_code(std::errc::too_many_symbolic_link_levels);
}

// The file itself: as spelled, or else in a spelling that differs in letter case alone, and behind all links.
std::error_code Find(HostPath& path) {
  if (const auto failure = SpellAsOnDisk(path)) return failure;
  return FollowLinks(path.text);
}

// Most files are there as spelled, and no links.
File OpenForReading(const HostPath& path) {
  constexpr int kFlags = O_RDONLY | O_NONBLOCK;  // opening a pipe shall not wait for someone to write into it
  File file(path.text, kFlags);
  if (file.OpenFailure() != std::errc::no_such_file_or_directory &&
      file.OpenFailure() != std::errc::too_many_symbolic_link_levels) {
    return file;
  }
  HostPath found = path;
  if (const auto failure = Find(found)) return File(failure);
  return {found.text, kFlags};
}

std::error_code CheckIsFile(const struct stat& status) {
  if (S_ISDIR(status.st_mode)) return std::make_error_code(std::errc::is_a_directory);
  if (!S_ISREG(status.st_mode)) return FileRefusal::NotOrdinary;
  return {};
}

std::error_code CheckMayBeReplaced(const std::string& path, const struct stat& old) {
  constexpr mode_t kAnyonesWrite = S_IWUSR | S_IWGRP | S_IWOTH;  // read-only means read-only, also to root
  if (const auto refusal = CheckIsFile(old)) return refusal;
  if (access(path.c_str(), W_OK) != 0) return LastError();
  return (old.st_mode & kAnyonesWrite) != 0 ? std::error_code() : std::make_error_code(std::errc::permission_denied);
}

// Waits until no other program writes in the folder, and keeps others from it until the folder is closed, if only by
// the end of the process. So what is found there under the name of a new file is nobody's, and may be removed.
std::error_code Lock(const File& folder) {
  constexpr auto kMoment = std::chrono::milliseconds(1);
  const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds(5);
  while (flock(folder.Descriptor(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK) return LastError();
    if (std::chrono::steady_clock::now() > patience) return FileRefusal::Busy;
    std::this_thread::sleep_for(kMoment);
  }
  return {};
}

// Some file systems of a network lock no folders, and a folder that may not be listed cannot be locked.
bool CannotBeLocked(const std::error_code& failure) {
  return failure == std::errc::bad_file_descriptor || failure == std::errc::no_lock_available ||
         failure == std::errc::not_supported || failure == std::errc::function_not_supported ||
         failure == std::errc::permission_denied;
}

// Empty, and new: a link or another file that somebody has put under the name is not written to. Where the folder is
// not locked, what has the name may be another program's, and is let alone. `path` becomes the file's own.
File CreateNewFile(const std::string& folder, bool isLocked, std::string& path) {
  for (const std::string_view name : kNewFileNames) {
    path = folder + std::string(name);
    if (isLocked) {
      unlink(path.c_str());
    } else {
      path.append("-").append(std::to_string(getpid()));
    }
    File file(path, O_WRONLY | O_CREAT | O_EXCL, 0666);
    if (file.OpenFailure() != std::errc::file_exists) return file;
  }
  return File(std::make_error_code(std::errc::file_exists));
}

// Nothing but what the disk holds counts as written: the bytes are flushed before the new file takes the name.
std::error_code ReplaceByRenaming(const std::string& path, std::string_view bytes, const struct stat* old,
                                  bool isLocked) {
  std::string newPath;
  File file = CreateNewFile(FolderOf(path), isLocked, newPath);
  if (!file.IsOpen()) return file.OpenFailure();
  std::error_code failure;
  if (old != nullptr) {
    // The owner can be kept only by root; the permissions must be, and come last since a new owner clears some.
    [[maybe_unused]] const int ownerKept = fchown(file.Descriptor(), old->st_uid, old->st_gid);
    if (fchmod(file.Descriptor(), old->st_mode & 07777U) != 0) failure = LastError();
  }
  if (!failure) failure = file.Write(bytes);
  if (!failure) failure = file.Flush();
  if (const auto late = file.Close(); !failure) failure = late;
  if (!failure && rename(newPath.c_str(), path.c_str()) != 0) failure = LastError();
  if (failure) unlink(newPath.c_str());
  return failure;
}

std::error_code Overwrite(const File& file, std::string_view bytes) {
  if (lseek(file.Descriptor(), 0, SEEK_SET) != 0) return LastError();
  if (const auto failure = file.Write(bytes)) return failure;
  if (ftruncate(file.Descriptor(), static_cast<off_t>(bytes.size())) != 0) return LastError();
  return file.Flush();
}

// Where the folder takes no new file. The old bytes are read first, and put back when the new ones do not fit.
std::error_code ReplaceInPlace(const std::string& path, std::string_view bytes) {
  FileBytes old;
  if (const auto failure = old.Read({path})) return failure;
  const File file(path, O_WRONLY);
  if (!file.IsOpen()) return file.OpenFailure();
  const auto failure = Overwrite(file, bytes);
  if (failure) [[maybe_unused]]
    const auto restored = Overwrite(file, old.View());
  return failure;
}

// Whether a file could not be replaced for a reason that does not keep it from being written itself: its folder takes
// no new file, or its name is held fast.
bool OnlyTheFolderRefused(const std::error_code& failure) {
  return failure == std::errc::permission_denied || failure == std::errc::operation_not_permitted ||
         failure == std::errc::read_only_file_system || failure == std::errc::device_or_resource_busy;
}

}  // namespace

std::error_code FileBytes::Read(const HostPath& path) {
  bytes_ = {};
  if (!path.text.starts_with('/')) return FileRefusal::FolderUnknown;
  const File file = OpenForReading(path);
  if (!file.IsOpen()) return file.OpenFailure();
  struct stat status = {};
  if (fstat(file.Descriptor(), &status) != 0) return LastError();
  if (const auto refusal = CheckIsFile(status)) return refusal;

  char* room = room_.data();
  std::size_t count = 0;
  if (const auto failure = file.Read(room, room_.size(), count)) return failure;
  if (count == room_.size()) {
    if (!largeRoom_) largeRoom_ = std::make_unique_for_overwrite<char[]>(most_ + 1);
    std::copy_n(room, count, largeRoom_.get());
    room = largeRoom_.get();
    std::size_t more = 0;
    if (const auto failure = file.Read(room + count, most_ + 1 - count, more)) return failure;
    count += more;
    if (count > most_) return FileRefusal::TooLarge;
  }
  bytes_ = {room, count};
  return {};
}

std::error_code ReplaceFile(const HostPath& path, std::string_view bytes) {
  if (!path.text.starts_with('/')) return FileRefusal::FolderUnknown;
  HostPath target = path;
  if (const auto failure = Find(target)) return failure;
  struct stat old = {};
  const bool isThere = lstat(target.text.c_str(), &old) == 0;
  if (!isThere && errno != ENOENT) return LastError();
  if (isThere) {
    if (const auto refusal = CheckMayBeReplaced(target.text, old)) return refusal;
  }
  const File folder(FolderOf(target.text), O_RDONLY | O_DIRECTORY);
  std::error_code failure = folder.IsOpen() ? Lock(folder) : folder.OpenFailure();
  const bool isLocked = !failure;
  if (isLocked || CannotBeLocked(failure)) {
    failure = ReplaceByRenaming(target.text, bytes, isThere ? &old : nullptr, isLocked);
  }
  return isThere && OnlyTheFolderRefused(failure) ? ReplaceInPlace(target.text, bytes) : failure;
}

}  // namespace platform
