#include "platform/linux/drives.h"

#include <dirent.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

#include "platform/code_page.h"
#include "platform/linux/utf8.h"

namespace platform {
namespace {

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

// No failure for what is there, be it a link that leads nowhere; errc::no_such_file_or_directory for what is known to
// be missing.
std::error_code Result(bool isThere) {
  if (isThere) return {};
  return {errno == ENOTDIR ? ENOENT : errno, std::generic_category()};
}

std::error_code Look(const std::string& path) {
  struct stat status = {};
  return Result(lstat(path.c_str(), &status) == 0);
}

bool IsMissing(const std::error_code& result) { return result == std::errc::no_such_file_or_directory; }

// Also where the system does not tell.
bool MayBeFolder(const std::string& path) {
  struct stat status = {};
  const auto result = Result(stat(path.c_str(), &status) == 0);
  return result ? !IsMissing(result) : S_ISDIR(status.st_mode);
}

// Takes the next component off a path that the separators divide; empty at the path's end.
std::string_view TakeComponent(std::string_view& path) {
  while (!path.empty() && IsSeparator(path.front())) path.remove_prefix(1);
  const auto length = static_cast<std::size_t>(std::ranges::find_if(path, IsSeparator) - path.begin());
  const std::string_view component = path.substr(0, length);
  path.remove_prefix(length);
  return component;
}

std::string Joined(std::string folder, std::string_view name) {
  if (!folder.ends_with('/')) folder += '/';
  return folder.append(name);
}

// Gives `name` the spelling that it has in the folder: its own, or else that of the first name, by byte order, that is
// the same but for the letter case.
std::error_code SpellIn(const std::string& folder, std::string& name) {
  std::error_code result = Look(Joined(folder, name));
  const auto wanted = FromUtf8Exactly(name);
  if (!IsMissing(result) || !wanted) return result;
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.c_str()), closedir);
  if (!entries) return Result(false);
  const dirent* entry = nullptr;
  for (errno = 0; (entry = readdir(entries.get())) != nullptr; errno = 0) {
    const std::string_view spelling = entry->d_name;
    if (!result && name < spelling) continue;
    const auto text = FromUtf8Exactly(spelling);
    if (!text || !SameName(*text, *wanted)) continue;
    name = spelling;
    result = {};
  }
  return errno == 0 ? result : Result(false);
}

std::string WithoutEndingSlash(std::string path) {
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

// What remains of `path` below `folder`, without the separator between them; nothing when it is not below. Neither
// ends in a slash, unless it is the root folder.
std::optional<std::string_view> Below(std::string_view path, std::string_view folder) {
  if (folder == "/") return path.substr(1);
  if (!path.starts_with(folder)) return std::nullopt;
  path.remove_prefix(folder.size());
  if (path.empty()) return path;
  if (path.front() != '/') return std::nullopt;
  return path.substr(1);
}

// A path in the forms in which it may lie below a drive: as given, and with all its links followed.
std::vector<std::string> Forms(const std::string& path) {
  std::vector<std::string> forms = {WithoutEndingSlash(std::filesystem::path(path).lexically_normal().string())};
  std::error_code failure;
  const std::string followed = std::filesystem::weakly_canonical(path, failure).string();
  if (!failure && followed != forms.front()) forms.push_back(followed);
  return forms;
}

// Whether others may have put a prefix around the tool, to lead its writing elsewhere by its drives.
bool IsTrap(std::string folder) {
  const auto isOfAnother = [](const std::string& path) {
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 && status.st_uid != geteuid();
  };
  if (!isOfAnother(folder + "/") && !isOfAnother(folder + "/system.reg")) return false;
  for (;; folder.resize(folder.rfind('/'))) {
    struct stat status = {};
    if (stat((folder + "/").c_str(), &status) == 0 && (status.st_mode & S_IWOTH) != 0) return true;
    if (folder.empty()) return false;
  }
}

}  // namespace

std::string HomeFolder() {
  if (const char* const home = std::getenv("HOME"); home != nullptr && *home != '\0') return home;
  const passwd* const user = getpwuid(getuid());
  return user != nullptr ? user->pw_dir : "";
}

std::optional<HostPath> PrefixFolder() {
  std::string folder = BesideExecutable("").text;
  if (!folder.starts_with('/')) return std::nullopt;
  while (!folder.empty()) {
    folder.resize(folder.rfind('/'));
    if (!IsMissing(Look(folder + "/system.reg")) && !IsTrap(folder)) return HostPath{folder};
  }
  const std::string inHome = HomeFolder() + "/.wine";
  if (MayBeFolder(inHome)) return HostPath{inHome};
  return std::nullopt;
}

