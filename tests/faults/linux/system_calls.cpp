#include "tests/faults/system_calls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

// The linker redirects the tool's calls here (see tests/CMakeLists.txt). Calls of libraries, and of test helpers
// through them, go to the system directly.
using faults::calls;
using faults::Meet;
using faults::Verdict;

// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming)
// NOLINTBEGIN(cppcoreguidelines-macro-usage, bugprone-macro-parentheses)
#define GANTREL_CALL(result, failed, name, parameters, outcome)    \
  extern "C" result __real_##name parameters;                      \
  extern "C" result __wrap_##name parameters {                     \
    const Verdict verdict = Meet(#name);                           \
    [[maybe_unused]] const bool isHalf = verdict == Verdict::Half; \
    return verdict == Verdict::Fail ? (failed) : (outcome);        \
  }

GANTREL_CALL(off_t, -1, lseek, (int file, off_t offset, int from), __real_lseek(file, offset, from))
GANTREL_CALL(int, -1, ftruncate, (int file, off_t size), __real_ftruncate(file, size))
GANTREL_CALL(int, -1, fchmod, (int file, mode_t mode), __real_fchmod(file, mode))
GANTREL_CALL(int, -1, fchown, (int file, uid_t user, gid_t group), __real_fchown(file, user, group))
GANTREL_CALL(int, -1, fstat, (int file, struct stat* status), __real_fstat(file, status))
GANTREL_CALL(int, -1, stat, (const char* path, struct stat* status), __real_stat(path, status))
GANTREL_CALL(int, -1, lstat, (const char* path, struct stat* status), __real_lstat(path, status))
GANTREL_CALL(int, -1, access, (const char* path, int mode), __real_access(path, mode))
GANTREL_CALL(int, -1, link, (const char* path, const char* name), __real_link(path, name))
GANTREL_CALL(int, -1, mkdir, (const char* path, mode_t mode), __real_mkdir(path, mode))
GANTREL_CALL(int, -1, unlink, (const char* path), __real_unlink(path))
GANTREL_CALL(int, -1, rename, (const char* from, const char* to), __real_rename(from, to))
// Half a read, for a test's file. fsync is skipped: it would take most of the test's time.
GANTREL_CALL(ssize_t, -1, read, (int file, void* room, size_t size),
             __real_read(file, room, isHalf ? size / 200 + 1 : size))
GANTREL_CALL(ssize_t, -1, write, (int file, const void* bytes, size_t size),
             __real_write(file, bytes, isHalf ? size / 2 : size))
GANTREL_CALL(int, -1, fsync, (int /*file*/), 0)

extern "C" {
int __real_open(const char* path, int flags, ...);
int __real_close(int file);

int __wrap_open(const char* path, int flags, mode_t mode) {
  if (Meet("open") == Verdict::Fail) return -1;
  if ((flags & O_CREAT) == 0 || calls.takeNewFiles || strstr(path, "History") != nullptr)
    return __real_open(path, flags, mode);
  errno = EACCES;
  return -1;
}

// A failed close still closes the file, and may lose bytes written to a new file.
int __wrap_close(int file) {
  if (Meet("close") != Verdict::Fail) return __real_close(file);
  const int reason = errno;
  if (reason != EINTR && calls.takeNewFiles) __real_ftruncate(file, 0);
  __real_close(file);
  errno = reason;
  return -1;
}
}
// NOLINTEND(cppcoreguidelines-macro-usage, bugprone-macro-parentheses)
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)

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
