#include "platform/paths.h"

#include <dirent.h>

#include <algorithm>
#include <cerrno>
#include <memory>

#include "platform/code_page.h"
#include "platform/linux/drives.h"
#include "platform/linux/file_names.h"
#include "platform/folders.h"

namespace fs = std::filesystem;

namespace platform {

fs::path BesideExecutable(std::string_view name) {
  std::string given(name);
  std::ranges::replace(given, '\\', '/');
  std::error_code failure;
  const fs::path executable = fs::read_symlink("/proc/self/exe", failure);
  // As text: a name that begins with a separator must stay below the folder, too.
  return (failure ? fs::path(".") : executable.parent_path()).concat("/").concat(ToUtf16(given));
}

std::optional<fs::path> ToHostPath(std::string_view windowsPath) { return MapToHost(PrefixFolder(), windowsPath); }

fs::path AsSpelledOnDisk(const fs::path& path) {
  fs::path spelled = path;
  [[maybe_unused]] const auto untold = SpellAsOnDisk(spelled);
  return spelled;
}

std::optional<std::string> ToWindowsPath(const fs::path& path) { return MapToWindows(PrefixFolder(), path); }

std::string DisplayName(const fs::path& path) { return FromUtf8(path.native()); }

// Not by std::filesystem: to make each entry's path takes it longer than the system needs to list them.
std::error_code ListFolder(const fs::path& folder, std::vector<FolderEntry>& entries) {
  const std::unique_ptr<DIR, int (*)(DIR*)> listed(opendir(folder.c_str()), closedir);
  if (!listed) return {errno, std::generic_category()};
  for (;;) {
    errno = 0;
    const dirent* const entry = readdir(listed.get());
    if (entry == nullptr) return {errno, std::generic_category()};
    const std::string_view spelling = entry->d_name;
    auto name = FromUtf8Exactly(spelling);
    if (!name || spelling == "." || spelling == "..") continue;
    std::error_code untold;
    bool isFolder = entry->d_type == DT_DIR;
    bool isLink = false;
    if (entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN) {
      isFolder = fs::is_directory(folder / spelling, untold);
      isLink = fs::is_symlink(folder / spelling, untold);
    }
    const bool isHidden = spelling.starts_with('.');
    entries.push_back({*std::move(name), isFolder, isLink, isHidden});
  }
}

std::optional<fs::path> WithoutLinks(const fs::path& path) {
  std::error_code failure;
  fs::path real = fs::canonical(path, failure);
  return failure ? std::nullopt : std::optional(std::move(real));
}

}  // namespace platform
