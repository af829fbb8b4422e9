#include "tests/support/file_calls.h"

#include <fcntl.h>
#include <sys/types.h>

#include <algorithm>
#include <cstdarg>
#include <map>
#include <optional>
#include <utility>

// The linker, told to wrap a function, gives the calls of it to the first of these names, and the function itself to
// the second.
extern "C" {
int WrappedOpen(const char* path, int flags, ...) asm("__wrap_open");
int SystemOpen(const char* path, int flags, ...) asm("__real_open");
ssize_t WrappedWrite(int descriptor, const void* bytes, std::size_t size) asm("__wrap_write");
ssize_t SystemWrite(int descriptor, const void* bytes, std::size_t size) asm("__real_write");
int WrappedFsync(int descriptor) asm("__wrap_fsync");
int SystemFsync(int descriptor) asm("__real_fsync");
int WrappedRename(const char* from, const char* to) asm("__wrap_rename");
int SystemRename(const char* from, const char* to) asm("__real_rename");
}

namespace support {
namespace {

struct Counting {
  FileCalls calls;
  std::map<int, std::size_t> openToWrite;  // positions of files, by descriptor
};

std::optional<Counting> counting;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

std::size_t PositionOf(const char* path) {
  auto& files = counting->calls.files;
  const auto found = std::ranges::find(files, std::string_view(path), &FileCalls::File::path);
  if (found != files.end()) return static_cast<std::size_t>(found - files.begin());
  files.push_back({path});
  return files.size() - 1;
}

std::size_t Sum(const FileCalls& calls, std::string_view name, std::size_t FileCalls::File::*count) {
  std::size_t sum = 0;
  for (const FileCalls::File& file : calls.files) {
    const std::string_view path = file.path;
    if (name.empty() || path.substr(path.rfind('/') + 1) == name) sum += file.*count;
  }
  return sum;
}

}  // namespace

std::size_t FileCalls::OpensToRead(std::string_view name) const { return Sum(*this, name, &File::opensToRead); }

std::size_t FileCalls::OpensToWrite(std::string_view name) const { return Sum(*this, name, &File::opensToWrite); }

void StartCounting() { counting.emplace(); }

FileCalls EndCounting() { return std::exchange(counting, std::nullopt).value().calls; }

}  // namespace support

using support::counting;

int WrappedOpen(const char* path, int flags, ...) {
  mode_t mode = 0;
  if ((flags & O_CREAT) != 0) {
    va_list arguments;
    va_start(arguments, flags);
    mode = va_arg(arguments, mode_t);
    va_end(arguments);
  }
  const int descriptor = SystemOpen(path, flags, mode);
  if (counting) {
    const std::size_t position = support::PositionOf(path);
    auto& file = counting->calls.files[position];
    const bool isToWrite = (flags & O_ACCMODE) != O_RDONLY;
    ++(isToWrite ? file.opensToWrite : file.opensToRead);
    if (isToWrite) counting->openToWrite[descriptor] = position;
  }
  return descriptor;
}

ssize_t WrappedWrite(int descriptor, const void* bytes, std::size_t size) {
  if (counting) {
    const auto file = counting->openToWrite.find(descriptor);
    if (file != counting->openToWrite.end()) counting->calls.files[file->second].bytesWritten += size;
  }
  return SystemWrite(descriptor, bytes, size);
}

int WrappedFsync(int descriptor) {
  if (counting) ++counting->calls.flushes;
  return SystemFsync(descriptor);
}

int WrappedRename(const char* from, const char* to) {
  if (counting) ++counting->calls.renames;
  return SystemRename(from, to);
}
