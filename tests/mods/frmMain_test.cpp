#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/paths.h"
#include "support/user.h"
#include "tests/support/game.h"

namespace fs = std::filesystem;
using namespace support;

namespace {

TEST(MainWindow, ShowsTheSettings) {
  struct Shows {
    const char* rule;
    std::string settings;
    std::string games;
    std::string lists;
    Names disabled;
  };
  const Names ofAvailable = {"cmdActivate1", "cmdActivateAll", "cmdDeleteMod"};
  const Names ofActive = {"cmdDeactivate1", "cmdDeactivateAll", "cmdMoveDown", "cmdMoveUp"};
  Names all = ofAvailable;
  all.insert(all.end(), ofActive.begin(), ofActive.end());
  const Shows rows[] = {
      {"mods by their numbers", FourMods(), "[Dawn of War]", "Beta, Delta | Alpha, Gamma", {}},
      {"no mods", Settings(0, {}), "[Dawn of War]", "() | ()", all},
      {"a single active mod is not moved",
       Settings(2, {kAlpha, kBeta}),
       "[Dawn of War]",
       "Beta | Alpha",
       {"cmdMoveDown", "cmdMoveUp"}},
      {"any number but 0 is active", Settings(2, {{"a", "2"}, {"b", "-1"}}), "[Dawn of War]", "() | a, b", ofAvailable},
      {"no number is 0, and a mod without a name is Unknown",
       Settings(2, {{"a", "x"}}) + Text({"[Dawn of War.2]", "Active="}), "[Dawn of War]", "a, Unknown | ()", ofActive},
      {"a game without a name is Unknown", Text({"[Games]", "Count=2", "DoW1=A"}), "[A], Unknown", "() | ()", all},
      {"a count below 0 is no game", Text({"[Games]", "Count=-3", "DoW1=A"}), "()", "() | ()", all},
      {"a damaged count is no first start", Text({"[Games]", "Count=?", "DoW1=A"}), "[A]", "() | ()", all},
      {"names are plain text",
       Text({"[Games]", "Count=1", "DoW1=<b>x</b> & y", "[<b>x</b> & y]", "ModCount=1", "[<b>x</b> & y.1]", "Name=&z"}),
       "[<b>x</b> & y]", "&z | ()", ofActive},
  };
  for (const Shows& row : rows) {
    Check(row.settings, {row.rule,
                         {[&](User& user) {
                           EXPECT_EQ(Shown(user, "lstGame"), row.games);
                           Names disabled;
                           for (const std::string& name : all) {
                             if (!user.IsEnabled(name)) disabled.push_back(name);
                           }
                           EXPECT_EQ(disabled, row.disabled);
                           EXPECT_TRUE(user.IsEnabled("cmdNewMod") && user.IsEnabled("cmdGoToGames"));
                         }},
                         row.lists});
  }
}

TEST(MainWindow, TheListsFollowTheSelectorWhenTheFocusLeavesItAndNotBefore) {
  const std::string first = "Beta, Delta | Alpha, Gamma";
  const Act anotherProgram = Acts(&User::SwitchToAnotherProgram)();
  const Row rows[] = {
      {"choosing refills nothing", {kChooseSecond}, first},
      {"nor does the open list", {kChooseSecond, Click("lstGame"), Press(Key::Escape)}, first},
      {"nor does another program", {kChooseSecond, anotherProgram}, first},
      {"the Tab key", {kChooseSecond, Press(Key::Tab)}, "Other | ()"},
      {"a click into a list acts on the refilled list",
       // The first entry is Other once the click has taken the focus.
       {kChooseSecond, Select("lstNotActive", "Beta")},
       "[Other] | ()"},
  };
  for (const Row& row : rows) Check(TwoGames(), row);
  Check(With(TwoGames(), "ModCount=1\r\n", "ModCount=0\r\n"),
        {"a click on a button that the refill disables does nothing",
         {kChooseSecond, Click("cmdActivateAll")},
         "() | ()"});
}

TEST_F(WithFourMods, TheListsSayWhyTheSettingsCannotBeRead) {
  const std::string file = platform::Shown({SettingsFile().native()});
  Use([&](User& user) {
    user.ClickEntry("lstNotActive", "Beta");
    fs::remove(SettingsFile());
    fs::create_directory(SettingsFile());
    user.Click("cmdActivate1");
    user.Answer("OK");
    EXPECT_EQ(Shown(user, "lstNotActive"), "(" + file + " could not be read: Is a directory.)");
  });
}

TEST_F(WithFourMods, TheTabKeyGoesRoundInTheOrderOfTheWindow) {
  const Names order = {"lstGame",        "lstNotActive",     "lstActive", "cmdActivate1", "cmdDeactivate1",
                       "cmdActivateAll", "cmdDeactivateAll", "cmdMoveUp", "cmdMoveDown",  "cmdNewMod",
                       "cmdDeleteMod",   "cmdGoToGames",     "lstGame"};
  Use([&](User& user) {
    for (const std::string& control : order) {
      EXPECT_EQ(user.Focus(), control);
      user.Press(Key::Tab);
    }
    const std::string font = user.Font("lstActive");
    EXPECT_TRUE(font == "Comic Sans MS" || font == "Comic Neue") << font;
  });
}

}  // namespace
