#include "settings/history.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <compare>
#include <vector>

#include "platform/files.h"
#include "platform/paths.h"

namespace fs = std::filesystem;

namespace history {
namespace {

enum class Kind : std::uint8_t { Undo, Redo, Old };
constexpr std::array kEndings = {".ini", ".redo.ini", ".old.ini"};

struct Step {
  std::uint64_t number;
  Kind kind;
  std::strong_ordering operator<=>(const Step&) const = default;
};
using Steps = std::vector<Step>;  // by their numbers

fs::path Folder() { return platform::BesideExecutable("Ulvane.history"); }

std::string NameOf(const Step& step) {
  constexpr std::size_t kDigits = 6;
  const std::string digits = std::to_string(step.number);
  return std::string(kDigits - std::min(kDigits, digits.size()), '0') + digits +
         kEndings[static_cast<std::size_t>(step.kind)];
}

fs::path PathOf(const Step& step) { return Folder() / NameOf(step); }

// Nothing for a file that is not the history's.
std::optional<Step> StepOf(const std::string& name) {
  Step step = {};
  std::from_chars(name.data(), name.data() + name.size(), step.number);
  for (const Kind kind : {Kind::Undo, Kind::Redo, Kind::Old}) {
    step.kind = kind;
    if (NameOf(step) == name) return step;
  }
  return std::nullopt;
}

// None where the folder is missing or cannot be listed.
Steps AllSteps() {
  Steps steps;
  std::error_code failure;
  for (fs::directory_iterator entry(Folder(), failure), end; entry != end; entry.increment(failure)) {
    if (const auto step = StepOf(platform::DisplayName(entry->path().filename()))) steps.push_back(*step);
  }
  if (failure) return {};
  std::ranges::sort(steps);
  return steps;
}

// What was taken back before a newer step was made is not done again.
std::optional<Step> Next(Way way, const Steps& steps) {
  std::optional<Step> undo;
  std::optional<Step> redo;
  for (const Step& step : steps) {
    if (step.kind == Kind::Undo) {
      undo = step;
      redo.reset();
    }
    if (step.kind == Kind::Redo && !redo) redo = step;
  }
  return way == Way::Undo ? undo : redo;
}

template <typename IsPast>
void Retire(Steps& steps, IsPast isPast) {
  for (Step& step : steps) {
    if (step.kind == Kind::Old || !isPast(step)) continue;
    const Step old = {step.number, Kind::Old};
    if (!platform::RenameFile(PathOf(step), PathOf(old))) step = old;
  }
}

// The next step that way whose bytes are others than the settings'. Removes those before it. Nothing when there is none
// or, with a failure, when one cannot be read.
std::optional<Step> FindNext(Way way, Steps& steps, const std::string& current, std::string& bytes,
                             std::optional<FileFailure>& failure) {
  while (const auto step = Next(way, steps)) {
    const fs::path path = PathOf(*step);
    if (const auto unread = platform::ReadFile(path, bytes)) {
      failure = FileFailure{platform::DisplayName(path), "read", unread};
      return std::nullopt;
    }
    if (bytes != current) return step;
    platform::RemoveFile(path);
    std::erase(steps, *step);
  }
  return std::nullopt;
}

void RemoveOldest(const Steps& steps) {
  constexpr std::size_t kMost = 50;
  std::size_t count = 0;
  std::uintmax_t size = 0;
  for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
    const fs::path path = PathOf(*step);
    std::error_code untold;
    const std::uintmax_t bytes = fs::file_size(path, untold);
    size += untold ? 0 : bytes;
    if (++count > kMost || size > platform::kMostBytes) platform::RemoveFile(path);
  }
}

}  // namespace

bool Can(Way way) { return Next(way, AllSteps()) && platform::TakesFiles(Folder()); }

fs::path NewStep() {
  const Steps steps = AllSteps();
  return PathOf({steps.empty() ? 1 : steps.back().number + 1, Kind::Undo});
}

void EndStep(const fs::path& keptAs) {
  Steps steps = AllSteps();
  const bool isKept = !steps.empty() && PathOf(steps.back()) == keptAs;
  if (!isKept) Retire(steps, [](const Step&) { return true; });
  RemoveOldest(steps);
}

// A program that was killed while it did a step again has left what it kept for the way back.
std::optional<FileFailure> Go(Way way, const fs::path& settingsFile, const std::string& current) {
  Steps steps = AllSteps();
  std::string bytes;
  std::optional<FileFailure> failure;
  auto step = FindNext(Way::Undo, steps, current, bytes, failure);
  const auto undone = step ? step->number : 0;
  if (way == Way::Redo) {
    failure.reset();
    step = FindNext(Way::Redo, steps, current, bytes, failure);
  }
  if (!step) return failure;
  Retire(steps, [undone](const Step& one) { return one.kind == Kind::Redo && one.number <= undone; });
  const Step back = {step->number, way == Way::Undo ? Kind::Redo : Kind::Undo};
  if (const auto unwritten = platform::ReplaceFile(settingsFile, bytes, {PathOf(back), true}))
    return FileFailure{platform::DisplayName(settingsFile), "written", unwritten};
  platform::RemoveFile(PathOf(*step));
  return std::nullopt;
}

}  // namespace history
