#include "platform/linux/drives.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "platform/code_page.h"
#include "platform/folders.h"
#include "platform/linux/file_names.h"
#include "platform/paths.h"

namespace fs = std::filesystem;

namespace platform {
namespace {

// The two forms in which a path may lie below a drive: as given, and with links resolved. Neither ends in a slash.
std::array<fs::path, 2> Forms(const fs::path& path) {
  const fs::path given = (path / "").lexically_normal().parent_path();
  std::error_code failure;
  const fs::path followed = fs::weakly_canonical(given, failure);
  return {given, failure ? given : followed};
}

// Whether others may have planted the prefix around the tool, to redirect its writes through drive links.
bool IsTrap(const fs::path& prefix) {
  const auto isOfAnother = [](const fs::path& path) {
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 && status.st_uid != geteuid();
  };
  const auto isForAll = [](const fs::path& folder) {
    std::error_code failure;
    const fs::perms rights = fs::status(folder, failure).permissions();
    return !failure && (rights & fs::perms::others_write) != fs::perms::none;
  };
  if (!isOfAnother(prefix / "") && !isOfAnother(prefix / "system.reg")) return false;
  fs::path folder = prefix;
  while (!isForAll(folder) && folder.has_relative_path()) folder = folder.parent_path();
  return isForAll(folder);
}

}  // namespace

fs::path HomeFolder() {
  if (const char* const home = std::getenv("HOME"); home != nullptr && *home != '\0') return home;
  const passwd* const user = getpwuid(getuid());
  return user != nullptr ? user->pw_dir : "/";
}

std::optional<fs::path> PrefixFolder() {
  fs::path folder = BesideExecutable("");
  if (!folder.is_absolute()) return std::nullopt;
  while (folder.has_relative_path()) {
    folder = folder.parent_path();
    if (!IsMissing(Look(folder / "system.reg")) && !IsTrap(folder)) return folder;
  }
  const fs::path inHome = HomeFolder() / ".wine";
  return MayBeFolder(inHome) ? std::optional(inHome) : std::nullopt;
}

std::optional<fs::path> DriveFolder(const std::optional<fs::path>& prefix, char letter) {
  if (prefix) {
    const fs::path link = *prefix / "dosdevices" / std::string{letter, ':'};
    if (MayBeFolder(link)) return link;
    if (!IsMissing(Look(link))) return std::nullopt;
    if (letter == 'c') return *prefix / "drive_c";
  }
  return letter == 'z' ? std::optional<fs::path>("/") : std::nullopt;
}

std::optional<fs::path> MapToHost(const std::optional<fs::path>& prefix, std::string_view windowsPath) {
  std::string text(windowsPath);
  std::ranges::replace(text, '\\', '/');
  if (windowsPath.starts_with('/')) return fs::path(ToUtf16(text));
  if (text.size() < 2 || text[1] != ':') return std::nullopt;
  const auto letter = static_cast<char>(text[0] | 0x20);
  const auto folder = letter >= 'a' && letter <= 'z' ? DriveFolder(prefix, letter) : std::nullopt;
  const fs::path below = fs::path(ToUtf16(text.substr(2))).relative_path();
  return folder && !below.empty() ? *folder / below : folder;
}

std::optional<std::string> MapToWindows(const std::optional<fs::path>& prefix, const fs::path& path) {
  const auto forms = Forms(path);
  char drive = '\0';
  std::size_t longest = 0;  // the length of the drive's folder
  fs::path rest;
  for (char letter = 'a'; letter <= 'z'; ++letter) {
    const auto link = DriveFolder(prefix, letter);
    if (!link) continue;
    for (const fs::path& folder : Forms(*link)) {
      for (const fs::path& form : forms) {
        const fs::path below = form.lexically_relative(folder);
        if (below.empty() || *below.begin() == ".." || folder.native().size() <= longest) continue;
        drive = letter;
        longest = folder.native().size();
        rest = below == "." ? "" : below;
      }
    }
  }
  auto text = FromUtf8Exactly(rest.native());
  if (longest == 0 || !text || text->find('\\') != std::string::npos) return std::nullopt;
  std::ranges::replace(*text, '/', '\\');
  return std::string{static_cast<char>(drive - 0x20), ':', '\\'} + *text;
}

std::optional<std::string> MapBetween(const std::optional<fs::path>& from, const std::optional<fs::path>& to,
                                      std::string_view windowsPath) {
  const auto drive = MapToHost(from, windowsPath.substr(0, 2));
  if (!drive) return std::nullopt;
  std::error_code failure;
  const fs::path folder = fs::canonical(*drive, failure);
  if (failure) return std::nullopt;
  return MapToWindows(to, folder / MapToHost(from, windowsPath)->lexically_relative(*drive));
}

}  // namespace platform