std::optional<HostPath> DriveFolder(const std::optional<HostPath>& prefix, char letter) {
  if (prefix) {
    const std::string link = prefix->text + "/dosdevices/" + letter + ":";
    if (MayBeFolder(link)) return HostPath{link};
    if (!IsMissing(Look(link))) return std::nullopt;
    if (letter == 'c') return HostPath{prefix->text + "/drive_c"};
  }
  if (letter == 'z') return HostPath{"/"};
  return std::nullopt;
}

std::vector<Drive> Drives(const std::optional<HostPath>& prefix) {
  std::vector<Drive> drives;
  for (char letter = 'a'; letter <= 'z'; ++letter) {
    if (auto folder = DriveFolder(prefix, letter)) drives.push_back({letter, *std::move(folder)});
  }
  return drives;
}

std::optional<HostPath> MapToHost(const std::optional<HostPath>& prefix, std::string_view windowsPath) {
  std::string host = "/";
  if (!windowsPath.starts_with('/')) {
    const char letter = windowsPath.empty() ? '\0' : static_cast<char>(windowsPath.front() | 0x20);
    if (letter < 'a' || letter > 'z' || !windowsPath.substr(1).starts_with(':')) return std::nullopt;
    const auto folder = DriveFolder(prefix, letter);
    if (!folder) return std::nullopt;
    host = folder->text;
    windowsPath.remove_prefix(2);
  }
  const bool isFolder = !windowsPath.empty() && IsSeparator(windowsPath.back());
  for (auto name = TakeComponent(windowsPath); !name.empty(); name = TakeComponent(windowsPath)) {
    host = Joined(std::move(host), ToUtf8(name));
  }
  if (isFolder) host = Joined(std::move(host), "");
  return HostPath{host};
}

std::optional<std::string> MapToWindows(const std::optional<HostPath>& prefix, const HostPath& path) {
  const std::vector<std::string> forms = Forms(path.text);
  std::optional<char> letter;
  std::size_t longest = 0;  // the length of the drive's folder
  std::string_view rest;
  for (const Drive& drive : Drives(prefix)) {
    for (const std::string& folder : Forms(drive.folder.text)) {
      for (const std::string& form : forms) {
        const auto below = Below(form, folder);
        if (!below || folder.size() <= longest) continue;
        letter = drive.letter;
        longest = folder.size();
        rest = *below;
      }
    }
  }
  auto text = FromUtf8Exactly(rest);
  if (!letter || !text || text->find('\\') != std::string::npos) return std::nullopt;
  std::ranges::replace(*text, '/', '\\');
  return std::string(1, static_cast<char>(*letter - 0x20)) + ":\\" + *text;
}

std::optional<std::string> MapBetween(const std::optional<HostPath>& from, const std::optional<HostPath>& to,
                                      std::string_view windowsPath) {
  const auto drive = MapToHost(from, windowsPath.substr(0, 2));
  const auto path = MapToHost(from, windowsPath);
  if (!drive || !path) return std::nullopt;
  std::error_code failure;
  std::string folder = std::filesystem::canonical(drive->text, failure).string();
  if (failure) return std::nullopt;
  return MapToWindows(to, {std::move(folder).append(path->text, drive->text.size())});
}

std::error_code SpellAsOnDisk(HostPath& path) {
  std::error_code result = Look(path.text);
  if (!IsMissing(result)) return result;
  result = {};
  std::string spelled = "/";
  std::string_view rest = path.text;
  const bool isFolder = rest.ends_with('/');
  while (!rest.empty()) {
    rest.remove_prefix(std::min(rest.find_first_not_of('/'), rest.size()));
    std::string name(rest.substr(0, rest.find('/')));
    rest.remove_prefix(name.size());
    if (name.empty()) break;
    if (!result) result = SpellIn(spelled, name);
    if (result && !IsMissing(result)) return result;
    spelled = Joined(std::move(spelled), name);
  }
  path.text = isFolder ? Joined(std::move(spelled), "") : std::move(spelled);
  return {};
}

HostPath AsSpelledOnDisk(const HostPath& path) {
  HostPath spelled = path;
  [[maybe_unused]] const auto untold = SpellAsOnDisk(spelled);
  return spelled;
}

}  // namespace platform
