#include <algorithm>
#include <climits>
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
    prefix_ = name;
    for (const char* const folder : {"D\u00F6W/W40k", "two", "TWO", "\u0160\u00FF", "\u017Bycie"}) {
      fs::create_directories(Games() / folder);
    }
    std::ofstream(Games() / "D\u00F6W" / "W40k.exe") << "x";
    fs::create_directories(prefix_ / "dosdevices");
    fs::create_directory_symlink("../drive_c", prefix_ / "dosdevices" / "c:");
    fs::create_directory_symlink(Games() / "D\u00F6W", prefix_ / "dosdevices" / "g:");
    fs::create_directory_symlink("/", prefix_ / "dosdevices" / "z:");
  }
  ~Tree() { fs::remove_all(prefix_); }
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;
  Tree(Tree&&) = delete;
  Tree& operator=(Tree&&) = delete;

  std::optional<HostPath> Prefix() const { return HostPath{prefix_.native()}; }
  fs::path Games() const { return prefix_ / "drive_c" / "Games"; }

 private:
  fs::path prefix_;
};

bool SamePlace(const fs::path& one, const fs::path& other) {
  return fs::weakly_canonical(one / "") == fs::weakly_canonical(other / "");
}

std::string InOneCase(const fs::path& path) {
  std::string text = platform::FromUtf8(path.lexically_normal().native());
  std::ranges::transform(text, text.begin(), platform::FoldCase);
  return text;
}

// Going up and out of a drive means another place on each system, and where a name is longer than names can be, there
// is no place.
bool IsPlain(const std::string& path) {
  const fs::path names(path);
  return path.find("..") == std::string::npos && path.find('\0') == std::string::npos && path.size() < 1000 &&
         std::all_of(names.begin(), names.end(), [](const fs::path& name) { return name.native().size() <= NAME_MAX; });
}

void Try(const std::optional<HostPath>& prefix, const HostPath& host) {
  const HostPath spelled = platform::AsSpelledOnDisk(host);
  const auto windows = platform::MapToWindows(prefix, spelled);
  if (!IsPlain(host.text)) return;
  std::error_code untold;
  const bool isThere = fs::exists(fs::symlink_status(host.text, untold));
  fuzz::Require(!isThere || fs::path(spelled.text) == fs::path(host.text), "what is there is taken as spelled");
  fuzz::Require(InOneCase(spelled.text) == InOneCase(host.text), "the spelling differs in letter case alone");
  fuzz::Require(platform::AsSpelledOnDisk(spelled).text == spelled.text, "what is spelled as on the disk stays");
  if (!windows) return;  // the code page cannot spell it
  fuzz::Require(windows->substr(1, 2) == ":\\" && windows->find('/') == std::string::npos, "it is a Windows path");
  const auto back = platform::MapToHost(prefix, *windows);
  fuzz::Require(back && SamePlace(back->text, spelled.text), "a path's Windows path leads to it");
}

}  // namespace

void fuzz::TryPaths(std::string_view input) {
  static const Tree tree;
  const std::string_view windows = TakeField(input);
  for (const auto& prefix : {tree.Prefix(), std::optional<HostPath>()}) {
    if (const auto host = platform::MapToHost(prefix, windows)) Try(prefix, *host);
  }
  for (const std::string& folder : {std::string("/"), (tree.Games() / "").native()}) {
    Try(tree.Prefix(), {folder + std::string(input)});
  }
}
