#include "tests/faults/system_calls.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

// The linker leads the tool's calls here (see tests/CMakeLists.txt); those of the libraries, and of the tests' helpers
// through them, go to the system directly.
using faults::calls;
using faults::Fails;
using faults::Meet;
using faults::Verdict;

// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming, cppcoreguidelines-macro-usage)
#define GANTREL_CALL(result, failed, name, parameters, ...) \
  extern "C" result __real_##name parameters;               \
  extern "C" result __wrap_##name parameters { return Fails(#name) ? failed : __real_##name(__VA_ARGS__); }

GANTREL_CALL(off_t, -1, lseek, (int file, off_t offset, int from), file, offset, from)
GANTREL_CALL(int, -1, ftruncate, (int file, off_t size), file, size)
GANTREL_CALL(int, -1, fchmod, (int file, mode_t mode), file, mode)
GANTREL_CALL(int, -1, fchown, (int file, uid_t user, gid_t group), file, user, group)
GANTREL_CALL(int, -1, fstat, (int file, struct stat* status), file, status)
GANTREL_CALL(int, -1, stat, (const char* path, struct stat* status), path, status)
GANTREL_CALL(int, -1, lstat, (const char* path, struct stat* status), path, status)
GANTREL_CALL(int, -1, access, (const char* path, int mode), path, mode)
GANTREL_CALL(int, -1, unlink, (const char* path), path)

extern "C" {
int __real_open(const char* path, int flags, ...);
int __real_close(int file);
ssize_t __real_read(int file, void* room, size_t size);
ssize_t __real_write(int file, const void* bytes, size_t size);
int __real_rename(const char* from, const char* to);

int __wrap_open(const char* path, int flags, mode_t mode) {
  if (Fails("open")) return -1;
  if ((flags & O_CREAT) == 0 || calls.takeNewFiles) return __real_open(path, flags, mode);
  errno = EACCES;
  return -1;
}

ssize_t __wrap_read(int file, void* room, size_t size) {
  const Verdict verdict = Meet("read");
  if (verdict == Verdict::Fail) return -1;
  return __real_read(file, room, verdict == Verdict::Half ? size / 200 + 1 : size);  // half of a test's file
}

ssize_t __wrap_write(int file, const void* bytes, size_t size) {
  const Verdict verdict = Meet("write");
  if (verdict == Verdict::Fail) return -1;
  calls.areUnflushed = true;
  return __real_write(file, bytes, verdict == Verdict::Half ? size / 2 : size);
}

// Does nothing else, since the disk's own time would be most of the test's.
int __wrap_fsync(int /*file*/) {
  if (Fails("fsync")) return -1;
  calls.areUnflushed = false;
  return 0;
}

int __wrap_rename(const char* from, const char* to) {
  EXPECT_FALSE(calls.areUnflushed) << "takes the name before it is on the disk";
  return Fails("rename") ? -1 : __real_rename(from, to);
}

// One that reports a failure has closed the file all the same, and may have lost what was written to a new one.
int __wrap_close(int file) {
  if (!Fails("close")) return __real_close(file);
  const int reason = errno;
  if (reason != EINTR && calls.takeNewFiles) __real_ftruncate(file, 0);
  __real_close(file);
  errno = reason;
  return -1;
}
}
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming, cppcoreguidelines-macro-usage)

namespace faults {

std::vector<Reason> Reasons(std::string_view call) {
  std::vector<Reason> reasons = {{EIO}, {ENOSPC}, {EACCES}, {EPERM}, {EROFS}, {EMFILE}};
  constexpr std::string_view kInterrupted[] = {"read", "write", "open", "close"};
  if (std::ranges::find(kInterrupted, call) != std::end(kInterrupted)) reasons.push_back({EINTR, true});
  return reasons;
}

void MakeLink(const std::filesystem::path& link, const std::filesystem::path& target) {
  std::filesystem::create_symlink(target, link);
}

void SetReason(int reason) { errno = reason; }

}  // namespace faults
