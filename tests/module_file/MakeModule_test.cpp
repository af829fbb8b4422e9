#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "platform/paths.h"
#include "support/system.h"
#include "support/user.h"
#include "tests/support/game.h"

namespace fs = std::filesystem;
using namespace support;

namespace {

void WriteMakeIni(const std::string& text) { WriteFile(ExecutableFolder() / "Make.ini", "[Make]\n" + text); }

// Writes the module file by the one command that changes nothing else.
void WriteModule() {
  Use([](User& user) { user.Click("cmdActivate1"); });
}

TEST(ModuleWriter, WritesTheFoldersOfTheActiveMods) {
  struct Written {
    const char* rule;
    std::function<void()> prepare;
    Names folders;
    std::int64_t firstNumber;
  };
  const Written rows[] = {
      {"those of the highest number first, also those that are missing",
       [] {
         WriteMakeIni("NextDirNum=-1\n");
         const Mod delta = {"Delta", "1", {" d 1", "?", "d%3%"}};
         WriteFile(SettingsFile(), With(Settings(4, {kAlpha, kBeta, kGamma, delta}), "Dir2=?\r\n", ""));
       },
       {"d 1", "", "d%3%", "GammaData", "GammaSound", "AlphaData"},
       -1},
      {"a mod's flag must be 1, and a count that is none is what is there",
       [] {
         WriteMakeIni("NextDirNum=2147483647\n");
         const std::string two = Settings(3, {{"Alpha", "2", {"AlphaData"}}, {"Gamma", "+1", kGamma.folders}, kBeta});
         WriteFile(SettingsFile(), With(two, "DirCount=2", "DirCount=none"));
       },
       {"GammaData", "GammaSound"},
       2147483647},
      {"without Make.ini the defaults hold",
       [] { fs::remove(ExecutableFolder() / "Make.ini"); },
       {"GammaData", "GammaSound", "AlphaData"},
       5},
  };
  for (const Written& row : rows) {
    ResetWithFourMods();
    row.prepare();
    WriteModule();
    EXPECT_EQ(ReadFile(ModuleFile()), Module(row.folders, row.firstNumber)) << row.rule;
  }
}

// Of the templates every byte is kept but the ends of their lines; a line feed alone is none.
TEST_F(WithFourMods, MakeIniNamesTheFiles) {
  WriteMakeIni("Outfile=Other.module\nHeader=sub\\Top.txt\nFooter=SUB/end.TXT\n");
  WriteFile(ExecutableFolder() / "sub" / "top.txt", "top \r\r\n\r\na\nb\r" + std::string("\0\x1A\r", 3));
  WriteFile(ExecutableFolder() / "sub" / "end.txt", "end");
  WriteModule();
  EXPECT_FALSE(fs::exists(ModuleFile()));
  EXPECT_EQ(ReadFile(GameFolder() / "Other.module"),
            Text({"top ", "", "", "a\nb", std::string("\0\x1A", 2), "DataFolder.5 = GammaData",
                  "DataFolder.6 = GammaSound", "DataFolder.7 = AlphaData", "end"}));
}

TEST_F(WithFourMods, TheModuleFileIsFoundInAnySpellingAndOnAnyDrive) {
  WriteFile(GameFolder() / "uLVANE.MODULE", "");
  for (const std::string& drive : OtherNamesOfDriveC()) {
    const std::string path = drive + "GAMES\\d\xD6w\\";
    WriteFile(GameFolder() / "uLVANE.MODULE", "old");
    WriteFile(SettingsFile(), With(FourMods(), "C:\\Games\\D\xF6W\\", path));
    WriteModule();
    EXPECT_NE(ReadFile(GameFolder() / "uLVANE.MODULE"), "old") << path;
    EXPECT_FALSE(IsSpelledSo(ModuleFile())) << "a second file that differs in letter case alone";
  }
}

TEST(ModuleWriter, NothingIsWrittenForAGameThatIsNoLongerRegistered) {
  const std::string renamed = With(FourMods(), "DoW1=Dawn of War", "DoW1=Renamed");
  Check(FourMods(), {"", {Write(renamed), Click("cmdActivate1"), Sees({})}, "Beta, Delta | Alpha, Gamma", renamed});
}

TEST(ModuleWriter, AFailureIsSaidOnceAndTheOldFileStays) {
  struct Failure {
    std::function<void()> damage;
    std::string file;  // in the message, with what could not be done
    const char* reason;
  };
  Reset();
  const std::string folder = platform::Shown({(ExecutableFolder() / "").native()});
  const std::string game = "C:\\Games\\D\xF6W\\";
  // From the game's folder to the tool's.
  const std::string own = "..\\.." + platform::ToWindowsPath({ExecutableFolder().native()})->substr(2) + "\\";
  const char* const ownFile = "It is one of Gantrel's own files";
  const Failure rows[] = {
      {[] { fs::remove(ExecutableFolder() / "HEADER"); }, folder + "HEADER could not be read",
       "No such file or directory"},
      {[] { WriteFile(SettingsFile(), With(FourMods(), "Path=C:", "Path=Q:")); },
       "Q:" + game.substr(2) + "Ulvane.module could not be written", "No such device"},
      {[] {
         WriteFile(GameFolder() / "W40k.exe", "MZ");
         WriteMakeIni("Outfile=w40K.EXE\n");
       },
       game + "w40K.EXE could not be written", "It is a program"},
      {[&] { WriteMakeIni("Outfile=" + own + "ulvane.ini\n"); }, game + own + "ulvane.ini could not be written",
       ownFile},
      {[&] { WriteMakeIni("Outfile=" + own + "FOOTER\n"); }, game + own + "FOOTER could not be written", ownFile},
  };
  for (const Failure& row : rows) {
    const std::string text = row.file + ": " + row.reason + ".\n\nThe module file was left as it was.";
    for (const char* const command : {"cmdActivate1", "cmdActivateAll"}) {
      SCOPED_TRACE(row.file + command);
      ResetWithFourMods();
      WriteFile(ModuleFile(), "old");
      row.damage();
      Use([&](User& user) {
        user.Click(command);
        EXPECT_EQ(user.ShownMessage(), (Message{"Make Module", text, "critical", {"OK"}}));
        user.Answer("OK");
        EXPECT_FALSE(user.ShownMessage());
      });
      EXPECT_EQ(fs::exists(ModuleFile()) ? ReadFile(ModuleFile()) : "old", "old");
    }
  }
}

}  // namespace
