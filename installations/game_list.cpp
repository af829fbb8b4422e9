#include "installations/game_list.h"

#include <algorithm>

#include "settings/EZINILib.h"
#include "settings/schema.h"

namespace {

// The number of listed games; 0 before the first was registered.
std::int64_t ListedGames(const Module1::Settings& settings) { return std::max<std::int64_t>(settings.GameCount(), 0); }

void PutGame(Module1::Change& change, std::int64_t n, std::string_view name, std::string_view folder,
             std::string_view isAutomatic) {
  change.PutSetting("Games", schema::GameKey(n), name);
  change.PutSetting(name, "Path", folder);
  change.PutSetting(name, "AutoPath", isAutomatic);
}

}  // namespace

std::vector<std::string> GameEntries(const Module1::Settings& settings) {
  std::vector<std::string> entries;
  const std::int64_t count = settings.GameCount();
  for (std::int64_t n = 1; n <= count; ++n) {
    const std::string name = settings.GameName(n);
    entries.push_back(name + " (" + settings.GamePath(name) + ")");
  }
  return entries;
}

void TryGame(Module1::Change& change, std::string_view name, std::string folder) {
  if (folder.empty()) return;
  if (!folder.ends_with('\\')) folder += '\\';
  if (folder.size() > EZINILib::kMostCharacters) return;
  const std::int64_t n = ListedGames(change) + 1;
  PutGame(change, n, name, folder, "1");
  change.PutNumber("Games", "Count", n);
}

void AddGame(Module1::Change& change, std::string_view name, std::string_view folder) {
  const std::int64_t n = ListedGames(change) + 1;
  change.PutNumber("Games", "Count", n);
  PutGame(change, n, name, folder, "0");
}

void RemoveGame(Module1::Change& change, std::int64_t n, std::string_view name) {
  const std::int64_t count = ListedGames(change);
  const auto removed = n <= count && change.GameName(n) == name ? n : change.FindGame(name);
  if (!removed) return;
  for (std::int64_t i = *removed + 1; i <= count; ++i)
    change.PutSetting("Games", schema::GameKey(i - 1), change.GameName(i));
  change.PutNumber("Games", "Count", count - 1);
}
