#include "mods/mod_list.h"

#include "settings/schema.h"

using Module1::kNoMod;

namespace {

// Copies what is stored of mod `from` to the number `to`, one setting after the other. What is missing is written with
// its default. Folders of `to` beyond the new count stay, unread.
void CopyMod(Module1::Change& change, std::string_view game, std::int64_t from, std::int64_t to) {
  const std::string source = schema::ModSection(game, from);
  const std::string target = schema::ModSection(game, to);
  change.PutSetting(target, "Name", change.GetSetting(source, "Name", "Unknown"));
  change.PutSetting(target, "Active", change.GetSetting(source, "Active", "0"));
  const std::int64_t dirCount = change.DirCount(source);
  change.PutNumber(target, "DirCount", dirCount);
  for (std::int64_t k = 1; k <= dirCount; ++k)
    change.PutSetting(target, schema::DirKey(k), change.GetSetting(source, schema::DirKey(k), ""));
}

}  // namespace

ModLists ListMods(const Module1::Settings& settings, std::string_view game) {
  ModLists lists;
  const std::int64_t count = settings.ModCount(game);
  for (std::int64_t n = 1; n <= count; ++n) {
    const std::string section = schema::ModSection(game, n);
    const bool isActive = settings.GetNumber(section, "Active", 0) != 0;
    (isActive ? lists.active : lists.available).push_back(settings.GetSetting(section, "Name", "Unknown"));
  }
  return lists;
}

std::optional<std::vector<std::string>> DataFolders(const Module1::Settings& settings, std::string_view game,
                                                    std::string_view name) {
  const std::int64_t n = settings.FindMod(game, name);
  if (n == kNoMod) return std::nullopt;
  const std::string section = schema::ModSection(game, n);
  const std::int64_t count = settings.DirCount(section);
  std::vector<std::string> folders;
  for (std::int64_t k = 1; k <= count; ++k) folders.push_back(settings.GetSetting(section, schema::DirKey(k), ""));
  return folders;
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

bool ExchangeMods(Module1::Change& change, std::string_view game, std::string_view moved, std::string_view neighbour) {
  const std::int64_t a = change.FindMod(game, moved);
  const std::int64_t b = change.FindMod(game, neighbour);
  if (a == kNoMod || b == kNoMod) return false;
  CopyMod(change, game, a, schema::kScratchMod);
  CopyMod(change, game, b, a);
  CopyMod(change, game, schema::kScratchMod, b);
  return true;
}

void RegisterMod(Module1::Change& change, std::string_view game, std::string_view name,
                 const std::vector<std::string>& folders) {
  const std::int64_t n = change.ModCount(game) + 1;
  const std::string section = schema::ModSection(game, n);
  change.PutNumber(game, "ModCount", n);
  change.PutSetting(section, "Name", name);
  change.PutSetting(section, "Active", "0");
  change.PutNumber(section, "DirCount", static_cast<std::int64_t>(folders.size()));
  std::int64_t j = 1;
  for (const std::string& folder : folders) change.PutSetting(section, schema::DirKey(j++), folder);
}

std::string DataFolderBase(std::string installFolder) {
  if (installFolder.empty()) return "";
  if (!installFolder.ends_with('\\')) installFolder += '\\';
  return installFolder + "W40k";
}
