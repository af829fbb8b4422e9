#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

#include "fuzz/targets.h"
#include "platform/code_page.h"
#include "platform/linux/drives.h"
#include "platform/linux/utf8.h"

namespace fs = std::filesystem;
using platform::HostPath;

namespace {

// A small prefix with three drives, one of which is a folder of another.
class Tree {
 public:
  Tree() {
    std::string name = (fs::temp_directory_path() / "gantrel fuzz XXXXXX").native();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make a folder");
    root_ = name;
    const fs::path games = Prefix() / "drive_c" / "Games";
    for (const char* const folder : {"D\u00F6W/W40k", "two", "TWO", "\u0160\u00FF", "\u017Bycie"}) {
      fs::create_directories(games / folder);
    }
    std::ofstream(games / "D\u00F6W" / "W40k.exe") << "x";
    fs::create_directories(Prefix() / "dosdevices");
    fs::create_directory_symlink("../drive_c", Prefix() / "dosdevices" / "c:");
    fs::create_directory_symlink(games / "D\u00F6W", Prefix() / "dosdevices" / "g:");
    fs::create_directory_symlink("/", Prefix() / "dosdevices" / "z:");
  }
  ~Tree() { fs::remove_all(root_); }
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;
  Tree(Tree&&) = delete;
  Tree& operator=(Tree&&) = delete;

  fs::path Prefix() const { return root_ / "prefix"; }

 private:
  fs::path root_;
};

bool Exists(const std::string& path) {
  struct stat status = {};
  return lstat(path.c_str(), &status) == 0;
}

std::string Place(std::string path) {
  const auto dropEnd = [](std::string& text) { text.resize(std::max<std::size_t>(text.find_last_not_of('/') + 1, 1)); };
  dropEnd(path);
  std::string place = fs::weakly_canonical(path).native();
  dropEnd(place);
  return place;
}

bool SamePlace(const std::string& one, const std::string& other) { return Place(one) == Place(other); }

// Going up and out of a drive means another place on each system, and where a name is longer than names can be, there
// is no place.
bool IsPlain(std::string_view path) {
  std::size_t longest = 0;
  for (std::size_t begin = 0, end = 0; begin < path.size(); begin = end + 1) {
    end = std::min(path.find('/', begin), path.size());
    longest = std::max(longest, end - begin);
  }
  return path.find("..") == std::string_view::npos && path.find('\0') == std::string_view::npos && path.size() < 1000 &&
         longest <= NAME_MAX;
}

std::string WithoutDoubledSlashes(const std::string& path) {
  std::string once;
  for (const char c : path) {
    if (c != '/' || !once.ends_with('/')) once += c;
  }
  return once;
}

void TryWindowsPath(const std::optional<HostPath>& prefix, std::string_view windows) {
  const auto host = platform::MapToHost(prefix, windows);
  if (!host) return;
  const std::string given = WithoutDoubledSlashes(host->text);
  const std::string spelled = platform::AsSpelledOnDisk(*host).text;
  fuzz::Require(platform::AsSpelledOnDisk({spelled}).text == spelled, "what is spelled as on the disk stays");
  if (!IsPlain(windows)) return;
  fuzz::Require(!Exists(given) || spelled == given, "what is there as spelled is taken as spelled");
  fuzz::Require(platform::SameName(platform::FromUtf8(spelled), platform::FromUtf8(given)),
                "the spelling differs in letter case alone");
  if (!Exists(spelled)) return;
  const auto back = platform::MapToWindows(prefix, {spelled});
  if (!back) return;  // the code page cannot spell it
  const auto again = platform::MapToHost(prefix, *back);
  fuzz::Require(again && SamePlace(again->text, spelled), "a file's Windows path leads to the file");
}

void TryHostPath(const std::optional<HostPath>& prefix, const std::string& host) {
  const auto windows = platform::MapToWindows(prefix, {host});
  if (!windows || !IsPlain(host)) return;
  fuzz::Require(windows->size() >= 3 && windows->substr(1, 2) == ":\\", "a Windows path begins with a drive");
  fuzz::Require(windows->find('/') == std::string::npos, "a Windows path has no slashes");
  const auto back = platform::MapToHost(prefix, *windows);
  fuzz::Require(back && SamePlace(back->text, host), "a path's Windows path leads to it");
}

}  // namespace

void fuzz::TryPaths(std::string_view input) {
  static const Tree tree;
  const std::optional<HostPath> prefix = HostPath{tree.Prefix().native()};
  const std::string_view windows = TakeField(input);
  TryWindowsPath(prefix, windows);
  TryWindowsPath(std::nullopt, windows);
  TryHostPath(prefix, "/" + std::string(input));
  TryHostPath(prefix, (tree.Prefix() / "drive_c" / "Games" / "").native() + std::string(input));
}
