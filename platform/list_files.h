#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace platform {

// The files in a folder and all its subfolders, hidden files included.
struct FileListing {
  std::vector<std::string> files;  // paths below the folder, with backslashes; only names in the code page
  bool isMissing = false;          // there is no such folder
  bool hasUnread = false;          // a folder could not be listed
  bool hasLinksOut = false;        // a link to a folder outside `within` was not followed
  bool isCut = false;              // there are more entries than `most`
};

// `folder` and `within` are Windows paths. Reads at most `most` files and folders.
FileListing ListFiles(std::string_view folder, std::string_view within, std::size_t most);

// The entries of one folder, only names in the code page; and a path with all links resolved.
struct FolderEntry {
  std::filesystem::path path;
  std::string name;
  bool isFolder;  // also for a link to one
  bool isLink;
};
std::error_code ListFolder(const std::filesystem::path& folder, std::vector<FolderEntry>& entries);
std::optional<std::filesystem::path> WithoutLinks(const std::filesystem::path& path);

}  // namespace platform
