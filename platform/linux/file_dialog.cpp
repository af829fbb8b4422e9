#include "platform/file_dialog.h"

#include <algorithm>
#include <string>
#include <system_error>

#include "platform/linux/drives.h"
#include "platform/linux/launchers.h"
#include "platform/paths.h"

namespace fs = std::filesystem;

namespace platform {

std::vector<fs::path> GamePlaces() {
  std::vector<fs::path> places = {HomeFolder()};
  for (const fs::path& library : SteamLibraries()) places.push_back(library / "steamapps/common");
  for (const fs::path& prefix : Prefixes()) places.push_back(prefix / "drive_c");
  std::error_code untold;
  std::erase_if(places, [&](const fs::path& place) { return !fs::is_directory(place, untold); });
  // Steam's per-game prefixes come last: its games are in the libraries.
  std::stable_partition(places.begin(), places.end(),
                        [](const fs::path& place) { return place.native().find("/compatdata/") == std::string::npos; });
  return places;
}

std::vector<fs::path> StartFolders(std::string_view fileName) {
  std::vector<fs::path> folders;
  for (const fs::path& library : SteamLibraries()) {
    for (const fs::path& game : Glob(library, "steamapps/common/*")) {
      std::error_code untold;
      if (fs::is_regular_file(AsSpelledOnDisk(game / fileName), untold)) folders.push_back(game);
    }
  }
  for (const fs::path& prefix : Prefixes()) folders.push_back(prefix / "drive_c");
  folders.push_back(HomeFolder());
  return folders;
}

// Here Qt's settings are a file, already disabled at start-up.
void WithoutTraces(const std::function<void()>& act) { act(); }

}  // namespace platform
