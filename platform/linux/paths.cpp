#include "platform/paths.h"

#include <algorithm>

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

std::error_code ListFolder(const fs::path& folder, std::vector<FolderEntry>& entries) {
  std::error_code failure;
  for (fs::directory_iterator entry(folder, failure), end; entry != end; entry.increment(failure)) {
    const std::string& path = entry->path().native();
    auto name = FromUtf8Exactly(std::string_view(path).substr(path.rfind('/') + 1));
    if (!name) continue;
    std::error_code untold;
    const bool isHidden = name->starts_with('.');
    entries.push_back({*std::move(name), entry->is_directory(untold), entry->is_symlink(untold), isHidden});
  }
  return failure;
}

std::optional<fs::path> WithoutLinks(const fs::path& path) {
  std::error_code failure;
  fs::path real = fs::canonical(path, failure);
  return failure ? std::nullopt : std::optional(std::move(real));
}

}  // namespace platform
