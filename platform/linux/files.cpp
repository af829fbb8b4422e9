#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <string>
#include <utility>

#include "platform/linux/drives.h"

namespace platform {
namespace {

// Beside the file that it is about to replace. Not made from that file's name, which may already be as long as names
// can be; one left behind by a crash is taken over by the next write.
constexpr std::string_view kNewFileName = ".gantrel-new";

std::error_code LastError() { return {errno, std::generic_category()}; }

// An open file, closed with it.
class File {
 public:
  File(const std::string& path, int flags, mode_t mode = 0) {
    do {
      descriptor_ = open(path.c_str(), flags | O_CLOEXEC, mode);
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

// As spelled, or else in a spelling that differs in letter case alone.
File OpenForReading(const HostPath& path) {
  constexpr int kFlags = O_RDONLY | O_NONBLOCK;  // opening a pipe shall not wait for someone to write into it
  File file(path.text, kFlags);
  if (file.OpenFailure() != std::errc::no_such_file_or_directory) return file;
  return {AsSpelledOnDisk(path).text, kFlags};
}

// The file itself, at the end of all links; a link that leads nowhere yet is followed as well. `path` as given when
// nothing is there.
std::string FollowLinks(std::string path) {
  constexpr int kMostLinks = 40;
  for (int i = 0; i < kMostLinks; ++i) {
    std::string target(PATH_MAX, '\0');
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    if (length <= 0) break;
    target.resize(static_cast<std::size_t>(length));
    path.resize(target.starts_with('/') ? 0 : path.rfind('/') + 1);
    path += target;
  }
  return path;
}

std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

bool MayBeWritten(const std::string& path, const struct stat& status) {
  constexpr mode_t kAnyonesWrite = S_IWUSR | S_IWGRP | S_IWOTH;  // read-only means read-only, also to root
  return (status.st_mode & kAnyonesWrite) != 0 && access(path.c_str(), W_OK) == 0;
}

// Nothing but what the disk holds counts as written: the bytes are flushed before the new file takes the name.
std::error_code ReplaceByRenaming(const std::string& path, std::string_view bytes, const struct stat* old) {
  const std::string newPath = FolderOf(path) + std::string(kNewFileName);
  unlink(newPath.c_str());
  File file(newPath, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, 0666);
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
         failure == std::errc::device_or_resource_busy;
}

}  // namespace

std::error_code FileBytes::Read(const HostPath& path) {
  bytes_ = {};
  const File file = OpenForReading(path);
  if (!file.IsOpen()) return file.OpenFailure();
  struct stat status = {};
  if (fstat(file.Descriptor(), &status) != 0) return LastError();
  if (S_ISDIR(status.st_mode)) return std::make_error_code(std::errc::is_a_directory);
  if (!S_ISREG(status.st_mode)) return std::make_error_code(std::errc::invalid_argument);

  const auto size = static_cast<std::size_t>(status.st_size);
  if (size > room_.size()) largeRoom_ = std::make_unique_for_overwrite<char[]>(size);
  char* const room = largeRoom_ ? largeRoom_.get() : room_.data();
  std::size_t count = 0;
  if (const auto failure = file.Read(room, size, count)) return failure;
  bytes_ = {room, count};
  return {};
}

std::error_code ReplaceFile(const HostPath& path, std::string_view bytes) {
  const std::string target = FollowLinks(AsSpelledOnDisk(path).text);
  struct stat old = {};
  if (stat(target.c_str(), &old) != 0) {
    return errno == ENOENT ? ReplaceByRenaming(target, bytes, nullptr) : LastError();
  }
  if (S_ISDIR(old.st_mode)) return std::make_error_code(std::errc::is_a_directory);
  if (!S_ISREG(old.st_mode)) return std::make_error_code(std::errc::invalid_argument);
  if (!MayBeWritten(target, old)) return std::make_error_code(std::errc::permission_denied);
  const auto failure = ReplaceByRenaming(target, bytes, &old);
  return OnlyTheFolderRefused(failure) ? ReplaceInPlace(target, bytes) : failure;
}

}  // namespace platform
