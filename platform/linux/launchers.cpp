#include "platform/linux/launchers.h"

#include <glob.h>
#include <sys/stat.h>
#include <yaml.h>

#include <iomanip>
#include <set>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "platform/files.h"
#include "platform/linux/drives.h"

namespace platform {
namespace {

constexpr const char* kSteam =
    "{{.local/share,.var/app/com.valvesoftware.Steam/{.local/share,data},snap/steam/common/.local/share}/Steam,"
    ".steam/{debian-installation,root,steam}}";

// The launchers' own files, which name prefixes, or folders with prefixes inside.
constexpr const char* kHeroic =
    "{.config,.var/app/com.heroicgameslauncher.hgl/config}/heroic/{GamesConfig/*.json,config.json}";
constexpr const char* kLutris = "{.config,.local/share,.var/app/net.lutris.Lutris/{config,data}}/lutris/games/*.yml";
constexpr const char* kBottles = "{.local/share,.var/app/com.usebottles.bottles/data}/bottles/data.yml";

// Where they make prefixes if nothing else is set.
constexpr const char* kHeroicsOwn = "Games/Heroic/Prefixes/{*,default/*}";
constexpr const char* kBottlesOwn = "{.local/share,.var/app/com.usebottles.bottles/data}/bottles/bottles/*";

using Texts = std::vector<std::string>;

// The texts in quotes, and whatever stands between them. Steam's files are made of these alone, and escape as this
// does.
Texts TextsOfSteam(std::string_view bytes) {
  Texts texts;
  std::istringstream file{std::string(bytes)};
  for (std::string text; file >> std::quoted(text);) texts.push_back(text);
  return texts;
}

// Up to where the file is damaged. Also of JSON, all of which is YAML.
// NOLINTBEGIN(cppcoreguidelines-pro-type-reinterpret-cast, cppcoreguidelines-pro-type-union-access): a library in C
Texts TextsOfYaml(std::string_view bytes) {
  Texts texts;
  yaml_parser_t parser;
  if (yaml_parser_initialize(&parser) == 0) return texts;
  yaml_parser_set_input_string(&parser, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  yaml_event_t event;
  for (bool isEnd = false; !isEnd && yaml_parser_parse(&parser, &event) != 0; yaml_event_delete(&event)) {
    isEnd = event.type == YAML_STREAM_END_EVENT;
    if (event.type != YAML_SCALAR_EVENT) continue;
    texts.emplace_back(reinterpret_cast<const char*>(event.data.scalar.value), event.data.scalar.length);
  }
  yaml_parser_delete(&parser);
  return texts;
}
// NOLINTEND(cppcoreguidelines-pro-type-reinterpret-cast, cppcoreguidelines-pro-type-union-access)

// All paths that a launcher's file has, under whatever key: what is there tells which of them are prefixes or
// libraries, so that no change of the keys can hide one.
Texts PathsIn(const std::string& file, Texts (*textsOf)(std::string_view)) {
  std::string bytes;
  if (ReadFile({file}, bytes)) return {};
  Texts paths;
  for (std::string& text : textsOf(bytes)) {
    if (text.starts_with("~/")) text.replace(0, 1, HomeFolder());
    if (text.starts_with('/')) paths.push_back(std::move(text));
  }
  return paths;
}

// Folders, each once.
class Folders {
 public:
  // Where the folder has no such file or folder inside, it is passed over.
  void Add(const std::string& folder, const char* mark) {
    struct stat status = {};
    if (stat((folder + mark).c_str(), &status) != 0 || stat(folder.c_str(), &status) != 0) return;
    if (known_.emplace(status.st_dev, status.st_ino).second) folders_.push_back({folder});
  }

  // With Proton, the prefix is inside the folder that the launcher knows.
  void AddPrefix(const std::string& folder) {
    for (const char* const inside : {"", "/pfx"}) Add(folder + inside, "/system.reg");
  }

  std::vector<HostPath> Take() { return std::move(folders_); }

 private:
  std::set<std::pair<dev_t, ino_t>> known_;
  std::vector<HostPath> folders_;
};

}  // namespace

std::vector<std::string> Matches(std::string_view folder, const char* pattern) {
  std::string whole;
  for (const char c : folder) {
    if (std::string_view(R"(*?[]{},~\)").find(c) != std::string_view::npos) whole += '\\';
    whole += c;
  }
  glob_t found = {};
  std::vector<std::string> paths;
  if (glob(whole.append("/").append(pattern).c_str(), GLOB_BRACE, nullptr, &found) == 0) {
    const std::span names(found.gl_pathv, found.gl_pathc);
    paths.assign(names.begin(), names.end());
  }
  globfree(&found);
  return paths;
}

std::vector<HostPath> SteamLibraries() {
  Folders libraries;
  for (const std::string& steam : Matches(HomeFolder(), kSteam)) {
    libraries.Add(steam, "/steamapps");
    for (const std::string& list : Matches(steam, "{steamapps,config}/libraryfolders.vdf")) {
      for (const std::string& library : PathsIn(list, TextsOfSteam)) libraries.Add(library, "/steamapps");
    }
  }
  return libraries.Take();
}

std::vector<HostPath> Prefixes() {
  const std::string home = HomeFolder();
  Folders prefixes;
  const auto addMatches = [&](const std::string& folder, const char* pattern) {
    for (const std::string& prefix : Matches(folder, pattern)) prefixes.AddPrefix(prefix);
  };
  const auto addNamedIn = [&](const char* files) {
    for (const std::string& file : Matches(home, files)) {
      for (const std::string& folder : PathsIn(file, TextsOfYaml)) {
        prefixes.AddPrefix(folder);
        addMatches(folder, "{*,default/*}");
      }
    }
  };

  if (const auto own = PrefixFolder()) prefixes.AddPrefix(own->text);
  prefixes.AddPrefix(home + "/.wine");
  for (const HostPath& library : SteamLibraries()) addMatches(library.text, "steamapps/compatdata/*");
  addNamedIn(kHeroic);
  addMatches(home, kHeroicsOwn);
  addNamedIn(kLutris);
  addNamedIn(kBottles);
  addMatches(home, kBottlesOwn);
  return prefixes.Take();
}

}  // namespace platform
