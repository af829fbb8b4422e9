#include <gtest/gtest.h>

#include <filesystem>
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
void WriteModule() { EXPECT_FALSE(Use({Click("cmdActivate1")})); }

TEST_F(WithFourMods, TheFoldersOfTheHighestNumberComeFirstAlsoThoseThatAreMissing) {
  WriteMakeIni("NextDirNum=2147483647\n");
  const Mod delta = {"Delta", "1", {" d 1", "?", "d%3%"}};
  WriteFile(SettingsFile(), With(Settings(4, {kAlpha, kBeta, kGamma, delta}), "Dir2=?\r\n", ""));
  WriteModule();
  const Names folders = {"d 1", "", "d%3%", "GammaData", "GammaSound", "AlphaData"};
  EXPECT_EQ(ReadFile(ModuleFile()), Module(folders, 2147483647));
}

TEST(ModuleWriter, AModsFlagMustBe1AndACountThatIsNoneIsWhatIsThere) {
  const Act removeMakeIni = [] { fs::remove(ExecutableFolder() / "Make.ini"); };
  const std::string settings = Settings(3, {{"Alpha", "2", {"AlphaData"}}, {"Gamma", "+1", kGamma.folders}, kBeta});
  Check(With(settings, "DirCount=2", "DirCount=none"), {"also without Make.ini",
                                                        {removeMakeIni, Click("cmdActivate1")},
                                                        "Beta | Alpha, Gamma",
                                                        {},
                                                        Names{"GammaData", "GammaSound"}});
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

TEST(ModuleWriter, AFailureIsSaid) {
  Reset();
  const std::string game = "C:\\Games\\D\xF6W\\";
  // From the game's folder to the tool's.
  const std::string own = "..\\.." + platform::ToWindowsPath({ExecutableFolder().native()})->substr(2) + "\\";
  const std::string ownFile = " could not be written: It is one of Gantrel's own files.";
  const auto tryFailure = [](const std::string& settings, const std::string& makeIni, const std::string& said) {
    const Act damage = [&] {
      WriteFile(GameFolder() / "W40k.exe", "MZ");
      WriteMakeIni(makeIni);
    };
    const Message message = {"Make Module", said + "\n\nThe module file was left as it was.", "critical", {"OK"}};
    Check(settings,
          {said.c_str(), {damage, Click("cmdActivate1"), Sees(message), Answer("OK")}, "Beta, Delta | Alpha, Gamma"});
  };
  tryFailure(
      FourMods(), "Header=TOP\n",
      platform::Shown({(ExecutableFolder() / "TOP").native()}) + " could not be read: No such file or directory.");
  tryFailure(FourMods(), "Outfile=w40K.EXE\n", game + "w40K.EXE could not be written: It is a program.");
  for (const char* const file : {"ulvane.ini", "FOOTER"}) {
    const std::string path = own + file;
    tryFailure(FourMods(), "Outfile=" + path + "\n", std::string(game).append(path).append(ownFile));
  }
  tryFailure(With(FourMods(), "Path=C:", "Path=Q:"), "",
             "Q:" + game.substr(2) + "Ulvane.module could not be written: No such device.");
}

}  // namespace
