#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace platform {

// The files in a folder and in all below it, hidden ones included.
struct FileListing {
  std::vector<std::string> files;  // their paths below it, with backslashes; without those the code page cannot spell
  bool isMissing = false;          // there is no such folder
  bool hasUnread = false;          // a folder could not be listed
  bool hasLinksOut = false;        // a link to a folder out of `within` was not followed
  bool isCut = false;              // there are more files and folders than were asked for
};

// `folder` and `within` are Windows paths. Looks at no more than `most` files and folders.
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
