#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "platform/paths.h"
#include "support/user.h"
#include "tests/support/game.h"

namespace fs = std::filesystem;
using namespace support;

namespace {

TEST(MainWindow, ShowsTheSettings) {
  struct Screen {
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
  const Screen rows[] = {
      {"mods by their numbers", FourMods(), "[Dawn of War]", "Beta, Delta | Alpha, Gamma", {}},
      {"no mods", Settings(0, {}), "[Dawn of War]", "() | ()", all},
      {"a single active mod is not moved",
       Settings(2, {kAlpha, kBeta}),
       "[Dawn of War]",
       "Beta | Alpha",
       {"cmdMoveDown", "cmdMoveUp"}},
      {"a game without a name is Unknown", Text({"[Games]", "Count=2", "DoW1=A"}), "[A], Unknown", "() | ()", all},
      {"a damaged count is no first start", Text({"[Games]", "Count=-3", "DoW1=A"}), "[A]", "() | ()", all},
      {"names are plain text",
       Text({"[Games]", "Count=1", "DoW1=<b>x</b> & y", "[<b>x</b> & y]", "ModCount=1", "[<b>x</b> & y.1]", "Name=&z"}),
       "[<b>x</b> & y]", "&z | ()", ofActive},
  };
  for (const Screen& row : rows) {
    Check(row.settings, {row.rule,
                         {Shows("lstGame", row.games),
                          [&] {
                            Names disabled;
                            std::ranges::remove_copy_if(all, std::back_inserter(disabled), IsEnabled);
                            EXPECT_EQ(disabled, row.disabled);
                            EXPECT_TRUE(IsEnabled("cmdNewMod") && IsEnabled("cmdGoToGames"));
                          }},
                         row.lists});
  }
}

TEST(MainWindow, TheListsFollowTheSelectorWhenTheFocusLeavesItAndNotBefore) {
  const std::string first = "Beta, Delta | Alpha, Gamma";
  const Act anotherProgram = SwitchToAnotherProgram();
  const Row rows[] = {
      {"choosing refills nothing", {kChooseSecond}, first},
      {"nor does the open list", {kChooseSecond, Click("lstGame"), Press(Key::Escape)}, first},
      {"nor does another program", {kChooseSecond, anotherProgram}, first},
      {"the Tab key", {kChooseSecond, Press(Key::Tab)}, "Other | ()"},
      {"a click into a list acts on the refilled list",
       // The first entry is Other once the click has taken the focus.
       {kChooseSecond, Click("lstNotActive", "Beta")},
       "[Other] | ()"},
  };
  for (const Row& row : rows) Check(TwoGames(), row);
  Check(With(TwoGames(), "ModCount=1\r\n", "ModCount=0\r\n"),
        {"a click on a button that the refill disables does nothing",
         {kChooseSecond, Click("cmdActivateAll")},
         "() | ()"});
}

TEST(MainWindow, TooltipsTellOfButtonsGamesAndMods) {
  const Act makeFolder = [] { fs::create_directory(GameFolder() / "w40K" / "GammaData"); };
  const auto tells = [](const std::string& control, const std::string& entry, const std::string& text) {
    return InTurn({Hover(control, entry), [=] { EXPECT_EQ(ToolTip(), text); }});
  };
  const Act noTooltip = tells("lstActive", "Gamma", "");
  Try(TwoGames(), {"none while another game is selected", {kChooseSecond, noTooltip}, "Beta, Delta | Alpha, Gamma"});
  Try(FourMods(), {"",
                   {makeFolder, tells("cmdDeleteMod", "", "Delete Mod"),
                    tells("lstGame", "", "Folder: C:\\Games\\D\xF6W\\\nModule file: C:\\Games\\D\xF6W\\Ulvane.module"),
                    tells("lstNotActive", "Delta", "No data folders"),
                    tells("lstNotActive", "Beta", "Data folders:\nBetaData (missing)"),
                    tells("lstActive", "Gamma", "Data folders:\nGammaData\nGammaSound (missing)")},
                   "Beta, Delta | Alpha, Gamma"});
}

TEST(MainWindow, HasItsSizeFontColoursAndSpokenNames) {
  const Act look = [] {
    EXPECT_EQ(FixedSize("frmMain"), "426x353");
    EXPECT_EQ(SpokenName("cmdGoToGames"), "DoW Installation Setup");
    const std::string font = Font("lstActive");
    EXPECT_TRUE(font == "Comic Sans MS 12" || font == "Comic Neue 12") << font;
    EXPECT_GT(CountPixels("lblTitle", 0xFFFFFF), 50);
    EXPECT_GT(CountPixels("frmMain", 0x474747), 1000) << "lines and frames";
  };
  const Act isOutlined = [] {
    for (const char* const name : {"CancelButton", "txtName", "frmNew"})
      EXPECT_GT(CountPixels(name, 0x7F7F7F), 100) << name;
  };
  Try(FourMods(), {"",
                   {look, TurnDark(), Click("cmdNewMod"), GoTo("lstDirs"), isOutlined, Press(Key::Escape)},
                   "Beta, Delta | Alpha, Gamma"});
}

TEST(MainWindow, TheTabKeyGoesRoundInTheOrderOfTheWindow) {
  const Names order = {"lstGame",        "lstNotActive",     "lstActive", "cmdActivate1", "cmdDeactivate1",
                       "cmdActivateAll", "cmdDeactivateAll", "cmdMoveUp", "cmdMoveDown",  "cmdNewMod",
                       "cmdDeleteMod",   "cmdGoToGames",     "lstGame"};
  std::vector<Act> acts;
  for (const std::string& control : order) {
    acts.push_back(Focused(control));
    acts.push_back(Press(Key::Tab));
  }
  Try(FourMods(), {"", acts, "Beta, Delta | Alpha, Gamma"});
}

}  // namespace
