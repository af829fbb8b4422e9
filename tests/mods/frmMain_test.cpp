#include <algorithm>
#include <iterator>

#include "tests/support/game.h"

using namespace support;

TEST(MainWindow, ShowsTheSettingsAndEnablesTheButtonsThatHaveSomethingToActOn) {
  const Names ofActive = {"cmdDeactivate1", "cmdDeactivateAll", "cmdMoveDown", "cmdMoveUp"};
  const Names all = {"cmdActivate1",     "cmdActivateAll", "cmdDeleteMod", "cmdDeactivate1",
                     "cmdDeactivateAll", "cmdMoveDown",    "cmdMoveUp"};
  const auto areDisabled = [=](const Names& expected) -> Act {
    return [=] {
      Names disabled;
      std::ranges::remove_copy_if(all, std::back_inserter(disabled), IsEnabled);
      EXPECT_EQ(disabled, expected);
    };
  };
  Check(FourMods(), "", {areDisabled({})}, kFourShown);
  Check(Settings(2, {kAlpha, kBeta}), "a single active mod is not moved", {areDisabled({"cmdMoveDown", "cmdMoveUp"})},
        "Beta | Alpha");
  Check(Text({"[Games]", "Count=-3", "DoW1=A"}), "a damaged count is not a first start",
        {Shows("lstGame", "[A]"), areDisabled(all)}, "() | ()");
  Check(
      Text({"[Games]", "Count=1", "DoW1=<b>x</b> & y", "[<b>x</b> & y]", "ModCount=1", "[<b>x</b> & y.1]", "Name=&z"}),
      "names are plain text", {Shows("lstGame", "[<b>x</b> & y]"), areDisabled(ofActive)}, "&z | ()");
}

TEST(MainWindow, TheListsFollowTheSelectorWhenTheFocusLeavesItAndNotBefore) {
  const Act anotherProgram = SwitchToAnotherProgram();
  Check(TwoGames(), "choosing a game refills nothing", {kChooseSecond}, kFourShown);
  Check(TwoGames(), "opening the selector refills nothing", {kChooseSecond, Click("lstGame"), Press("Esc")},
        kFourShown);
  Check(TwoGames(), "switching programs refills nothing", {kChooseSecond, anotherProgram}, kFourShown);
  Check(TwoGames(), "the Tab key", {kChooseSecond, Press("Tab")}, "Other | ()");
  Check(TwoGames(), "a click into a list acts on the refilled list",
        // After the click has taken the focus, the first entry is Other.
        {kChooseSecond, Click("lstNotActive", "Beta")}, "[Other] | ()");
  Check(With(TwoGames(), "ModCount=1\r\n", "ModCount=0\r\n"),
        "a click on a button that the refill disables does nothing", {kChooseSecond, Click("cmdActivateAll")},
        "() | ()");
}

TEST(MainWindow, TooltipsTellOfButtonsGamesAndMods) {
  const Act makeFolder = [] { fs::create_directory(GameFolder() / "w40K" / "GammaData"); };
  const auto tells = [](const std::string& control, const std::string& entry, const std::string& text) {
    return InTurn({Hover(control, entry), [=] { EXPECT_EQ(ToolTip(), text); }});
  };
  const Act noTooltip = tells("lstActive", "Gamma", "");
  Try(TwoGames(), "not while another game is selected", {kChooseSecond, noTooltip}, kFourShown);
  Try(FourMods(), "",
      {makeFolder, tells("cmdDeleteMod", "", "Delete Mod"),
       tells("lstGame", "", "Folder: C:\\Games\\D\xF6W\\\nModule file: C:\\Games\\D\xF6W\\Ulvane.module"),
       tells("lstNotActive", "Delta", "No data folders"),
       tells("lstNotActive", "Beta", "Data folders:\nBetaData (missing)"),
       tells("lstActive", "Gamma", "Data folders:\nGammaData\nGammaSound (missing)")},
      kFourShown);
}

TEST(MainWindow, IsOutlinedInDarkColours) {
  const Act isOutlined = [] {
    for (const char* const name : {"CancelButton", "txtName", "frmNew"})
      EXPECT_GT(CountPixels(name, 0x7F7F7F), 100) << name;
  };
  Try(FourMods(), "", {TurnDark(), Click("cmdNewMod"), GoTo("lstDirs"), isOutlined, Press("Esc")}, kFourShown);
}

TEST(MainWindow, HasItsLookAndTheTabKeyGoesRoundInItsOrder) {
  const Act look = [] {
    const Names either = {"Activated Mods, Comic Sans MS 12 in 426x353", "Activated Mods, Comic Neue 12 in 426x353"};
    EXPECT_EQ(std::ranges::count(either, Look("lstActive")), 1) << Look("lstActive");
    EXPECT_GT(CountPixels("lblTitle", 0xFFFFFF), 50);
    EXPECT_GT(CountPixels("frmMain", 0x474747), 1000) << "lines and frames";
  };
  std::vector<Act> acts = {look};
  for (const char* const control :
       {"lstGame", "lstNotActive", "lstActive", "cmdActivate1", "cmdDeactivate1", "cmdActivateAll", "cmdDeactivateAll",
        "cmdMoveUp", "cmdMoveDown", "cmdNewMod", "cmdDeleteMod", "cmdGoToGames", "lstGame"}) {
    acts.push_back(Focused(control));
    acts.push_back(Press("Tab"));
  }
  Try(FourMods(), "", acts, kFourShown);
}

