#include <algorithm>
#include <climits>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/targets.h"
#include "platform/code_page.h"
#include "platform/linux/drives.h"
#include "platform/linux/utf8.h"

namespace fs = std::filesystem;
using platform::HostPath;

namespace {

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
  const auto windows = platform::MapToWindows(prefix, host);
  if (!IsPlain(host.text)) return;
  fuzz::Require(InOneCase(spelled.text) == InOneCase(host.text), "the spelling differs in letter case alone");
  fuzz::Require(platform::AsSpelledOnDisk(spelled).text == spelled.text, "what is spelled as on the disk stays");
  if (!windows) return;  // the code page cannot spell it
  fuzz::Require(windows->substr(1, 2) == ":\\" && windows->find('/') == std::string::npos, "it is a Windows path");
  const auto back = platform::MapToHost(prefix, *windows);
  fuzz::Require(
      back && fs::weakly_canonical(fs::path(back->text) / "") == fs::weakly_canonical(fs::path(host.text) / ""),
      "a path's Windows path leads to it");
}

}  // namespace

// With a prefix that is not there, so that drives C: and Z: are plain folders, and with none.
void fuzz::TryPaths(std::string_view input) {
  const std::string_view windows = TakeField(input);
  for (const auto& prefix : {std::optional(HostPath{"/no/prefix"}), std::optional<HostPath>()}) {
    if (const auto host = platform::MapToHost(prefix, windows)) Try(prefix, *host);
    for (const char* const folder : {"/", "/no/prefix/drive_c/Games/"}) Try(prefix, {folder + std::string(input)});
  }
}
