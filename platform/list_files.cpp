#include "platform/list_files.h"

#include <algorithm>

#include "platform/files.h"
#include "platform/paths.h"

namespace fs = std::filesystem;

namespace platform {
namespace {

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
        Enter(entry.path, prefix + entry.name + "\\", entry.isLink);
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
