#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <ostream>
#include <string>
#include <system_error>

#include "platform/files.h"
#include "support/own_folder.h"
#include "tests/faults/system_calls.h"

// The replacing and the reading of a file, with each of their calls to the system going wrong in turn, in every way
// that it can.
namespace fs = std::filesystem;
using faults::Effect;
using faults::Fault;
using platform::BesideExecutable;
using platform::HostPath;
using support::ExecutableFolder;
using Content = std::optional<std::string>;  // of a file; nothing when it is missing

namespace {

const std::string kOld(3000, 'o');
const std::string kNew(2000, 'n');
const std::string kLarge(300'000, 'l');  // more than is read at first

std::error_code Replace(const HostPath& path) { return platform::ReplaceFile(path, kNew); }

std::error_code Read(const HostPath& path) {
  platform::FileBytes bytes;
  const auto failure = bytes.Read(path);
  EXPECT_TRUE(failure ? bytes.View().empty() : bytes.View() == kOld || bytes.View() == kLarge);
  return failure;
}

HostPath InItsSpelling() { return BesideExecutable("File.txt"); }
HostPath InAnotherSpelling() { return BesideExecutable("fILE.TXT"); }
HostPath ByALink() { return {(support::Root() / "link").native()}; }

struct Row {
  const char* name;
  std::error_code (*act)(const HostPath&);
  HostPath (*path)();
  Content before = kOld;
  bool takesNewFiles = true;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

class Faults : public testing::TestWithParam<Row> {
 protected:
  void SetUp() override {
    support::Reset();
    support::WriteFile(file_, kOld);
    if (GetParam().path == ByALink) faults::MakeLink(ByALink().text, file_);
  }

  std::error_code Act(const Fault& fault) {
    faults::Start(fault, {GetParam().takesNewFiles, ExecutableFolder(), away_});
    const std::error_code failure = GetParam().act(GetParam().path());
    calls_ = faults::Stop();
    EXPECT_FALSE(calls_.hasRenamedUnflushed);
    if (fs::exists(away_)) fs::rename(away_, ExecutableFolder());
    return failure;
  }

  // Goes wrong at one call. What must be left: the old bytes after a failure, the new ones otherwise, either where the
  // process was killed, and at most one file, which the next write takes over, where it could not be removed.
  void Try(const std::string& what, const Fault& fault, bool passes = false) {
    SCOPED_TRACE(what + (fault.isHalf ? " halfway" : "") + " at call " + std::to_string(fault.at));
    PutBack();
    if (fault.effect == Effect::Kill) {
      EXPECT_TRUE(faults::IsKilled([&] { Act(fault); }));
      EXPECT_TRUE(Holds(GetParam().before) || Holds(after_));
    } else {
      const std::error_code failure = Act(fault);
      EXPECT_TRUE(Holds(failure ? GetParam().before : after_)) << failure.message();
      EXPECT_FALSE(passes && failure) << failure.message();
      EXPECT_TRUE(failure != std::errc::no_such_file_or_directory || fault.effect == Effect::MoveFolder)
          << "what could not be told is taken for missing";
    }
    const bool canCleanUp = fault.effect == Effect::None || fault.effect == Effect::Fail;
    EXPECT_LE(CountLeftOvers(), canCleanUp ? 0 : 1);
    EXPECT_FALSE(Replace({file_.native()}));
    EXPECT_EQ(CountLeftOvers(), 0) << "is not taken over by the next write";
    ++tries_;
  }

  // In place, the old bytes need what the new ones had, and an end in the middle cannot be made good.
  void TryAt(int at, std::string_view call, bool isHalf) {
    const bool isAsAWhole = GetParam().takesNewFiles;
    for (const auto& [name, number, passes] : faults::Reasons(call)) {
      Try(name, {Effect::Fail, at, number, isHalf}, passes);
      if (isAsAWhole && !passes)
        Try(std::string(name) + " and ever after", {Effect::FailFromThenOn, at, number, isHalf});
    }
    Try("folder gone", {Effect::MoveFolder, at, 0, isHalf});
    if (isAsAWhole && faults::kCanKill) Try("killed", {Effect::Kill, at, 0, isHalf});
  }

  void PutBack() {
    fs::remove(file_);
    if (!GetParam().before) return;
    support::WriteFile(file_, *GetParam().before);
    fs::permissions(file_, fs::perms(0640));
    permissions_ = fs::status(file_).permissions();
  }

  bool Holds(const Content& content) const {
    if (!content) return !fs::exists(file_);
    const bool areKept = !GetParam().before || fs::status(file_).permissions() == permissions_;
    return support::ReadFile(file_) == *content && areKept;
  }

  static std::ptrdiff_t CountLeftOvers() {
    return std::ranges::count_if(fs::directory_iterator(ExecutableFolder()), [](const fs::directory_entry& entry) {
      return entry.path().filename().native().starts_with(fs::path(".gantrel").native());
    });
  }

  const Content after_ = GetParam().act == Read ? GetParam().before : kNew;
  const fs::path file_ = ExecutableFolder() / "File.txt";
  const fs::path away_ = support::Root() / "away";
  fs::perms permissions_ = fs::perms::none;
  faults::Calls calls_;
  int tries_ = 0;
};

TEST_P(Faults, LoseNothing) {
  PutBack();
  ASSERT_FALSE(Act({}));
  ASSERT_TRUE(Holds(after_));
  const auto names = calls_.names;
  for (int at = 0; at < std::ssize(names) && !HasFailure(); ++at) {
    const std::string_view call = names[static_cast<std::size_t>(at)];
    TryAt(at, call, false);
    if (!faults::CanBeHalf(call)) continue;
    Try("less than asked for", {Effect::None, at, 0, true}, true);
    TryAt(at, call, true);
  }
  if (HasFailure()) return;
  std::ofstream(GANTREL_FAULT_COUNTS, std::ios::app)
      << GetParam().name << ": " << names.size() << " calls of the system, went wrong in " << tries_ << " ways\n";
}

const Row kRows[] = {
    {"Replacing", Replace, InItsSpelling},
    {"ReplacingByAnotherSpelling", Replace, InAnotherSpelling},
    {"ReplacingByALink", Replace, ByALink},
    {"ReplacingInPlace", Replace, InItsSpelling, kOld, false},
    {"Making", Replace, InItsSpelling, std::nullopt},
    {"Reading", Read, InItsSpelling},
    {"ReadingALargeFile", Read, InItsSpelling, kLarge},
    {"ReadingByAnotherSpelling", Read, InAnotherSpelling},
    {"ReadingByALink", Read, ByALink},
};

INSTANTIATE_TEST_SUITE_P(Of, Faults, testing::ValuesIn(kRows),
                         [](const testing::TestParamInfo<Row>& row) { return std::string(row.param.name); });

}  // namespace
