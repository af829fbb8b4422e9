#include "tests/faults/file_operations.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <new>
#include <stdexcept>
#include <string>

#include "support/own_folder.h"

// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming): the names are the linker's
#define GANTREL_REAL(result, name, ...) extern "C" result __real_##name(__VA_ARGS__)  // NOLINT(*-macro-usage)
GANTREL_REAL(int, open, const char*, int, ...);
GANTREL_REAL(int, close, int);
GANTREL_REAL(ssize_t, read, int, void*, size_t);
GANTREL_REAL(ssize_t, write, int, const void*, size_t);
GANTREL_REAL(int, fsync, int);
GANTREL_REAL(int, ftruncate, int, off_t);
GANTREL_REAL(off_t, lseek, int, off_t, int);
GANTREL_REAL(int, fchmod, int, mode_t);
GANTREL_REAL(int, fchown, int, uid_t, gid_t);
GANTREL_REAL(int, rename, const char*, const char*);
GANTREL_REAL(int, unlink, const char*);
GANTREL_REAL(int, fstat, int, struct stat*);
GANTREL_REAL(int, stat, const char*, struct stat*);
GANTREL_REAL(int, lstat, const char*, struct stat*);
GANTREL_REAL(int, access, const char*, int);
GANTREL_REAL(ssize_t, readlink, const char*, char*, size_t);
GANTREL_REAL(DIR*, opendir, const char*);

namespace faults {
namespace {

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): the intercepted functions have no other state
Record* record;
bool isOn;
Fault fault;
bool noNewFiles;
bool isUnflushed;
std::string root;
std::string folderFrom;
std::string folderTo;
void (*renamed)(const char*);
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

enum class Verdict : std::uint8_t { Go, GoHalfway, Fail, KillHalfway };

[[noreturn]] void Die() {
  kill(getpid(), SIGKILL);
  _exit(1);
}

// Counts the operation and says what is to become of it. A failure's reason is in errno.
Verdict Meet(Operation operation) {
  if (!isOn) return Verdict::Go;
  const int number = record->count++;
  if (number >= Record::kRoom) Die();
  record->operations[static_cast<std::size_t>(number)] = operation;
  const bool isHere = number == fault.at;
  if (isHere && fault.effect == Effect::Kill) {
    if (!fault.isHalfway) Die();
    return Verdict::KillHalfway;
  }
  if (isHere && fault.effect == Effect::MoveFolderAway) __real_rename(folderFrom.c_str(), folderTo.c_str());
  if (fault.effect == Effect::Fail) {
    if (isHere && fault.isHalfway) return Verdict::GoHalfway;  // what is left of the write comes next, and fails
    const bool isStillSo = number > fault.at && (fault.lasting & Bit(operation)) != 0;
    if (number == fault.at + (fault.isHalfway ? 1 : 0) || isStillSo) {
      errno = fault.reason;
      return Verdict::Fail;
    }
  }
  if (noNewFiles && operation == Operation::Create) {
    errno = EACCES;
    return Verdict::Fail;
  }
  return Verdict::Go;
}

bool Fails(Operation operation) { return Meet(operation) != Verdict::Go; }

// Paths elsewhere, such as that of the running program, stay out of it.
bool Fails(Operation operation, const char* path) {
  return isOn && std::string_view(path).starts_with(root) && Fails(operation);
}

}  // namespace

std::string_view Name(Operation operation) {
  constexpr std::array<std::string_view, 11> kNames = {"open",     "create", "look",   "read",   "write", "flush",
                                                       "truncate", "change", "rename", "unlink", "close"};
  return kNames.at(static_cast<std::size_t>(operation));
}

const Record& Prepare() {
  root = support::Root().native();
  void* const room = mmap(nullptr, sizeof(Record), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (room == MAP_FAILED) throw std::runtime_error("no shared memory");
  return *(record = new (room) Record);
}

void Start(const Fault& theFault, bool foldersTakeNoFiles, const char* from, const char* to,
           void (*afterRename)(const char* path)) {
  fault = theFault;
  isUnflushed = false;
  noNewFiles = foldersTakeNoFiles;
  folderFrom = from;
  folderTo = to;
  renamed = afterRename;
  record->count = record->unflushedRenames = 0;
  isOn = true;
}

void Stop() { isOn = false; }

}  // namespace faults

using faults::Fails;
using faults::Operation;

extern "C" {

int __wrap_open(const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
  va_end(more);
  return Fails((flags & O_CREAT) != 0 ? Operation::Create : Operation::Open, path) ? -1
                                                                                   : __real_open(path, flags, mode);
}

ssize_t __wrap_write(int file, const void* bytes, size_t size) {
  faults::isUnflushed = true;
  switch (faults::Meet(Operation::Write)) {
    case faults::Verdict::Go:
      return __real_write(file, bytes, size);
    case faults::Verdict::Fail:
      return -1;
    case faults::Verdict::GoHalfway:
      return __real_write(file, bytes, size / 2);
    case faults::Verdict::KillHalfway:
      __real_write(file, bytes, size / 2);
      faults::Die();
  }
  return -1;
}

int __wrap_fsync(int file) {
  faults::isUnflushed = false;
  if (Fails(Operation::Flush)) return -1;
  return faults::isOn ? 0 : __real_fsync(file);  // the disk's own time would be most of the test's
}

int __wrap_rename(const char* from, const char* to) {
  if (Fails(Operation::Rename, to)) return -1;
  const int result = __real_rename(from, to);
  if (faults::isOn && result == 0) {
    if (faults::isUnflushed) ++faults::record->unflushedRenames;
    if (faults::renamed != nullptr) faults::renamed(to);
  }
  return result;
}

int __wrap_close(int file) {
  const bool fails = Fails(Operation::Close);
  const int reason = errno;
  const int result = __real_close(file);  // a close that reports a failure has closed the file all the same
  if (!fails) return result;
  errno = reason;
  return -1;
}

ssize_t __wrap_read(int file, void* room, size_t size) {
  return Fails(Operation::Read) ? -1 : __real_read(file, room, size);
}
int __wrap_ftruncate(int file, off_t size) { return Fails(Operation::Truncate) ? -1 : __real_ftruncate(file, size); }
off_t __wrap_lseek(int file, off_t offset, int whence) {
  return Fails(Operation::Truncate) ? -1 : __real_lseek(file, offset, whence);
}
int __wrap_fchmod(int file, mode_t mode) { return Fails(Operation::Change) ? -1 : __real_fchmod(file, mode); }
int __wrap_fchown(int file, uid_t user, gid_t group) {
  return Fails(Operation::Change) ? -1 : __real_fchown(file, user, group);
}
int __wrap_unlink(const char* path) { return Fails(Operation::Unlink, path) ? -1 : __real_unlink(path); }
int __wrap_fstat(int file, struct stat* status) { return Fails(Operation::Look) ? -1 : __real_fstat(file, status); }
int __wrap_stat(const char* path, struct stat* status) {
  return Fails(Operation::Look, path) ? -1 : __real_stat(path, status);
}
int __wrap_lstat(const char* path, struct stat* status) {
  return Fails(Operation::Look, path) ? -1 : __real_lstat(path, status);
}
int __wrap_access(const char* path, int mode) { return Fails(Operation::Look, path) ? -1 : __real_access(path, mode); }
ssize_t __wrap_readlink(const char* path, char* room, size_t size) {
  return Fails(Operation::Look, path) ? -1 : __real_readlink(path, room, size);
}
DIR* __wrap_opendir(const char* path) { return Fails(Operation::Look, path) ? nullptr : __real_opendir(path); }

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)
