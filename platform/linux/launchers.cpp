#include "platform/linux/launchers.h"

#include <glob.h>
#include <yaml.h>

#include <cstddef>
#include <iomanip>
#include <set>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/files.h"
#include "platform/linux/drives.h"

namespace fs = std::filesystem;

namespace platform {
namespace {

constexpr const char* kSteam =
    "{{.local/share,.var/app/com.valvesoftware.Steam/{.local/share,data},snap/steam/common/.local/share}/Steam,"
    ".steam/{debian-installation,root,steam}}";

// The launchers' files that name prefixes, or folders of prefixes.
constexpr const char* kHeroic =
    "{.config,.var/app/com.heroicgameslauncher.hgl/config}/heroic/{GamesConfig/*.json,config.json}";
constexpr const char* kLutris = "{.config,.local/share,.var/app/net.lutris.Lutris/{config,data}}/lutris/games/*.yml";
constexpr const char* kBottles = "{.local/share,.var/app/com.usebottles.bottles/data}/bottles/data.yml";

// Their default folders for prefixes.
constexpr const char* kHeroicsOwn = "Games/Heroic/Prefixes/{*,default/*}";
constexpr const char* kBottlesOwn = "{.local/share,.var/app/com.usebottles.bottles/data}/bottles/bottles/*";

// Limits for the launchers' files, in total bytes and bracket nesting. Real ones have one or two thousand bytes per
// game and five levels; far beyond the limits, parsing could take minutes.
constexpr std::size_t kMostToParse = std::size_t{2} * 1024 * 1024;
constexpr int kDeepest = 20;

using Paths = std::vector<fs::path>;

// Ignores anything but absolute paths.
void AddPath(const std::string& text, Paths& paths) {
  const fs::path path = text.starts_with("~/") ? HomeFolder() / text.substr(2) : fs::path(text);
  if (path.is_absolute()) paths.push_back(path);
}

// VDF: quoted strings, which std::quoted unescapes.
void AddPathsOfSteam(std::string_view bytes, Paths& paths) {
  std::istringstream file{std::string(bytes)};
  for (std::string text; file >> std::quoted(text);) AddPath(text, paths);
}

// Reads JSON, too: it is a subset of YAML. Stops where the file is damaged. Uses only the scanner's tokens: the parser
// compares each directive with all others.
// NOLINTBEGIN(cppcoreguidelines-pro-type-reinterpret-cast, cppcoreguidelines-pro-type-union-access): a library in C
void AddPathsOfYaml(std::string_view bytes, Paths& paths) {
  yaml_parser_t parser;
  if (yaml_parser_initialize(&parser) == 0) return;
  yaml_parser_set_input_string(&parser, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  yaml_token_t token;
  int depth = 0;
  for (bool isEnd = false; !isEnd && yaml_parser_scan(&parser, &token) != 0; yaml_token_delete(&token)) {
    const yaml_token_type_t type = token.type;
    if (type == YAML_FLOW_SEQUENCE_START_TOKEN || type == YAML_FLOW_MAPPING_START_TOKEN) ++depth;
    if (type == YAML_FLOW_SEQUENCE_END_TOKEN || type == YAML_FLOW_MAPPING_END_TOKEN) --depth;
    isEnd = type == YAML_STREAM_END_TOKEN || depth > kDeepest;
    if (type != YAML_SCALAR_TOKEN) continue;
    AddPath({reinterpret_cast<const char*>(token.data.scalar.value), token.data.scalar.length}, paths);
  }
  yaml_parser_delete(&parser);
}
// NOLINTEND(cppcoreguidelines-pro-type-reinterpret-cast, cppcoreguidelines-pro-type-union-access)

// All paths in a launcher's file, under any key: the disk shows which are prefixes or libraries, so renamed keys do not
// matter. None if the file exceeds the remaining room.
Paths PathsIn(const fs::path& file, void (*addPaths)(std::string_view, Paths&), std::size_t& room) {
  Paths paths;
  std::string bytes;
  if (ReadFile(file, bytes, room)) return paths;
  room -= bytes.size();
  addPaths(bytes, paths);
  return paths;
}

// Folders without duplicates.
class Folders {
 public:
  // Ignores a folder that does not contain `mark`.
  void Add(const fs::path& folder, const char* mark) {
    std::error_code failure;
    const fs::path followed = fs::canonical(folder, failure);
    const bool isThere = !failure && fs::exists(folder / mark, failure);
    if (isThere && known_.insert(followed).second) folders_.push_back(folder);
  }

  // Proton puts the prefix inside the folder that the launcher names.
  void AddPrefix(const fs::path& folder) {
    for (const fs::path& prefix : {folder, folder / "pfx"}) Add(prefix, "system.reg");
  }

  const Paths& All() const { return folders_; }

 private:
  std::set<fs::path> known_;  // with links resolved
  Paths folders_;
};

}  // namespace

std::vector<fs::path> Glob(const fs::path& folder, const char* pattern) {
  std::string whole;
  for (const char c : folder.native()) {
    if (std::string_view(R"(*?[]{},~\)").find(c) != std::string_view::npos) whole += '\\';
    whole += c;
  }
  glob_t found = {};
  Paths paths;
  if (glob(whole.append("/").append(pattern).c_str(), GLOB_BRACE, nullptr, &found) == 0) {
    const std::span names(found.gl_pathv, found.gl_pathc);
    paths.assign(names.begin(), names.end());
  }
  globfree(&found);
  return paths;
}

std::vector<fs::path> SteamLibraries() {
  std::size_t room = kMostToParse;
  Folders libraries;
  for (const fs::path& steam : Glob(HomeFolder(), kSteam)) {
    libraries.Add(steam, "steamapps");
    for (const fs::path& list : Glob(steam, "{steamapps,config}/libraryfolders.vdf")) {
      for (const fs::path& library : PathsIn(list, AddPathsOfSteam, room)) libraries.Add(library, "steamapps");
    }
  }
  return libraries.All();
}

std::vector<fs::path> Prefixes() {
  const fs::path home = HomeFolder();
  Folders prefixes;
  const auto addMatches = [&](const fs::path& folder, const char* pattern) {
    for (const fs::path& prefix : Glob(folder, pattern)) prefixes.AddPrefix(prefix);
  };
  std::size_t room = kMostToParse;
  const auto addNamedIn = [&](const char* pattern) {
    Folders named;
    for (const fs::path& file : Glob(home, pattern)) {
      for (const fs::path& path : PathsIn(file, AddPathsOfYaml, room)) named.Add(path, ".");
    }
    for (const fs::path& folder : named.All()) {
      prefixes.AddPrefix(folder);
      addMatches(folder, "{*,default/*}");
    }
  };

  if (const auto own = PrefixFolder()) prefixes.AddPrefix(*own);
  prefixes.AddPrefix(home / ".wine");
  for (const fs::path& library : SteamLibraries()) addMatches(library, "steamapps/compatdata/*");
  addNamedIn(kHeroic);
  addMatches(home, kHeroicsOwn);
  addNamedIn(kLutris);
  addNamedIn(kBottles);
  addMatches(home, kBottlesOwn);
  return prefixes.All();
}

}  // namespace platform
