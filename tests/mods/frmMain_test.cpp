#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "tests/support/game.h"
#include "support/user.h"

using namespace support;

namespace {

class MainWindow : public WithFourMods {
 protected:
  static void Settings(const std::string& text) { WriteFile(SettingsFile(), text); }
};

std::string TwoGames() {
  return With(FourMods(), "[Games]\r\nCount=1\r\n", "[Games]\r\nCount=2\r\nDoW2=Second\r\n") +
         Text({"[Second]", "ModCount=1", "[Second.1]", "Name=Other"});
}

TEST_F(MainWindow, ModsAreListedByTheirNumbersAndTheFocusIsOnTheSelector) {
  Use([](User& user) {
    EXPECT_EQ(user.Entries("lstGame"), Names{"Dawn of War"});
    EXPECT_EQ(user.Selected("lstGame"), "Dawn of War");
    EXPECT_EQ(user.Entries("lstActive"), (Names{"Alpha", "Gamma"}));
    EXPECT_EQ(user.Entries("lstNotActive"), (Names{"Beta", "Delta"}));
    EXPECT_EQ(user.Selected("lstActive") + user.Selected("lstNotActive"), "");
    EXPECT_EQ(user.Focus(), "lstGame");
    const std::string font = user.Font("lstActive");
    EXPECT_TRUE(font == "Comic Sans MS" || font == "Comic Neue") << font;
  });
}

TEST_F(MainWindow, ButtonsAreEnabledWhenTheyHaveSomethingToActOn) {
  struct Row {
    const char* rule;
    Names activeFlags;  // of mods 1, 2, ...
    Names disabled;
  };
  const Names ofAvailable = {"cmdActivate1", "cmdActivateAll", "cmdDeleteMod"};
  const Names ofActive = {"cmdDeactivate1", "cmdDeactivateAll", "cmdMoveDown", "cmdMoveUp"};
  Names all = ofAvailable;
  all.insert(all.end(), ofActive.begin(), ofActive.end());
  const Row rows[] = {
      {"none without mods", {}, all},
      {"all with mods in both lists", {"1", "0", "1"}, {}},
      {"no moving of a single active mod", {"1", "0"}, {"cmdMoveDown", "cmdMoveUp"}},
      {"nothing to activate", {"1", "1"}, ofAvailable},
      {"nothing to deactivate", {"0", ""}, ofActive},
      {"any number but 0 is active", {"2", "-1"}, ofAvailable},
      {"no number is 0", {"x"}, ofActive},
  };
  for (const Row& row : rows) {
    std::string text = Text({"[Games]", "Count=1", "DoW1=G", "[G]"});
    text += "ModCount=" + std::to_string(row.activeFlags.size()) + "\r\n";
    for (std::size_t i = 0; i < row.activeFlags.size(); ++i) {
      text += "[G." + std::to_string(i + 1) + "]\r\nName=" + std::to_string(i) + "\r\nActive=" + row.activeFlags[i] +
              "\r\n";
    }
    Settings(text);
    Use([&](User& user) {
      Names disabled;
      for (const std::string& name : all) {
        if (!user.IsEnabled(name)) disabled.push_back(name);
      }
      EXPECT_EQ(disabled, row.disabled) << row.rule;
      EXPECT_TRUE(user.IsEnabled("cmdNewMod") && user.IsEnabled("cmdGoToGames")) << row.rule;
    });
  }
}

TEST_F(MainWindow, WhatIsMissingOrDamagedReadsAsItsDefault) {
  struct Row {
    const char* rule;
    std::string settings;
    Names games;
    Names available;
  };
  const Row rows[] = {
      {"a game without a name is Unknown", Text({"[Games]", "Count=2", "DoW1=A"}), {"A", "Unknown"}, {}},
      {"no games", Text({"[Games]", "Count=0", "DoW1=A"}), {}, {}},
      {"a damaged count is no first start", Text({"[Games]", "Count=?", "DoW1=A"}), {"A"}, {}},
      {"a negative count is no game", Text({"[Games]", "Count=-3", "DoW1=A"}), {}, {}},
      {"a mod without a name is Unknown",
       Text({"[Games]", "Count=1", "DoW1=A", "[A]", "ModCount=2", "[A.2]", "Name=x"}),
       {"A"},
       {"Unknown", "x"}},
      {"LF, a byte-order mark and no last line end",
       "\xEF\xBB\xBF[Games]\nCount=1\nDoW1=A\n[A]\nModCount=1\n[A.1]\nName=x",
       {"A"},
       {"x"}},
      {"names are plain text",
       Text({"[Games]", "Count=1", "DoW1=<b>x</b> & y", "[<b>x</b> & y]", "ModCount=1", "[<b>x</b> & y.1]", "Name=&z"}),
       {"<b>x</b> & y"},
       {"&z"}},
  };
  for (const Row& row : rows) {
    Settings(row.settings);
    Use([&](User& user) {
      EXPECT_EQ(user.Entries("lstGame"), row.games) << row.rule;
      EXPECT_EQ(user.Entries("lstNotActive"), row.available) << row.rule;
    });
    EXPECT_EQ(ReadFile(SettingsFile()), row.settings) << row.rule;
  }
}

TEST_F(MainWindow, TheListsFollowTheSelectorWhenTheFocusLeavesItAndNotBefore) {
  Settings(TwoGames());
  Use([](User& user) {
    const Names first = {"Beta", "Delta"};
    user.Choose("lstGame", "Second");
    EXPECT_EQ(user.Selected("lstGame"), "Second");
    EXPECT_EQ(user.Entries("lstNotActive"), first) << "choosing refills nothing";
    user.OpenDropDown("lstGame");
    EXPECT_EQ(user.Entries("lstNotActive"), first) << "nor does opening the list again";
    user.SwitchToAnotherProgram();
    EXPECT_EQ(user.Entries("lstNotActive"), first) << "nor does another program";
    EXPECT_EQ(user.Focus(), "lstGame");
    user.Press(Key::Tab);
    EXPECT_EQ(user.Entries("lstNotActive"), Names{"Other"});
    EXPECT_EQ(user.Entries("lstActive"), Names{});
  });
}

TEST_F(MainWindow, AClickIntoAListActsOnTheRefilledList) {
  Settings(TwoGames());
  Use([](User& user) {
    user.Choose("lstGame", "Second");
    user.ClickEntry("lstNotActive", "Beta");  // the first entry, which is Other once the click has taken the focus
    EXPECT_EQ(user.Entries("lstNotActive"), Names{"Other"});
    EXPECT_EQ(user.Selected("lstNotActive"), "Other");
  });
}

TEST_F(MainWindow, AClickOnAButtonThatTheRefillDisablesDoesNothing) {
  Settings(With(TwoGames(), "ModCount=1\r\n", "ModCount=0\r\n"));
  Use([](User& user) {
    user.Choose("lstGame", "Second");
    user.Click("cmdActivateAll");
    EXPECT_EQ(user.Entries("lstNotActive"), Names{});
    EXPECT_FALSE(user.IsEnabled("cmdActivateAll"));
  });
  EXPECT_FALSE(std::filesystem::exists(ModuleFile()));
}

TEST_F(MainWindow, TheTabKeyGoesRoundInTheOrderOfTheWindow) {
  Use([](User& user) {
    Names round;
    for (int i = 0; i < 12; ++i) {
      round.push_back(user.Focus());
      user.Press(Key::Tab);
    }
    EXPECT_EQ(round,
              (Names{"lstGame", "lstNotActive", "lstActive", "cmdActivate1", "cmdDeactivate1", "cmdActivateAll",
                     "cmdDeactivateAll", "cmdMoveUp", "cmdMoveDown", "cmdNewMod", "cmdDeleteMod", "cmdGoToGames"}));
    EXPECT_EQ(user.Focus(), "lstGame");
  });
}

TEST_F(MainWindow, ClosingTheLastWindowEndsTheTool) {
  bool isEnded = false;
  Use([&](User& user) {
    user.CloseWindow();
    isEnded = user.HasEnded();
  });
  EXPECT_TRUE(isEnded);
}

}  // namespace