// From a click or key to the files. mod_list_test.cpp covers the rules.
const Mod kActiveBeta = {"Beta", "1", kBeta.folders};
const Act kSeesBusy = [] { EXPECT_TRUE(IsPointerBusy()); };
const Act kSeesNotBusy = [] { EXPECT_FALSE(IsPointerBusy()); };

TEST(Commands, ActivateModsAndWriteTheModuleFile) {
  const Names all = {"GammaData", "GammaSound", "BetaData", "AlphaData"};
  Check(FourMods(), "activate one by double click", {DoubleClick("lstNotActive", "Beta")}, "Delta | Alpha, Beta, Gamma",
        Settings(4, {kAlpha, kActiveBeta, kGamma, kDelta}), all);
  Try(FourMods(), "deactivate one by key", {Click("lstActive", "Alpha"), Press("Return")},
      "Alpha, Beta, Delta | Gamma");
  Check(FourMods(), "activate all, with a busy pointer",
        {Watch("lstActive", kSeesBusy, Click("cmdActivateAll")), kSeesNotBusy}, "() | Alpha, Beta, Gamma, Delta",
        Settings(4, {kAlpha, kActiveBeta, kGamma, {"Delta", "1"}}), all);
  Try(FourMods(), "deactivate all", {Click("cmdDeactivateAll")}, "Alpha, Beta, Gamma, Delta | ()");
  Try(Settings(4, {kBeta, kBeta, kDelta, kAlpha}), "all except a mod with a duplicate name", {Click("cmdActivateAll")},
      "Beta | Beta, Delta, Alpha");
  const Message message = Failed("Make Module", kUnread, "1 of 2 mods were activated.");
  Try(FourMods(), "a failure part way reports the progress",
      {Watch("lstNotActive", Write(kUnreadable), Click("cmdActivateAll")), Sees(message), Answer("OK")},
      "(" + message.text.substr(0, message.text.find('\n')) + ") | ()");
}

TEST(Commands, MoveTheSelectedMod) {
  const std::string renamed = With(FourMods(), "Name=Gamma", "Name=Renamed");
  const Act makeReadOnly = [] { fs::permissions(SettingsFile(), fs::perms(0444)); };
  const Message unsaved = Failed("Make Module", " could not be written: Permission denied.", "Nothing was changed.");
  Check(FourMods(), "by its key", {Click("lstActive", "Gamma"), Press("Alt+Up")}, "Beta, Delta | [Gamma], Alpha",
        Settings(4, {kGamma, kBeta, {"Alpha", "1", kAlpha.folders, {"GammaSound"}}, kDelta}) + Section("-1", kGamma),
        Names{"AlphaData", "GammaData", "GammaSound"});
  Check(FourMods(), "not without a selection, or beyond the ends",
        {Click("cmdMoveUp"), Click("cmdMoveDown"), Click("lstActive", "Alpha"), Click("cmdMoveUp"),
         Shows("lstActive", "[Alpha], Gamma"), Click("lstActive", "Gamma"), Click("cmdMoveDown")},
        "Beta, Delta | Alpha, [Gamma]");
  Check(FourMods(), "not past a mod that is no longer registered",
        {Click("lstActive", "Alpha"), Write(renamed), Click("cmdMoveDown")}, "Beta, Delta | [Alpha], Gamma", renamed);
  Check(FourMods(), "an unsaved move stays in place, selected",
        {Click("lstActive", "Alpha"), makeReadOnly, Click("cmdMoveDown"), Sees(unsaved), Answer("OK")},
        "Beta, Delta | [Alpha], Gamma");
}

TEST(Commands, DeleteTheSelectedModWhenTheUserSaysSo) {
  const Message question = {"Delete Mod", "Really delete '<b>x'?", "", {"OK", "Cancel"}};
  const Mod markup = {"<b>x", "0"};
  const std::string three = Settings(3, {kAlpha, markup, kGamma});
  const Act select = Click("lstNotActive", "<b>x");
  const Act click = Click("cmdDeleteMod");
  const std::string renamed = With(three, "Name=<b>x", "Name=Renamed");
  Try(three, "by key; names are plain text",
      {select, Press("Del"), Sees(question), Watch("lstNotActive", kSeesBusy, Press("Return"))}, "() | Alpha, Gamma");
  Check(three, "no question if it is no longer registered", {select, Write(renamed), click}, "Renamed | Alpha, Gamma",
        renamed);
  Check(three, "a mod removed during the question takes no other with it",
        {select, click, Write(renamed), Answer("OK")}, "Renamed | Alpha, Gamma", renamed);
}
