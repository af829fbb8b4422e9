#include "platform/folders.h"

#include <algorithm>

#include "platform/code_page.h"
#include "platform/paths.h"

namespace fs = std::filesystem;

namespace platform {
namespace {

// Nothing if the folder is missing or cannot be listed.
std::optional<std::vector<FolderEntry>> Subfolders(std::string_view folder) {
  const auto path = ToHostPath(folder);
  std::vector<FolderEntry> entries;
  if (!path || ListFolder(AsSpelledOnDisk(*path), entries)) return std::nullopt;
  std::erase_if(entries, [](const FolderEntry& entry) { return !entry.isFolder; });
  return entries;
}

class Walk {
 public:
  Walk(fs::path within, std::size_t most) : within_(std::move(within)), left_(most) {}

  // `folder` has no links except perhaps its last component. `prefix` precedes the names of its files.
  void Enter(const fs::path& folder, const std::string& prefix, bool isLink) {
    const auto path = isLink ? WithoutLinks(folder) : folder;
    const bool isOut = path && std::ranges::mismatch(within_, *path).in1 != within_.end();
    listing.hasLinksOut = listing.hasLinksOut || isOut;
    if (isOut || (path && std::ranges::find(above_, *path) != above_.end())) return;
    std::vector<FolderEntry> entries;
    if (!path || ListFolder(*path, entries)) {
      listing.hasUnread = true;
      return;
    }
    above_.push_back(*path);
    for (const FolderEntry& entry : entries) {
      listing.isCut = listing.isCut || left_ == 0;
      if (listing.isCut) break;
      --left_;
      if (entry.isFolder) {
        Enter(*path / fs::path(ToUtf16(entry.name)), prefix + entry.name + "\\", entry.isLink);
      } else {
        listing.files.push_back(prefix + entry.name);
      }
    }
    above_.pop_back();
  }

  FileListing listing;

 private:
  fs::path within_;
  std::size_t left_;
  std::vector<fs::path> above_;  // the folders being listed; links back to them are not followed
};

}  // namespace

std::optional<std::vector<std::string>> ListSubfolders(std::string_view folder) {
  auto entries = Subfolders(folder);
  if (!entries) return std::nullopt;
  std::vector<std::string> names;
  for (FolderEntry& entry : *entries) {
    if (!entry.isHidden) names.push_back(std::move(entry.name));
  }
  std::ranges::sort(names, ComesBefore);
  return names;
}

bool MayBeFolder(const fs::path& path) {
  std::error_code failure;
  const auto status = fs::status(path, failure);
  return !fs::status_known(status) || fs::is_directory(status);
}

bool IsMissingFolder(std::string_view path) {
  const auto hostPath = ToHostPath(path);
  return !hostPath || !MayBeFolder(AsSpelledOnDisk(*hostPath));
}

FoldersBelow::FoldersBelow(const std::string& folder) : path_(folder + "\\") {
  const auto entries = Subfolders(folder);
  isMissing_ = !entries && IsMissingFolder(folder);
  if (!entries) return;
  names_.emplace();
  for (const FolderEntry& entry : *entries) names_->push_back(Folded(entry.name));
  std::ranges::sort(*names_);
}

// Nested paths are looked up one by one.
bool FoldersBelow::IsMissing(std::string_view folder) const {
  if (isMissing_ || !names_) return isMissing_;
  if (folder.empty() || folder.find_first_of("\\/") != std::string_view::npos)
    return IsMissingFolder(path_ + std::string(folder));
  return !std::ranges::binary_search(*names_, Folded(folder));
}

FileListing ListFiles(std::string_view folder, std::string_view within, std::size_t most) {
  if (IsMissingFolder(folder)) return {.files = {}, .isMissing = true};
  const auto path = ToHostPath(folder);
  const auto boundary = ToHostPath(within);
  const auto real = boundary ? WithoutLinks(AsSpelledOnDisk(*boundary)) : std::nullopt;
  if (!path || !real) return {.files = {}, .hasUnread = true};
  Walk walk(*real, most);
  walk.Enter(AsSpelledOnDisk(*path), "", true);
  return walk.listing;
}

}  // namespace platform
