#include "platform/paths.h"

#include <algorithm>

#include "platform/code_page.h"
#include "platform/linux/drives.h"
#include "platform/linux/file_names.h"
#include "platform/list_files.h"

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

std::optional<std::vector<std::string>> ListSubfolders(std::string_view windowsPath, Hidden hidden) {
  const auto path = ToHostPath(windowsPath);
  if (!path) return std::nullopt;
  std::vector<std::string> names;
  std::error_code failure;
  for (fs::directory_iterator entry(AsSpelledOnDisk(*path), failure), end; entry != end; entry.increment(failure)) {
    const fs::path name = entry->path().filename();
    std::error_code untold;
    const bool isLeftOut = hidden == Hidden::LeftOut && name.native().starts_with('.');
    if (isLeftOut || !entry->is_directory(untold)) continue;
    if (auto text = FromUtf8Exactly(name.native())) names.push_back(*std::move(text));
  }
  if (failure) return std::nullopt;
  std::ranges::sort(names, ComesBefore);
  return names;
}

std::error_code ListFolder(const fs::path& folder, std::vector<FolderEntry>& entries) {
  std::error_code failure;
  for (fs::directory_iterator entry(folder, failure), end; entry != end; entry.increment(failure)) {
    std::error_code untold;
    auto name = FromUtf8Exactly(entry->path().filename().native());
    if (name) entries.push_back({*entry, *std::move(name), entry->is_directory(untold), entry->is_symlink(untold)});
  }
  return failure;
}

std::optional<fs::path> WithoutLinks(const fs::path& path) {
  std::error_code failure;
  fs::path real = fs::canonical(path, failure);
  return failure ? std::nullopt : std::optional(std::move(real));
}

}  // namespace platform
