#include "mods/mod_list.h"

#include <algorithm>

#include "settings/schema.h"

using Module1::kNoMod;

namespace {

void PutFolders(Module1::Change& change, const std::string& section, const std::vector<std::string>& folders) {
  change.PutNumber(section, "DirCount", static_cast<std::int64_t>(folders.size()));
  std::int64_t j = 1;
  for (const std::string& folder : folders) change.PutSetting(section, schema::DirKey(j++), folder);
}

// Copies the settings of mod `from` to number `to`, one by one. Missing settings are written with their defaults.
// Folders of `to` beyond the new count remain, unread.
void CopyMod(Module1::Change& change, std::string_view game, std::int64_t from, std::int64_t to) {
  const std::string source = schema::ModSection(game, from);
  const std::string target = schema::ModSection(game, to);
  change.PutSetting(target, "Name", change.GetSetting(source, "Name", "Unknown"));
  change.PutSetting(target, "Active", change.GetSetting(source, "Active", "0"));
  PutFolders(change, target, change.Folders(source));
}

}  // namespace

ModLists ListMods(const Module1::Settings& settings, std::string_view game, const IsMissing& isMissing) {
  ModLists lists;
  const std::int64_t count = settings.ModCount(game);
  for (std::int64_t n = 1; n <= count; ++n) {
    const std::string section = schema::ModSection(game, n);
    ModList& list = settings.GetNumber(section, "Active", 0) != 0 ? lists.active : lists.available;
    list.names.push_back(settings.GetSetting(section, "Name", "Unknown"));
    list.lacksFolder.push_back(std::ranges::any_of(settings.Folders(section), isMissing));
  }
  return lists;
}

std::optional<std::vector<std::string>> DataFolders(const Module1::Settings& settings, std::string_view game,
                                                    std::string_view name) {
  const std::int64_t n = settings.FindMod(game, name);
  return n == kNoMod ? std::nullopt : std::optional(settings.Folders(schema::ModSection(game, n)));
}

bool IsActive(const Module1::Settings& settings, std::string_view game, std::string_view name) {
  const std::int64_t n = settings.FindMod(game, name);
  return n != kNoMod && settings.GetNumber(schema::ModSection(game, n), "Active", 0) != 0;
}

void SetActive(Module1::Change& change, std::string_view game, std::string_view name, bool isActive) {
  const std::int64_t n = change.FindMod(game, name);
  if (n != kNoMod) change.PutSetting(schema::ModSection(game, n), "Active", isActive ? "1" : "0");
}

void DeleteMod(Module1::Change& change, std::string_view game, std::string_view name) {
  const std::int64_t count = change.ModCount(game);
  const std::int64_t deleted = change.FindMod(game, name);
  if (deleted == kNoMod) return;
  for (std::int64_t n = deleted + 1; n <= count; ++n) CopyMod(change, game, n, n - 1);
  change.PutNumber(game, "ModCount", count - 1);
}

// Reads the names once: looking up each mod in the settings would dominate the run time.
bool MoveMod(Module1::Change& change, std::string_view game, std::string_view name,
             const std::vector<std::string>& passed) {
  std::vector<std::string> names(static_cast<std::size_t>(change.ModCount(game)));
  std::int64_t n = 1;
  for (std::string& one : names) one = change.GetSetting(schema::ModSection(game, n++), "Name", "Unknown");
  const auto find = [&names](std::string_view wanted) { return std::ranges::find(names, wanted); };
  const auto isGone = [&](std::string_view wanted) { return find(wanted) == names.end(); };
  if (isGone(name) || std::ranges::any_of(passed, isGone)) return false;
  for (const std::string& neighbour : passed) {
    const auto moved = find(name);
    const auto other = find(neighbour);
    const std::int64_t a = moved - names.begin() + 1;
    const std::int64_t b = other - names.begin() + 1;
    CopyMod(change, game, a, schema::kScratchMod);
    CopyMod(change, game, b, a);
    CopyMod(change, game, schema::kScratchMod, b);
    std::iter_swap(moved, other);
  }
  return true;
}

void RegisterMod(Module1::Change& change, std::string_view game, std::string_view name,
                 const std::vector<std::string>& folders) {
  const std::int64_t n = change.ModCount(game) + 1;
  const std::string section = schema::ModSection(game, n);
  change.PutNumber(game, "ModCount", n);
  change.PutSetting(section, "Name", name);
  change.PutSetting(section, "Active", "0");
  PutFolders(change, section, folders);
}

bool EditMod(Module1::Change& change, std::string_view game, std::string_view name, std::string_view newName,
             const std::vector<std::string>& folders) {
  const std::int64_t n = change.FindMod(game, name);
  if (n == kNoMod) return false;
  const std::string section = schema::ModSection(game, n);
  change.PutSetting(section, "Name", newName);
  PutFolders(change, section, folders);
  return true;
}

bool IsNameTaken(const Module1::Settings& settings, std::string_view game, std::string_view name,
                 std::string_view edited) {
  return name != edited && settings.FindMod(game, name) != kNoMod;
}

std::string DataFolderBase(std::string installFolder) {
  if (installFolder.empty()) return "";
  if (!installFolder.ends_with('\\')) installFolder += '\\';
  return installFolder + "W40k";
}
