#include "tests/support/game.h"

using namespace support;

namespace {

const Message kEmptyName = {"New Mod", "Please enter a name for the mod.", "exclamation", {"OK"}};
const Message kTakenName = {"New Mod", "Please enter a unique name.", "information", {"OK"}};
const Message kNoGame = {"New Mod", "Please set up a game first.", "exclamation", {"OK"}};

std::string AndFifth(const Mod& mod) { return Settings(5, {kAlpha, kBeta, kGamma, kDelta, mod}); }

TEST(NewMod, IsAppendedAsTheLastAvailableMod) {
  const Act open = Click("cmdNewMod");
  const Act enter = Press("Return");
  const Act ok = Click("OKButton");
  const std::string noGame = Text({"[Games]", "Count=0"});
  const auto listed = [](const std::string& name) { return "Beta, Delta, " + name + " | Alpha, Gamma"; };
  Check(FourMods(), "folders in list order, without characters outside the code page",
        {open, Type(" N\xE9w & <i>"), Paste(u"\u65E5\U0001F600\u20AC"), Click("lstDirs", "Zoo"),
         Click("lstDirs", "data2"), Click("lstDirs", "Data"), Click("lstDirs", "b"), Click("lstDirs", "Data"), ok},
        listed("N\xE9w & <i>\x80"), AndFifth({" N\xE9w & <i>\x80", "0", {"b", "data2", "Zoo"}}));
  Try(FourMods(), "a missing name is rejected and corrected",
      {open, Type("  "), ok, Sees(kEmptyName), Answer("OK"), Type("x"), enter}, listed("x"));
  Try(FourMods(), "an available mod's name is taken",
      {open, Type("Beta"), ok, Sees(kTakenName), Press("Esc"), Type("x"), enter}, listed("Betax"));
  Check(FourMods(), "letter case and blanks count; by keyboard only",
        {Click("lstNotActive", "Beta"), Press("Ins"), Type(" beta"), GoTo("lstDirs"), Press("Down"), Press("Space"),
         enter},
        listed("beta"), AndFifth({" beta", "0", {"B\xE4r"}}));
  Check(FourMods(), "not after Cancel or Escape",
        {open, Type("New"), Click("CancelButton"), open, Type("New"), Press("Esc")}, kFourShown);
  Check(FourMods(), "not for a game removed meanwhile",
        {open, Type("New"), Write(noGame), enter, Sees(kNoGame), Answer("OK"), Close()}, kFourShown, noGame);

  const Act seesBoth = [] { EXPECT_EQ(CountWindows("frmNew"), 2); };
  Check(TwoGames(), "dialogs are independent and write to the selected game",
        {open, Type("Twin"), open, seesBoth, Type("New"), ok, kChooseSecond, ok}, "Other, Twin | ()",
        With(With(TwoGames(), "ModCount=4", "ModCount=5"), "ModCount=1", "ModCount=2") + Section("5", {"New", "0"}) +
            Text({"[Second.2]", "Name=Twin", "Active=0", "DirCount=0"}));
  Check(noGame, "not without a game", {open, Sees(kNoGame), Answer("OK")}, "() | ()");
}

TEST(NewMod, NeedsNoFolderAndTheToolEndsWithItsLastDialog) {
  Reset();
  WriteFile(SettingsFile(), With(FourMods(), "D\xF6W\\", "D\xF6W"));  // the same folder
  const Act look = Shows("lstDirs", "(Folder not found:\nC:\\Games\\D\xF6W\\W40k)");
  EXPECT_EQ(Use({Click("cmdNewMod"), look, Close("frmMain"), Type("New"), Click("OKButton")}), 0);
  EXPECT_NE(ReadFile(SettingsFile()).find("Name=New"), std::string::npos);
}

}  // namespace
