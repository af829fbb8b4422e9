#include <optional>
#include <ostream>

#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "support/own_folder.h"
#include "tests/faults/system_calls.h"

// Replaces and reads files, with each system call failing in turn, for every possible reason.
using namespace support;
using faults::calls;
using faults::Fault;
using platform::BesideExecutable;
using platform::FileRefusal;
using Content = std::optional<std::string>;  // of a file; nothing if missing

namespace {

const std::string kOld(3000, 'o');
const std::string kNew(2000, 'n');
const std::string kLarge(300'000, 'l');  // more than one read

// The injected error, or the tool's own: unknown program folder, or new file permanently busy.
bool IsTrueReason(const std::error_code& failure, const Fault& fault) {
  return failure == std::error_code(fault.reason, std::system_category()).default_error_condition() ||
         failure == FileRefusal::FolderUnknown || (failure == FileRefusal::Busy && fault.isForGood);
}

std::error_code Replace(const fs::path& path) { return platform::ReplaceFile(path, kNew); }

// Also checks the kept old file: complete or absent.
fs::path Kept() { return BesideExecutable("History/Kept.txt"); }
Content ContentOf(const fs::path& file) { return fs::exists(file) ? Content(support::ReadFile(file)) : std::nullopt; }
std::error_code ReplaceAndTryToKeep(const fs::path& path) { return platform::ReplaceFile(path, kNew, {Kept()}); }
std::error_code ReplaceAndKeep(const fs::path& path) { return platform::ReplaceFile(path, kNew, {Kept(), true}); }

std::error_code Read(const fs::path& path) {
  std::string bytes;
  const auto failure = platform::ReadFile(path, bytes);
  EXPECT_TRUE(failure ? bytes.empty() : bytes == kOld || bytes == kLarge);
  return failure;
}

// Lists a folder completely or not at all, without a reason.
std::error_code List(const fs::path& /*path*/) {
  const auto names = platform::ListSubfolders("C:\\My T\xF6\xF6ls");
  EXPECT_TRUE(!names || *names == std::vector<std::string>{"Gantrel"});
  return names ? std::error_code() : std::error_code(calls.fault.reason, std::system_category());
}

fs::path InItsSpelling() { return BesideExecutable("File.txt"); }
fs::path InAnotherSpelling() { return BesideExecutable("fILE.TXT"); }
fs::path ByALink() { return support::Root() / "link"; }

struct Row {
  const char* name;
  std::error_code (*act)(const fs::path&);
  fs::path (*path)();
  Content before = kOld;
  bool takesNewFiles = true;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

class Faults : public testing::TestWithParam<Row> {
 protected:
  void SetUp() override {
    support::Reset();
    support::WriteFile(file_, kOld);
    if (GetParam().path == ByALink) faults::MakeLink(ByALink(), file_);
  }

  std::error_code Act(const Fault& fault, bool areHalf) {
    fs::remove(file_);
    fs::remove_all(Kept().parent_path());
    if (GetParam().before) {
      support::WriteFile(file_, *GetParam().before);
      fs::permissions(file_, fs::perms(0640));
      permissions_ = fs::status(file_).permissions();
    }
    calls = {true, fault, areHalf, GetParam().takesNewFiles};
    const std::error_code failure = GetParam().act(GetParam().path());
    calls.areWatched = false;
    EXPECT_TRUE(failure || !calls.areUnflushed) << "success before the bytes are flushed";
    return failure;
  }

  // After a failure the old bytes must remain, otherwise the new ones; at most one extra file may remain if it could
  // not be deleted, and the next write reuses it.
  void Try(const Fault& fault, bool areHalf, bool passes) {
    const std::error_code failure = Act(fault, areHalf);
    SCOPED_TRACE(failure.message() + " at call " + std::to_string(fault.at) + (areHalf ? ", the first halfway" : ""));
    EXPECT_TRUE(Holds(failure ? GetParam().before : after_));
    const Content kept = ContentOf(Kept());
    const bool isNoneRight = failure || GetParam().act != ReplaceAndKeep;
    EXPECT_TRUE(kept ? *kept == GetParam().before.value_or("") : isNoneRight);
    EXPECT_TRUE(!kept || !failure || fault.isForGood) << "a history step without a change";
    EXPECT_FALSE(passes && failure);
    EXPECT_TRUE(!failure || IsTrueReason(failure, fault));
    EXPECT_LE(CountLeftOvers(), fault.isForGood ? 1 : 0);
    EXPECT_FALSE(Replace(file_));
    EXPECT_EQ(CountLeftOvers(), 0) << "the next write does not reuse the leftover";
    ++tries_;
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

  const Content after_ = GetParam().act != Read && GetParam().act != List ? kNew : GetParam().before;
  const fs::path file_ = ExecutableFolder() / "File.txt";
  fs::perms permissions_ = fs::perms::none;
  int tries_ = 0;
};

TEST_P(Faults, LoseNothing) {
  std::vector<std::string_view> whole;
  for (const bool areHalf : {false, true}) {
    ASSERT_FALSE(Act({}, areHalf));
    ASSERT_TRUE(Holds(after_));
    const auto names = calls.names;
    if (names == whole) break;  // nothing can be half done
    whole = names;
    for (int at = 0; at < std::ssize(names) && !HasFailure(); ++at) {
      for (const auto& [reason, passes] : faults::Reasons(names[static_cast<std::size_t>(at)])) {
        Try({at, reason}, areHalf, passes);
        // In place, a lasting failure or a kill cannot be undone.
        if (GetParam().takesNewFiles && !passes) Try({at, reason, true}, areHalf, false);
      }
    }
  }
  EXPECT_GT(tries_, 20) << "the calls are not intercepted";
}

const Row kRows[] = {
    {"Replacing", Replace, InItsSpelling},
    {"ReplacingByAnotherSpelling", Replace, InAnotherSpelling},
    {"ReplacingByALink", Replace, ByALink},
    {"ReplacingInPlace", Replace, InItsSpelling, kOld, false},
    {"Making", Replace, InItsSpelling, std::nullopt},
    {"Keeping", ReplaceAndKeep, InItsSpelling},
    {"KeepingWhereItCan", ReplaceAndTryToKeep, ByALink},
    {"KeepingInPlace", ReplaceAndTryToKeep, InItsSpelling, kOld, false},
    {"KeepingOfNone", ReplaceAndKeep, InItsSpelling, std::nullopt},
    {"Reading", Read, InItsSpelling},
    {"ReadingALargeFile", Read, InItsSpelling, kLarge},
    {"ReadingByAnotherSpelling", Read, InAnotherSpelling},
    {"ReadingByALink", Read, ByALink},
    {"Listing", List, InItsSpelling},
};

INSTANTIATE_TEST_SUITE_P(Of, Faults, testing::ValuesIn(kRows), testing::PrintToStringParamName());

}  // namespace
