#include "platform/file_dialog.h"

#include <sys/stat.h>

#include <algorithm>
#include <string>
#include <utility>

#include "platform/linux/drives.h"
#include "platform/linux/launchers.h"

namespace platform {

std::vector<HostPath> GamePlaces() {
  std::vector<HostPath> places;
  const auto add = [&](std::string folder) {
    struct stat status = {};
    if (stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) places.push_back({std::move(folder)});
  };
  add(HomeFolder());
  for (const HostPath& library : SteamLibraries()) add(library.text + "/steamapps/common");
  for (const HostPath& prefix : Prefixes()) add(prefix.text + "/drive_c");
  // Steam makes a prefix for each game, but has the games in its libraries: those come last.
  std::ranges::stable_sort(places, {},
                           [](const HostPath& place) { return place.text.find("/compatdata/") != std::string::npos; });
  return places;
}

std::vector<HostPath> StartFolders(std::string_view fileName) {
  std::vector<HostPath> folders;
  for (const HostPath& library : SteamLibraries()) {
    for (std::string& game : Matches(library.text, "steamapps/common/*")) {
      struct stat status = {};
      const HostPath file = AsSpelledOnDisk({game + "/" + std::string(fileName)});
      if (stat(file.text.c_str(), &status) == 0 && S_ISREG(status.st_mode)) folders.push_back({std::move(game)});
    }
  }
  for (const HostPath& prefix : Prefixes()) folders.push_back({prefix.text + "/drive_c"});
  folders.push_back({HomeFolder()});
  return folders;
}

// The settings are a file here, which Qt was told not to have.
void WithoutTraces(const std::function<void()>& act) { act(); }

}  // namespace platform
