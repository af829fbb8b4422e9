#include "platform/paths.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <memory>

#include "platform/code_page.h"
#include "platform/linux/drives.h"
#include "platform/linux/utf8.h"

namespace platform {
namespace {

bool IsFolder(int folder, const dirent& entry) {
  if (entry.d_type == DT_DIR) return true;
  if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return false;
  struct stat status = {};
  return fstatat(folder, entry.d_name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

HostPath BesideExecutable(std::string_view name) {
  std::array<char, PATH_MAX> buffer;  // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the next line
  const ssize_t length = readlink("/proc/self/exe", buffer.data(), buffer.size());
  const std::string_view executable(buffer.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
  const std::string_view folder = length > 0 ? executable.substr(0, executable.rfind('/') + 1) : "./";
  HostPath path;
  path.text.reserve(folder.size() + name.size());
  path.text += folder;
  path.text += ToUtf8(name);
  std::replace(path.text.begin() + static_cast<std::ptrdiff_t>(folder.size()), path.text.end(), '\\', '/');
  return path;
}

std::optional<HostPath> ToHostPath(std::string_view windowsPath) { return MapToHost(PrefixFolder(), windowsPath); }

std::optional<std::string> ToWindowsPath(const HostPath& path) { return MapToWindows(PrefixFolder(), path); }

std::string Shown(const HostPath& path) { return FromUtf8(path.text); }

std::optional<std::vector<std::string>> ListSubfolders(std::string_view windowsPath) {
  const auto path = ToHostPath(windowsPath);
  if (!path) return std::nullopt;
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(AsSpelledOnDisk(*path).text.c_str()), closedir);
  if (!entries) return std::nullopt;
  std::vector<std::string> names;
  const dirent* entry = nullptr;
  for (errno = 0; (entry = readdir(entries.get())) != nullptr; errno = 0) {
    if (entry->d_name[0] == '.' || !IsFolder(dirfd(entries.get()), *entry)) continue;
    if (auto name = FromUtf8Exactly(entry->d_name)) names.push_back(*std::move(name));
  }
  if (errno != 0) return std::nullopt;
  std::ranges::sort(names, ComesBefore);
  return names;
}

}  // namespace platform
