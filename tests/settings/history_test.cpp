#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "settings/Module1.h"
#include "support/own_folder.h"
#include "tests/faults/system_calls.h"

namespace fs = std::filesystem;
using Failure = std::optional<FileFailure>;
using Module1::CanRedo;
using Module1::CanUndo;
using Module1::Change;
using support::ReadFile;
using support::SettingsFile;
using support::WriteFile;
using Texts = std::vector<std::string>;

namespace {

fs::path Folder() { return support::ExecutableFolder() / "Ulvane.history"; }

// A command with several changes.
Failure Put(const Texts& values) {
  Module1::Step step;
  Failure failure;
  for (const std::string& value : values) {
    Change change;
    change.PutSetting("A", "x", value);
    if (!failure) failure = change.Save(step);
  }
  return failure;
}
Failure Undo() { return Change().Undo(); }
Failure Redo() { return Change().Redo(); }

std::string Text(const std::string& value) { return value.empty() ? "" : "[A]\r\nx=" + value + "\r\n"; }
std::string Now() { return Module1::GetSetting("A", "x", ""); }

Texts Names() {
  Texts names;
  for (const auto& entry : fs::directory_iterator(Folder())) names.push_back(entry.path().filename().string());
  std::ranges::sort(names);
  return names;
}

class History : public testing::Test {
 protected:
  void SetUp() override { support::Reset(); }
};

TEST_F(History, UndoAndRedoAreThoseOfAPlainModel) {
  std::mt19937 random(21);  // NOLINT(cert-msc32-c, cert-msc51-cpp): the same each time
  for (int round = 0; round < 10; ++round) {
    support::Reset();
    Texts undo;
    Texts redo;
    std::string now;
    for (int i = 0; i < 45; ++i) {
      const auto act = random() % 8;
      const std::string value = std::to_string(i);
      if (act < 3) {
        EXPECT_FALSE(Put(act == 0 ? Texts{"first", "second", value} : Texts{value}));
        undo.push_back(now);
        redo.clear();
        now = ReadFile(SettingsFile());
        EXPECT_EQ(Now(), value);
      } else if (act < 7) {
        auto& from = act < 5 ? undo : redo;
        EXPECT_FALSE(act < 5 ? Undo() : Redo());
        if (!from.empty()) {
          (act < 5 ? redo : undo).push_back(now);
          now = from.back();
          from.pop_back();
        }
      } else if (!undo.empty()) {  // another program
        now = "[A]\nx = " + value;
        WriteFile(SettingsFile(), now);
      }
      ASSERT_EQ(ReadFile(SettingsFile()), now) << i;
      ASSERT_EQ(CanUndo(), !undo.empty()) << i;
      ASSERT_EQ(CanRedo(), !redo.empty()) << i;
    }
  }
}

TEST_F(History, KeepsTheNewestFilesAndTouchesNoOther) {
  for (const char* const name : {"000001 copy.ini", "1.ini", "x.ini"}) WriteFile(Folder() / name, "mine");
  for (int i = 0; i < 60; ++i) EXPECT_FALSE(Put({std::to_string(i)}));
  EXPECT_EQ(Names().size(), 53U);
  EXPECT_EQ(Names()[1], "000011.ini");
  WriteFile(SettingsFile(), "[A]\nlong=" + std::string(std::size_t{3} * 1024 * 1024, 'x') + "\n");
  for (int i = 0; i < 4; ++i) EXPECT_FALSE(Put({std::to_string(i)}));
  EXPECT_EQ(Names(), (Texts{"000001 copy.ini", "000063.ini", "000064.ini", "1.ini", "x.ini"}));
  fs::remove_all(Folder());
  WriteFile(Folder(), "no folder");
  EXPECT_FALSE(Put({"done"}));
  EXPECT_TRUE(Now() == "done" && !CanUndo());
}

// Every system call of a change, an undo and a redo fails in turn, or is the last before the program is killed.
TEST_F(History, IsWholeAndInOrderWhereverItIsInterrupted) {
  std::map<std::string, std::string> before = {{"a", ""}, {"b", "a"}, {"c", "b"}, {"d", "c"}, {"e", "c"}};
  const struct {
    Failure (*act)();
    const char* outcome;
  } rows[] = {{[] { return Put({"e"}); }, "e"}, {Undo, "b"}, {Redo, "d"}};
  for (const auto& row : rows) {
    std::size_t count = 1;
    for (std::size_t at = 0; at < 2 * count; ++at) {
      SCOPED_TRACE(std::string("to ") + row.outcome + ", call " + std::to_string(at / 2));
      fs::remove_all(Folder());
      WriteFile(SettingsFile(), Text("c"));
      WriteFile(Folder() / "000001.ini", "");
      WriteFile(Folder() / "000002.ini", Text("a"));
      WriteFile(Folder() / "000003.ini", Text("b"));
      WriteFile(Folder() / "000004.redo.ini", Text("d"));
      const faults::Fault fault = {static_cast<int>(at / 2), EIO, at % 2 == 1};
      faults::calls = {true, fault};
      const Failure failure = row.act();
      faults::calls.areWatched = false;
      count = std::max(count, faults::calls.names.size());
      EXPECT_TRUE(Now() == row.outcome || (failure && Now() == "c"));
      for (const std::string& name : Names()) {
        const std::string text = ReadFile(Folder() / name);
        const std::string value = Module1::Settings(text).GetSetting("A", "x", "");
        EXPECT_TRUE(text == Text(value) || name.starts_with(".gantrel-new")) << name;
      }
      Texts way = {Now()};
      while (CanUndo() && way.size() < 9) {
        EXPECT_FALSE(Undo());
        EXPECT_EQ(Now(), before[way.back()]);
        way.push_back(Now());
      }
      EXPECT_TRUE(Now().empty() || (way.size() == 1 && Now() == "e")) << "a step was lost";
      for (; !way.empty(); way.pop_back()) {
        EXPECT_EQ(Now(), way.back());
        EXPECT_FALSE(Redo());
      }
    }
  }
}

}  // namespace
