#include "bench/raw_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace raw {
namespace {

void Check(bool isDone, const std::string& path) {
  if (isDone) return;
  std::perror(path.c_str());
  std::exit(EXIT_FAILURE);
}

}  // namespace

std::size_t Read(const std::string& path) {
  static std::array<char, std::size_t{1024} * 1024> room;  // larger than any file here
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  const ssize_t count = read(file, room.data(), room.size());
  Check(file >= 0 && count >= 0, path);
  close(file);
  return static_cast<std::size_t>(count);
}

std::size_t List(const std::string& path) {
  DIR* const folder = opendir(path.c_str());
  Check(folder != nullptr, path);
  std::size_t count = 0;
  while (readdir(folder) != nullptr) ++count;
  closedir(folder);
  return count;
}

void Replace(const std::string& path, std::string_view bytes) {
  const std::string newPath = path + ".new";
  const int file = open(newPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  Check(file >= 0 && write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()), newPath);
  Check(fsync(file) == 0 && close(file) == 0 && rename(newPath.c_str(), path.c_str()) == 0, newPath);
}

}  // namespace raw
