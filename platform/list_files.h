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
  std::vector<std::string>
      files;                 // paths below the folder, with backslashes; names that the code page lacks are left out
  bool isMissing = false;    // there is no such folder
  bool hasUnread = false;    // a folder could not be listed
  bool hasLinksOut = false;  // a link to a folder outside `within` was not followed
  bool isCut = false;        // there are more entries than `most`
};

// `folder` and `within` are Windows paths. Reads at most `most` files and folders.
FileListing ListFiles(std::string_view folder, std::string_view within, std::size_t most);

// One folder, without those whose name the code page cannot spell; and a path with all its links followed.
struct FolderEntry {
  std::filesystem::path path;
  std::string name;
  bool isFolder;  // a link to one as well
  bool isLink;
};
std::error_code ListFolder(const std::filesystem::path& folder, std::vector<FolderEntry>& entries);
std::optional<std::filesystem::path> WithoutLinks(const std::filesystem::path& path);

}  // namespace platform
