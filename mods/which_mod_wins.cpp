#include "mods/which_mod_wins.h"

#include <algorithm>
#include <unordered_map>

#include "mods/mod_list.h"
#include "platform/code_page.h"
#include "platform/folders.h"
#include "settings/schema.h"

namespace {

constexpr std::size_t kMostFiles = 200'000;

// "1 file", "2 files".
std::string Counted(std::size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace

std::vector<SharedFiles> FindSharedFiles(const std::vector<ModFiles>& mods, std::string_view mod) {
  struct File {
    const std::string* spelling;
    const ModFiles* countedFor = nullptr;
  };
  const auto first = std::ranges::find(mods, mod, &ModFiles::mod);
  if (first == mods.end()) return {};
  std::unordered_map<std::string, File> own;
  for (const std::string& file : first->files) own.emplace(platform::Folded(file), File{&file});

  std::vector<SharedFiles> all;
  for (auto last = mods.end(); last != mods.begin();) {
    const auto other = --last;
    SharedFiles shared = {other->mod, other > first, {}};
    for (const std::string& file : other->files) {
      const auto found = own.find(platform::Folded(file));
      if (other == first || found == own.end() || found->second.countedFor == &*other) continue;
      found->second.countedFor = &*other;
      shared.files.push_back(*found->second.spelling);
    }
    std::ranges::sort(shared.files, platform::ComesBefore);
    if (!shared.files.empty()) all.push_back(std::move(shared));
  }
  return all;
}

std::string SharedFilesText(std::string_view mod, const std::vector<SharedFiles>& shared, const LeftOut& leftOut) {
  constexpr std::size_t kMost = 4;  // keeps the message lower than the screen
  constexpr std::size_t kMostPaths = 5;
  const std::string name = "'" + std::string(mod) + "'";
  std::string text = name + " shares files with " + Counted(shared.size(), "other activated mod") + ".";
  if (shared.empty()) text = "No other activated mod shares files with " + name + ".";
  for (std::size_t i = 0; i < std::min(shared.size(), kMost); ++i) {
    const auto& [other, wins, files] = shared[i];
    text.append("\n\n'").append(wins ? other : mod).append("' wins");
    if (!wins) text.append(" over '").append(other).append("'");
    text += ", " + Counted(files.size(), "file") + (files.size() > kMostPaths ? ", including:" : ":");
    for (std::size_t k = 0; k < std::min(files.size(), kMostPaths); ++k) text += "\n" + files[k];
  }
  if (shared.size() > kMost) text += "\n\nAnd " + Counted(shared.size() - kMost, "more mod") + ".";

  std::string gaps;
  const auto& missing = leftOut.missing;
  for (std::size_t i = 0; i < std::min(missing.size(), kMost); ++i)
    gaps += (i == 0 ? "\nMissing folders: " : ", ") + missing[i];
  if (missing.size() > kMost) gaps += " and " + std::to_string(missing.size() - kMost) + " more";
  if (!missing.empty()) gaps += ".";
  if (leftOut.hasUnread) gaps += "\nSome folders could not be read.";
  if (leftOut.hasLinksOut) gaps += "\nLinks that leave the game's folder were not followed.";
  if (leftOut.isCut) gaps += "\nThere are more than 200,000 files; the rest were not checked.";
  return gaps.empty() ? text : text + "\n" + gaps;
}

std::optional<std::string> WhichModWins(const Module1::Settings& settings, std::string_view game,
                                        std::string_view mod) {
  const std::string install = settings.InstallFolder(game);
  const std::string base = DataFolderBase(install) + "\\";
  std::vector<ModFiles> mods;
  LeftOut leftOut;
  std::size_t left = kMostFiles;
  const std::int64_t count = settings.ModCount(game);
  for (std::int64_t n = 1; n <= count; ++n) {
    const std::string section = schema::ModSection(game, n);
    if (settings.GetNumber(section, "Active", 0) != 1) continue;  // as in the module file
    mods.push_back({settings.GetSetting(section, "Name", "Unknown"), {}});
    for (const std::string& folder : settings.Folders(section)) {
      if (folder.empty()) continue;
      auto listing = platform::ListFiles(base + folder, install, left);
      left -= std::min(left, listing.files.size());
      std::ranges::move(listing.files, std::back_inserter(mods.back().files));
      const bool isNamed = std::ranges::find(leftOut.missing, folder) != leftOut.missing.end();
      if (listing.isMissing && !isNamed) leftOut.missing.push_back(folder);
      leftOut.hasUnread = leftOut.hasUnread || listing.hasUnread;
      leftOut.hasLinksOut = leftOut.hasLinksOut || listing.hasLinksOut;
      leftOut.isCut = leftOut.isCut || listing.isCut;
    }
  }
  if (std::ranges::find(mods, mod, &ModFiles::mod) == mods.end()) return std::nullopt;
  return SharedFilesText(mod, FindSharedFiles(mods, mod), leftOut);
}
