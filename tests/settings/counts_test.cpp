#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>

#include "settings/Module1.h"
#include "tests/support/allocations.h"
#include "tests/support/file_calls.h"
#include "tests/support/game.h"
#include "support/user.h"

// What the tool asks of the machine, in counts that are the same on every machine. All of its speed hangs on them:
// every accessor opens the file, so one call too many is paid thousands of times.

namespace {

using support::EndCounting;
using support::FileCalls;
using support::StartCounting;
using support::User;

class Counts : public support::WithFourMods {};

constexpr const char* kAlpha = "Dawn of War.1";

TEST_F(Counts, AReadOpensTheFileOnceAndNoOther) {
  struct Row {
    const char* name;
    std::function<void()> read;
    const char* file;
  };
  const Row rows[] = {
      {"a value", [] { Module1::GetSetting(kAlpha, "Name", ""); }, "Ulvane.ini"},
      {"a missing key", [] { Module1::GetSetting(kAlpha, "none", ""); }, "Ulvane.ini"},
      {"a missing section", [] { Module1::GetSetting("none", "none", ""); }, "Ulvane.ini"},
      {"a number", [] { Module1::GetNumber(kAlpha, "Active", 0); }, "Ulvane.ini"},
      {"Make.ini", [] { Module1::GetMakeSetting("Make", "Header", ""); }, "Make.ini"},
  };
  for (const Row& row : rows) {
    StartCounting();
    row.read();
    const FileCalls calls = EndCounting();
    EXPECT_EQ(calls.OpensToRead(row.file), 1U) << row.name;
    EXPECT_EQ(calls.files.size(), 1U) << row.name;
    EXPECT_EQ(calls.OpensToWrite(""), 0U) << row.name;
  }
}

TEST_F(Counts, AWriteReadsOnceAndReplacesTheFileOnceOnTheDisk) {
  StartCounting();
  Module1::PutSetting(kAlpha, "Active", "0");
  const FileCalls calls = EndCounting();
  EXPECT_EQ(calls.OpensToRead("Ulvane.ini"), 1U);
  EXPECT_EQ(calls.OpensToWrite(""), 1U);
  EXPECT_EQ(calls.files.size(), 2U) << "the file, and the new one beside it";
  EXPECT_EQ(calls.flushes, 1U);
  EXPECT_EQ(calls.renames, 1U);
}

TEST_F(Counts, AReadAllocatesNothingButThePathAndALongValue) {
  const std::string longName(100, 'n');
  Module1::PutSetting(kAlpha, "Name", longName);
  struct Row {
    const char* key;
    std::size_t allocations;
  };
  for (const Row& row : {Row{"Active", 1}, Row{"none", 1}, Row{"Name", 2}}) {
    const std::size_t before = support::Allocations();
    const std::string value = Module1::GetSetting(kAlpha, row.key, "");
    EXPECT_EQ(support::Allocations() - before, row.allocations) << row.key;
  }
}

// In the order in which a command asks: the mods looked for, what is changed, the lists, the module file.
TEST_F(Counts, CommandsReadAndWriteAsOftenAsTheySay) {
  struct Row {
    const char* list;
    const char* entry;
    const char* button;
    const char* answer;  // to the message that the command shows
    std::size_t reads;
    std::size_t replacements;
  };
  constexpr std::size_t kListMods = 1 + 4 * 2;
  constexpr std::size_t kListMods3 = 1 + 3 * 2;
  // Of the module file: the count of mods, the game's registration, and per mod whether it is active; then the folders
  // of the active ones, with their count.
  constexpr std::size_t kMakeModule = 1 + 3 + 4;
  constexpr std::size_t kAlphaAndGamma = (1 + 1) + (1 + 2);
  constexpr std::size_t kBeta = 1 + 1;
  // A change of many settings reads and replaces the file once, as that of one does.
  constexpr std::size_t kChange = 1;
  const Row rows[] = {
      {"lstNotActive", "Beta", "cmdActivate1", "", (1 + 2) + kChange + kListMods + kMakeModule + kAlphaAndGamma + kBeta,
       kChange + 1},
      {"lstActive", "Alpha", "cmdMoveDown", "", (1 + 1) + (1 + 3) + kChange + kListMods + kMakeModule + kAlphaAndGamma,
       kChange + 1},
      {"lstNotActive", "Beta", "cmdDeleteMod", "OK", (1 + 2) + kChange + kListMods3, kChange},
  };
  for (const Row& row : rows) {
    support::ResetWithFourMods();
    const std::string answer = row.answer;
    FileCalls calls;
    support::Use([&](User& user) {
      user.ClickEntry(row.list, row.entry);
      user.Do(StartCounting);
      user.Click(row.button);
      if (!answer.empty()) user.Answer(answer);
      user.Do([&] { calls = EndCounting(); });
    });
    EXPECT_EQ(calls.OpensToRead("Ulvane.ini"), row.reads) << row.button;
    EXPECT_EQ(calls.renames, row.replacements) << row.button;
    EXPECT_EQ(calls.flushes, row.replacements) << row.button;
  }
}

}  // namespace
