#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

// What folders contain. Entries whose names the code page lacks are left out: the game could not find them. Windows
// paths, unless they are std::filesystem::path.
namespace platform {

struct FolderEntry {
  std::string name;
  bool isFolder;  // also for a link to one
  bool isLink;
  bool isHidden;
};

// The entries of one folder, unsorted.
std::error_code ListFolder(const std::filesystem::path& folder, std::vector<FolderEntry>& entries);

// The folders directly below a folder, hidden ones left out, sorted ignoring letter case. Nothing if the folder is
// missing or cannot be listed.
std::optional<std::vector<std::string>> ListSubfolders(std::string_view folder);

// Whether a path is, or is not, a folder. If the system cannot tell, it may be one, and is not missing.
bool MayBeFolder(const std::filesystem::path& path);
bool IsMissingFolder(std::string_view path);

// The same for folders below a folder; lists that folder only once.
class FoldersBelow {
 public:
  explicit FoldersBelow(const std::string& folder);
  bool IsMissing(std::string_view folder) const;

 private:
  std::string path_;
  std::optional<std::vector<std::string>> names_;  // the folders directly below, case-folded and sorted
  bool isMissing_ = false;
};

// The files in a folder and all its subfolders, hidden files included.
struct FileListing {
  std::vector<std::string> files;  // paths below the folder, with backslashes
  bool isMissing = false;          // there is no such folder
  bool hasUnread = false;          // a folder could not be listed
  bool hasLinksOut = false;        // a link to a folder outside `within` was not followed
  bool isCut = false;              // there are more entries than `most`
};

// Reads at most `most` files and folders.
FileListing ListFiles(std::string_view folder, std::string_view within, std::size_t most);

// The path with all links resolved; nothing if it does not exist.
std::optional<std::filesystem::path> WithoutLinks(const std::filesystem::path& path);

}  // namespace platform
