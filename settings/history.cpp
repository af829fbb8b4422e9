#include "settings/history.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"

namespace fs = std::filesystem;

namespace {

constexpr std::array<std::string_view, 3> kEndings = {".ini", ".redo.ini", ".old.ini"};

}  // namespace

History::History(const fs::path& settingsFile)
    : settingsFile_(settingsFile), folder_(settingsFile.parent_path() / "Ulvane.history") {
  std::vector<platform::FolderEntry> entries;
  unlisted_ = platform::ListFolder(folder_, entries);
  if (unlisted_ == std::errc::no_such_file_or_directory) unlisted_.clear();
  if (!folder_.is_absolute()) unlisted_ = platform::FileRefusal::FolderUnknown;
  for (const auto& entry : entries) {
    if (const auto step = StepOf(entry.name); step && !unlisted_) steps_.push_back(*step);
  }
  std::ranges::sort(steps_);
}

std::string History::NameOf(const Step& step) {
  constexpr std::size_t kDigits = 6;
  const std::string digits = std::to_string(step.number);
  return std::string(kDigits - std::min(kDigits, digits.size()), '0')
      .append(digits)
      .append(kEndings[static_cast<std::size_t>(step.kind)]);
}

// Nothing for files that are not part of the history.
std::optional<History::Step> History::StepOf(const std::string& name) {
  Step step;
  const char* const digitsEnd = std::from_chars(name.data(), name.data() + name.size(), step.number).ptr;
  const std::string_view ending = std::string_view(name).substr(static_cast<std::size_t>(digitsEnd - name.data()));
  const auto* const found = std::ranges::find(kEndings, ending);
  if (found == kEndings.end()) return std::nullopt;
  step.kind = static_cast<Kind>(found - kEndings.begin());
  return NameOf(step) == name ? std::optional(step) : std::nullopt;
}

// Undone steps before a newer step cannot be redone.
std::optional<History::Step> History::Next(Way way) const {
  std::optional<Step> undo;
  std::optional<Step> redo;
  for (const Step& step : steps_) {
    if (step.kind == Kind::Undo) {
      undo = step;
      redo.reset();
    }
    if (step.kind == Kind::Redo && !redo) redo = step;
  }
  return way == Way::Undo ? undo : redo;
}

bool History::Can(Way way) const { return Next(way) && platform::TakesFiles(folder_); }

void History::Retire(Kind kind, std::uint64_t upTo) {
  for (Step& step : steps_) {
    const Step old = {step.number, Kind::Old};
    const bool isPast = step.kind == kind && step.number <= upTo;
    if (isPast && !platform::RenameFile(PathOf(step), PathOf(old))) step = old;
  }
}

// The next step in this direction that differs from the settings. Deletes the equal ones before it.
std::optional<FileFailure> History::FindNext(Way way, const std::string& current, std::optional<Step>& step,
                                             std::string& bytes) {
  while ((step = Next(way))) {
    const fs::path path = PathOf(*step);
    if (const auto unread = platform::ReadFile(path, bytes))
      return FileFailure{platform::DisplayName(path), "read", unread};
    if (bytes != current) break;
    platform::RemoveFile(path);
    std::erase(steps_, *step);
  }
  return std::nullopt;
}

// First drops an undo step equal to the settings: a program killed during a redo leaves one.
std::optional<FileFailure> History::Go(Way way, const std::string& current) {
  if (unlisted_) return FileFailure{platform::DisplayName(folder_), "read", unlisted_};
  std::optional<Step> step;
  std::string bytes;
  auto unread = FindNext(Way::Undo, current, step, bytes);
  Retire(Kind::Redo, step ? step->number : 0);
  if (way == Way::Redo) unread = FindNext(Way::Redo, current, step, bytes);
  if (unread || !step) return unread;
  const Step back = {step->number, way == Way::Undo ? Kind::Redo : Kind::Undo};
  if (const auto unwritten = platform::ReplaceFile(settingsFile_, bytes, {PathOf(back), true}))
    return FileFailure{platform::DisplayName(settingsFile_), "written", unwritten};
  platform::RemoveFile(PathOf(*step));
  return std::nullopt;
}

fs::path History::NewStep() const { return unlisted_ ? fs::path() : PathOf(New()); }

// Getting all sizes takes as long as a disk write. So sizes are summed only when a large file is added, and limited to
// half of the total; small files cannot exceed the other half.
void History::EndStep() {
  constexpr std::ptrdiff_t kMost = 50;
  constexpr std::uintmax_t kLarge = platform::kMostBytes / 2 / kMost;
  std::error_code untold;
  const auto newSize = fs::file_size(NewStep(), untold);
  if (untold) {
    *this = History(settingsFile_);
    for (const Kind kind : {Kind::Undo, Kind::Redo}) Retire(kind, std::numeric_limits<std::uint64_t>::max());
    return;
  }
  steps_.push_back(New());
  std::uintmax_t size = 0;
  for (auto step = steps_.rbegin(); step != steps_.rend(); ++step) {
    const auto bytes = newSize > kLarge ? fs::file_size(PathOf(*step), untold) : 0;
    if (!untold) size += bytes;
    if (step - steps_.rbegin() >= kMost || size > platform::kMostBytes / 2) platform::RemoveFile(PathOf(*step));
  }
}
