#include "tests/support/game.h"

using namespace support;

// Commands without a button, and the menus.
namespace {

// Gamma above Alpha: Gamma moved up, or Alpha moved down.
const std::string kGammaFirst =
    Settings(4, {kGamma, kBeta, {"Alpha", "1", kAlpha.folders, {"GammaSound"}}, kDelta}) + Section("-1", kGamma);
const std::string kAlphaLast =
    Settings(4, {kGamma, kBeta, {"Alpha", "1", kAlpha.folders, {"GammaSound"}}, kDelta}) + Section("-1", kAlpha);
const Names kGammaFirstMade = {"AlphaData", "GammaData", "GammaSound"};

Act SeesMenu(const std::string& menu) {
  return [=] { EXPECT_EQ(Menu(), menu); };
}

TEST(Menus, HaveTheCommandsOfTheirList) {
  const std::string everywhere = "New Mod Insert\n(Undo Ctrl+Z)\n(Redo Ctrl+Y)\nRefresh F5";
  const std::string ofActive =
      "Deactivate Selected Enter\nDeactivate All\nMove Selected Up Alt+Up\nMove Selected Down Alt+Down\n"
      "Move to Top Alt+Home\nMove to Bottom Alt+End\nEdit... F2\nDetails Alt+Enter\nWhich Mod Wins... F4\n";
  const std::string ofAvailable =
      "(Activate Selected Enter)\nActivate All\n(Edit... F2)\n(Details Alt+Enter)\n(Delete Mod Delete)\n";
  const std::string ofGame = "Details Alt+Enter\nOpen Game Folder\nCopy Launch Option\nDoW Installation Setup\n";
  const Act escape = Press("Esc");
  const Act copied = [] { EXPECT_EQ(Clipboard(), "-modname Ulvane"); };
  Check(FourMods(), "a click selects the entry first",
        {RightClick("lstActive", "Gamma"), SeesMenu(ofActive + everywhere), escape}, "Beta, Delta | Alpha, [Gamma]");
  Check(FourMods(), "by the keyboard, and grey without a selected mod",
        {GoTo("lstNotActive"), Press("Shift+F10"), SeesMenu(ofAvailable + everywhere), escape}, kFourShown);
  Check(FourMods(), "the game's menu", {RightClick("lstGame"), SeesMenu(ofGame + everywhere), escape}, kFourShown);
  Check(FourMods(), "copy the launch option", {RightClick("lstGame"), Choose("Copy Launch Option"), copied},
        kFourShown);
  Check(FourMods(), "a menu command acts like its key", {RightClick("lstActive", "Gamma"), Choose("Move Selected Up")},
        "Beta, Delta | [Gamma], Alpha", kGammaFirst, kGammaFirstMade);
  Check(FourMods(), "screen readers can run commands", {Click("lstActive", "Gamma"), Perform("Move to Top", "frmMain")},
        "Beta, Delta | [Gamma], Alpha", kGammaFirst, kGammaFirstMade);
  Check(FourMods(), "the setup has a menu, too",
        {Click("cmdGoToGames"), RightClick("lstGames", "Dawn of War (C:\\Games\\D\xF6W\\)"), Choose("Delete"),
         Answer("No"), Press("Del"), Answer("No"), Press("Esc")},
        kFourShown);
}

TEST(Menus, MoveAModFar) {
  const Names top = {"BetaData", "GammaData", "GammaSound", "AlphaData"};
  Check(FourMods(), "to the end by key", {Click("lstActive", "Alpha"), Press("Alt+End")},
        "Beta, Delta | Gamma, [Alpha]", kAlphaLast, kGammaFirstMade);
  Check(FourMods(), "by the mouse", {Drag("lstActive", "Alpha", "Gamma")}, "Beta, Delta | Gamma, [Alpha]", kAlphaLast,
        kGammaFirstMade);
  Check(FourMods(), "not onto itself", {Drag("lstActive", "Gamma", "Gamma")}, "Beta, Delta | Alpha, [Gamma]");
  Check(FourMods(), "not in the unordered list", {Drag("lstNotActive", "Beta", "Delta")},
        "Beta, [Delta] | Alpha, Gamma");
}

TEST(Menus, EditAMod) {
  const Message gone = {"Edit Mod", "The mod 'Gamma' no longer exists.", "exclamation", {"OK"}};
  const Message taken = {"Edit Mod", "Please enter a unique name.", "information", {"OK"}};
  const std::string renamed = With(FourMods(), "Name=Gamma", "Name=Renamed");
  const Act open = InTurn({Click("lstActive", "Gamma"), Press("F2")});
  const Act seesFolders = [] {
    EXPECT_EQ(Shown("lstDirs"), "[GammaData], [GammaSound], b, B\xE4r, Data, data2, Zoo");
    EXPECT_EQ(Marked("lstDirs"), "GammaData, GammaSound");
    EXPECT_EQ(Marked("lstActive"), "Alpha, Gamma");
  };
  Check(FourMods(), "name, folders and module file",
        {open, seesFolders, Type("New"), Click("lstDirs", "GammaData"), Click("lstDirs", "b"), Press("Return")},
        "Beta, Delta | Alpha, New", Settings(4, {kAlpha, kBeta, {"New", "1", {"GammaSound", "b"}}, kDelta}),
        Names{"GammaSound", "b", "AlphaData"});
  Check(FourMods(), "not to another mod's name",
        {RightClick("lstNotActive", "Beta"), Choose("Edit..."), Type("Alpha"), Press("Return"), Sees(taken),
         Press("Esc"), Press("Esc")},
        "[Beta], Delta | Alpha, Gamma");
  Check(FourMods(), "not a mod removed meanwhile",
        {open, Write(renamed), Click("OKButton"), Sees(gone), Press("Esc"), Press("Esc")},
        "Beta, Delta | Alpha, [Gamma]", renamed);
  Check(FourMods(), "the dialog does not open for a missing mod",
        {Click("lstActive", "Gamma"), Write(renamed), Press("F2"), Sees(gone), Press("Esc")},
        "Beta, Delta | Alpha, Renamed", renamed);
}

TEST(Menus, TakeBackWhatWasDone) {
  const Names four = {"GammaData", "GammaSound", "AlphaData"};
  const Act undo = Press("Ctrl+Z");
  const Act activateAll = Click("cmdActivateAll");
  const auto activated = With(FourMods(), "Name=Beta\r\nActive=0", "Name=Beta\r\nActive=1");
  Check(FourMods(), "all in one step, with the module file", {activateAll, undo}, kFourShown, FourMods(), four);
  Check(FourMods(), "step by step",
        {DoubleClick("lstNotActive", "Beta"), Click("cmdDeactivateAll"), undo, undo, Press("Ctrl+Y")},
        "Delta | Alpha, Beta, Gamma", activated, Names{"GammaData", "GammaSound", "BetaData", "AlphaData"});
  Check(TwoGames(), "the game stays selected; other games' module files are rewritten",
        {activateAll, kChooseSecond, Press("Tab"), undo, Shows("lstGame", "Dawn of War, [Second]")}, "Other | ()",
        TwoGames(), four);
  Try(FourMods(), "and drops a click that comes meanwhile", {activateAll, Watch("lstActive", Soon(activateAll), undo)},
      kFourShown);
  Check(FourMods(), "nothing after the last step", {activateAll, undo, undo, RightClick("lstGame"), Press("Esc")},
        kFourShown, FourMods(), four);
  const Act takeModuleFile = [] { fs::create_directories(ModuleFile() / "x"); };
  const Act seesFailure = [] { EXPECT_EQ(ShownMessage().value_or(Message()).title, "Undo"); };
  Try(FourMods(), "reports a write failure",
      {activateAll, [] { fs::remove(ModuleFile()); }, takeModuleFile, undo, seesFailure, Press("Esc")}, kFourShown);
}

TEST(Menus, TellWhichModWins) {
  const Message message = {"Which Mod Wins",
                           "'Alpha' shares files with 1 other activated mod.\n\n"
                           "'Gamma' wins, 1 file:\nart\\A.tga\n\nMissing folders: GammaSound.",
                           "information",
                           {"OK"}};
  const Act putFiles = [] {
    fs::create_directories(GameFolder() / "w40K" / "AlphaData" / "art");
    fs::create_directories(GameFolder() / "w40K" / "GammaData" / "Art");
    WriteFile(GameFolder() / "w40K" / "AlphaData" / "art" / "A.tga", "");
    WriteFile(GameFolder() / "w40K" / "GammaData" / "Art" / "a.TGA", "");
  };
  Try(FourMods(), "of the selected one",
      {putFiles, Click("lstActive", "Alpha"), Press("F4"), Sees(message), Press("Esc")},
      "Beta, Delta | [Alpha], Gamma");
}

TEST(Menus, DetailsAreTheTooltip) {
  const std::string longName(60, 'W');
  const Act seesDetails = [=] { EXPECT_EQ(ToolTip(), longName + "\nNo data folders"); };
  Check(Settings(1, {{longName, "1"}}), "includes the full text of a cut name",
        {GoTo("lstActive"), Press("Down"), Press("Alt+Return"), seesDetails}, "() | [" + longName + "]");
}

}  // namespace
