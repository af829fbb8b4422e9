#include "tests/support/game.h"

using namespace support;

namespace {

const std::string kTwoGames = Text({"[Games]", "Count=2", "DoW1=First", "DoW2=Second", "[Second]", "Path=D:\\two\\"});
const std::string kSecond = ", Second (D:\\two\\)";
const std::string kTwo = "First (C:\\)" + kSecond;

// A game outside the prefix, and its folder as a Windows path.
fs::path Elsewhere() { return Root() / "elsewhere" / "W40k.exe"; }
std::string OnZ() { return *platform::ToWindowsPath({Elsewhere().parent_path().native()}) + "\\"; }

// Picks a file by typing its name.
Act Pick(const fs::path& file) {
  const Act look = [=] {
    EXPECT_EQ(ShownMessage().value().title, "Select DoW Path");
    if (file.is_absolute()) WriteFile(file, "");
  };
  return InTurn({look, Press("Ctrl+A"), Paste(file.u16string()), Press("Return")});
}

Act Name(const std::string& game) {
  const Message question = {"New", "Installation Name:", "", {"OK", "Cancel"}};
  const Act look = [] { EXPECT_EQ(TextOfFocus(), "Dawn of War"); };
  const Act pasteWhatTheCodePageLacks = Paste(u"\u65E5");
  return InTurn({Click("cmdnew"), Sees(question), look, Type(game), pasteWhatTheCodePageLacks, Press("Return")});
}

const Act kOpen = Click("cmdGoToGames");

TEST(Setup, TheFirstStartRegistersWhatTheRegistryKnows) {
  const Act isFirst = [] {
    EXPECT_EQ(CountWindows("frmMain"), 0) << "before the dialog has ended";
    EXPECT_EQ(Focus(), "OKButton");
  };
  const Act seesNone = Shows("lstGames", "(No installation was found. Click + and select the game's W40k.exe.)");
  const Act install = [] {
    SetRegistry({{"Dawn of War Beta", "D:\\"}, {"Dawn of War Demo", "C:\\Demo"}, {"DAWN OF WAR", "C:\\D\xF6W\\"}});
  };
  Try("", "in order, each folder with one trailing backslash", {isFirst, seesNone, Click("OKButton"), install, kOpen},
      "Dawn of War (C:\\D\xF6W\\), Dawn of War Demo (C:\\Demo\\), Dawn of War Beta (D:\\)");
}

TEST(Setup, AddsAGameByNameAndExecutable) {
  const Message taken = {"New", "Please enter a unique name.", "information", {"OK"}};
  const Message unread = Failed("New", kUnread, "Nothing was changed.");
  const std::string three = Text({"[Games]", "Count=3", "DoW1=New", "DoW2=First", "DoW3=Second"});
  const std::string withThird = With(three, "DoW1=New", "DoW1=Third");
  const Act registry = [] {
    SetRegistry({{"<b>x</b> & y", "c:\\games\\D\xD6w"}});
    WriteFile(GameFolder() / "W40K.EXE", "");
  };
  const auto refuses = [](const fs::path& folder, const std::string& said) {
    const Act isSaid = [=] { EXPECT_NE(ShownMessage().value().text.find(said), std::string::npos); };
    return InTurn({Pick(GameFolder() / folder / "W40k.exe"), isSaid, Answer("OK")});
  };
  const std::string longName(120, 'x');
  Check(kTwoGames, "the dialog starts in the registry's folder, spelled as on the disk",
        {registry, kOpen, Name("<b>x</b> & y"), Pick("W40K.EXE")}, kTwo + ", <b>x</b> & y (C:\\Games\\D\xF6W\\)",
        With(With(kTwoGames, "Count=2", "Count=3"), "DoW2=Second", "DoW2=Second\r\nDoW3=<b>x</b> & y") +
            Text({"[<b>x</b> & y]", "Path=C:\\Games\\D\xF6W\\", "AutoPath=0"}));
  Check(kTwoGames, "not with a taken name, or after Cancel in either dialog",
        {kOpen, Name("Second"), Sees(taken), Answer("OK"), Click("cmdnew"), Answer("Cancel"), Name("Third"), Close()},
        kTwo);
  Check(kTwoGames, "not with unreadable settings",
        {kOpen, Write(kUnreadable), Name("Third"), Sees(unread), Answer("OK")}, kTwo, kUnreadable);
  Try(kTwoGames, "keeps what another program added meanwhile", {kOpen, Name("Third"), Write(three), Pick(Elsewhere())},
      "New (C:\\), First (C:\\), Second (C:\\), Third (" + OnZ() + ")");
  Check(kTwoGames, "not with a name that another program took meanwhile",
        {kOpen, Name("Third"), Write(withThird), Pick(Elsewhere()), Sees(taken), Answer("OK")}, kTwo, withThird);
  Check(kTwoGames, "not in a folder outside the code page or longer than a setting",
        {kOpen, Name("Third"), refuses(u8"\u017Bycie", "W40k.exe cannot be used"),
         refuses(fs::path(longName) / longName, "longer than 254 characters"), Press("Esc")},
        kTwo);
}

TEST(Setup, RemovesAGameWhenTheUserSaysSo) {
  const Message question = {"Delete", "Really Delete 'First'?", "", {"Yes", "No"}};
  const Act click = Click("cmdDelete");
  const Act select = Click("lstGames", "First (C:\\)");
  const Act enter = Press("Return");
  Try(kTwoGames, "by the keyboard alone",
      {GoTo("cmdGoToGames"), enter, GoTo("lstGames"), Press("Down"), GoTo("cmdDelete"), enter, Sees(question), enter},
      "Second (D:\\two\\)");
  Check(kTwoGames, "not without a selection, or for No", {kOpen, click, select, click, Answer("No")},
        "[First (C:\\)]" + kSecond);
}

TEST(Setup, OkReloadsTheSelectorAndClosingDoesNot) {
  const Act reloaded = Shows("lstGame", "[Dawn of War], Second");
  const Act asItWas = Shows("lstGame", "Dawn of War, [Second]");
  Check(TwoGames(), "", {kChooseSecond, kOpen, Press("Esc"), asItWas, kOpen, Press("Return"), reloaded}, "Other | ()");
}

TEST(Setup, TheMainWindowIsOutOfUseUntilItHasEnded) {
  const Act isRefused = [] {
    EXPECT_EQ(CountWindows("frmMain"), 1) << "it refuses to be closed";
    EXPECT_EQ(CountWindows("frmDoWSetup"), 1) << "and opens no second dialog";
    EXPECT_EQ(Focus(), "OKButton");
  };
  Try(FourMods(), "", {kOpen, kOpen, Close("frmMain"), isRefused, Click("OKButton"), Focused("lstGame")}, kFourShown);
}

TEST(Setup, TheWaitEndsWhenTheToolIsAskedToQuit) {
  Reset();
  EXPECT_EQ(Use({AskToQuit, Wait(std::chrono::seconds(10))}), 0);
}

}  // namespace
