#include <fcntl.h>

#include <algorithm>
#include <cerrno>

#include "tests/support/game.h"

// Runs every command in the real windows, with each read and each replacement of a file failing as a whole.
// replacing_test.cpp covers failures inside these two, without windows.
using namespace support;

namespace {

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): shared with the functions that the linker inserts
// The tool's operations while watched, and the one that fails, counted from 1.
std::vector<std::string> operations;
std::size_t wrong = 0;
bool isWatched = false;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

bool GoesWrong(const char* outcome, const char* path) {
  if (!isWatched) return false;
  operations.push_back(fs::path(path).filename().string() + " could not be " + outcome);
  return operations.size() == wrong;
}

}  // namespace

// The linker redirects the tool's calls of these two functions here (see tests/CMakeLists.txt).
// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming)
extern "C" {
int __real_open(const char* path, int flags, ...);
int __real_rename(const char* from, const char* to);

int __wrap_open(const char* path, int flags, mode_t mode) {
  const bool isReading = (flags & (O_ACCMODE | O_DIRECTORY)) == O_RDONLY;
  if (!isReading || !GoesWrong("read", path)) return __real_open(path, flags, mode);
  errno = EIO;
  return -1;
}

int __wrap_rename(const char* from, const char* to) {
  if (!GoesWrong("written", to)) return __real_rename(from, to);
  errno = ENOSPC;
  return -1;
}
}
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)

namespace {

struct Command {
  const char* name;
  const char* title;  // of its failure messages
  std::vector<Act> prepare;
  std::vector<Act> acts;  // empty for the tool's start
  int readings;           // opening the settings file; twice if missing
  int replacements;       // of the same file
  bool isFirstStart = false;
};

// The failure messages shown. Questions are answered with their default button.
std::vector<Message> failures;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): told by each answer

// Also closes dialogs that the command left open so that the user can correct the input.
const Act kAnswerAll = [] {
  if (const auto message = ShownMessage()) {
    if (message->icon == "critical") failures.push_back(*message);
    DoNext({Answer(message->buttons.front()), kAnswerAll});
  } else if (CountWindows("frmNew") > 0) {
    DoNext({Type("!"), [] { EXPECT_EQ(TextOfFocus(), "Epsilon!"); }, Close()});
  } else if (CountWindows("frmMain") == 0) {
    EXPECT_EQ(ReadFile(SettingsFile()).find("ModCount"), std::string::npos) << "this is no first start";
    DoNext({Click("OKButton"), kAnswerAll});
  }
};

const Act kSelectGame = Click("lstGames", "Dawn of War (C:\\Games\\D\xF6W\\)");

const Command kCommands[] = {
    {"Activate", "Make Module", {Click("lstNotActive", "Beta")}, {Click("cmdActivate1")}, 1, 1},
    {"ActivateAll", "Make Module", {Click("lstActive", "Alpha")}, {Click("cmdActivateAll")}, 2, 2},
    {"Move", "Make Module", {Click("lstActive", "Gamma")}, {Click("cmdMoveUp")}, 1, 1},
    {"Delete", "Delete Mod", {Click("lstNotActive", "Beta")}, {Click("cmdDeleteMod")}, 2, 1},
    {"NewMod", "New Mod", {Click("cmdNewMod"), Type("Epsilon"), Click("lstDirs", "Zoo")}, {Click("OKButton")}, 1, 1},
    // With the file name that the dialog suggests.
    {"AddGame", "New", {Click("cmdGoToGames")}, {Click("cmdnew"), Type("Second")}, 4, 1},
    {"RemoveGame", "Delete", {Click("cmdGoToGames"), kSelectGame}, {Click("cmdDelete")}, 4, 1},
    {"Start", "Gantrel", {}, {}, 2, 0},
    {"FirstStart", "DoW Installation Setup", {}, {}, 8, 1, true},
};

using State = std::vector<std::string>;  // the result of a command: settings, module file, screen

// Runs the command with its `which`th operation failing; 0: none.
State Try(const Command& command, std::size_t which) {
  ResetWithFourMods();
  WriteFile(DriveC() / "W40k.exe", "");  // where the file dialog starts
  SetRegistry({{"Dawn of War", "C:\\Games\\D\xF6W"}, {"Dawn of War Beta", "C:\\Beta"}});
  WriteFile(ModuleFile(), "old");
  WriteFile(ExecutableFolder() / "Make.ini", "[Make]\nNextDirNum=7\n");  // differs from the default
  failures.clear();
  operations.clear();
  wrong = which;
  isWatched = command.acts.empty();
  if (command.isFirstStart) fs::remove(SettingsFile());
  std::string shown;
  const Act watch = [] { isWatched = true; };
  const Act look = [&] {
    isWatched = false;
    shown = Shown(CountWindows("frmDoWSetup") > 0 ? "lstGames" : "lstNotActive");
  };
  EXPECT_FALSE(Use({InTurn(command.prepare), watch, InTurn(command.acts), kAnswerAll, look}));
  return {ReadFile(SettingsFile()), ReadFile(ModuleFile()), shown};
}

void TryAll(const Command& command) {
  const State expected = Try(command, 0);
  EXPECT_TRUE(failures.empty());
  const std::vector<std::string> all = operations;
  EXPECT_EQ(std::ranges::count(all, "Ulvane.ini could not be read"), command.readings);
  EXPECT_EQ(std::ranges::count(all, "Ulvane.ini could not be written"), command.replacements);
  const bool isOneChange = command.replacements < 2;

  for (std::size_t which = 1; which <= all.size() && !testing::Test::HasFailure(); ++which) {
    const std::string& what = all[which - 1];
    SCOPED_TRACE(command.name + (" " + std::to_string(which)) + ": " + what);
    const State state = Try(command, which);
    if (what.starts_with("system.reg")) continue;  // then no game is found
    if (state == expected && failures.empty()) continue;
    const bool isOld = state[0] == FourMods() || state[0].empty();
    EXPECT_TRUE(isOld || state[0] == expected[0] || !isOneChange) << state[0];
    EXPECT_TRUE(state[1] == "old" || state[1] == expected[1] || !isOneChange) << state[1];
    ASSERT_EQ(failures.size(), 1U);
    const bool isOfARefill = failures[0].title == "Gantrel" || failures[0].title == "DoW Installation Setup";
    EXPECT_TRUE(failures[0].title == command.title || isOfARefill) << failures[0].title;
    EXPECT_NE(failures[0].text.find(what + ": "), std::string::npos) << failures[0].text;
  }
}

TEST(Faults, LeaveTheOldStateOrTheNewOneAndAreToldOnce) {
  for (const Command& command : kCommands) TryAll(command);
}

}  // namespace
