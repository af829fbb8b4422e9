#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "platform/paths.h"
#include "tests/support/game.h"
#include "support/system.h"
#include "support/user.h"

namespace fs = std::filesystem;
using namespace support;

namespace {

class ModuleWriter : public WithFourMods {
 protected:
  // Writes the module file by the one command that changes nothing else.
  static void Write(const std::function<void(User&)>& then = {}) {
    Use([&](User& user) {
      user.Click("cmdActivate1");
      if (then) then(user);
    });
  }
};

TEST_F(ModuleWriter, ModsAreWrittenFromTheHighestNumberDown) {
  WriteFile(ExecutableFolder() / "Make.ini", "[Make]\nNextDirNum=10\n");
  WriteFile(SettingsFile(), With(FourMods(), "Name=Delta\r\nActive=0\r\nDirCount=0",
                                 "Name=Delta\r\nActive=1\r\nDirCount=3\r\nDir1= d 1\r\nDir3=d%3%"));
  Use([](User& user) { user.Click("cmdDeactivate1"); });
  EXPECT_EQ(ReadFile(ModuleFile()),
            Module({"DataFolder.10 = d 1", "DataFolder.11 = ", "DataFolder.12 = d%3%", "DataFolder.13 = GammaData",
                    "DataFolder.14 = GammaSound", "DataFolder.15 = AlphaData"}));
}

TEST_F(ModuleWriter, OnlyModsWhoseFlagIsExactlyOneAreWritten) {
  WriteFile(SettingsFile(), With(With(FourMods(), "Name=Alpha\r\nActive=1", "Name=Alpha\r\nActive=2"),
                                 "Name=Gamma\r\nActive=1\r\nDirCount=2", "Name=Gamma\r\nActive=+1\r\nDirCount=none"));
  Write();
  EXPECT_EQ(ReadFile(ModuleFile()), Module({"DataFolder.5 = GammaData", "DataFolder.6 = GammaSound"}));
}

TEST_F(ModuleWriter, MakeIniNamesTheFiles) {
  WriteFile(ExecutableFolder() / "Make.ini", "[Make]\nOutfile=Other.module\nHeader=sub\\Top.txt\nFooter=SUB/end.TXT\n");
  WriteFile(ExecutableFolder() / "sub" / "top.txt", "top\r");
  WriteFile(ExecutableFolder() / "sub" / "end.txt", "end");
  Write();
  EXPECT_FALSE(fs::exists(ModuleFile()));
  EXPECT_EQ(ReadFile(GameFolder() / "Other.module"),
            Text({"top", "DataFolder.5 = GammaData", "DataFolder.6 = GammaSound", "DataFolder.7 = AlphaData", "end"}));
}

TEST_F(ModuleWriter, WithoutMakeIniTheDefaultsHold) {
  fs::remove(ExecutableFolder() / "Make.ini");
  Write();
  EXPECT_EQ(ReadFile(ModuleFile()),
            Module({"DataFolder.5 = GammaData", "DataFolder.6 = GammaSound", "DataFolder.7 = AlphaData"}));
}

TEST_F(ModuleWriter, TheGameIsFoundInAnySpellingAndOnAnyDrive) {
  for (const std::string& drive : OtherNamesOfDriveC()) {
    const std::string path = drive + "GAMES\\d\xD6w\\";
    fs::remove(ModuleFile());
    WriteFile(SettingsFile(), With(FourMods(), "C:\\Games\\D\xF6W\\", path));
    Write();
    EXPECT_TRUE(fs::exists(ModuleFile())) << path;
  }
  fs::remove(ModuleFile());
  WriteFile(GameFolder() / "uLVANE.MODULE", "old");
  Write();
  EXPECT_FALSE(IsSpelledSo(ModuleFile())) << "a second file that differs in letter case alone";
  EXPECT_NE(ReadFile(GameFolder() / "uLVANE.MODULE"), "old");
}

TEST_F(ModuleWriter, NothingIsWrittenForAGameThatIsNoLongerRegistered) {
  Use([](User& user) {
    WriteFile(SettingsFile(), With(FourMods(), "DoW1=Dawn of War", "DoW1=Renamed"));
    user.Click("cmdActivate1");
    EXPECT_FALSE(user.ShownMessage());
  });
  EXPECT_FALSE(fs::exists(ModuleFile()));
}

TEST_F(ModuleWriter, AFailureIsSaidOnceAndTheOldFileStays) {
  struct Row {
    const char* name;
    std::function<void()> damage;
    std::string file;  // in the message, with what could not be done
    const char* reason;
  };
  const std::string folder = platform::Shown({(ExecutableFolder() / "").native()});
  const std::string module = "C:\\Games\\D\xF6W\\Ulvane.module";
  // From the game's folder to the tool's.
  const std::string own = "..\\.." + platform::ToWindowsPath({ExecutableFolder().native()})->substr(2) + "\\";
  const Row rows[] = {
      {"no header", [] { fs::remove(ExecutableFolder() / "HEADER"); }, folder + "HEADER could not be read",
       "No such file or directory"},
      {"the footer is a folder", [] { WriteFile(ExecutableFolder() / "Make.ini", "[Make]\nFooter=\n"); },
       folder + " could not be read", "Is a directory"},
      {"the module file is read-only", [] { fs::permissions(ModuleFile(), fs::perms(0444)); },
       module + " could not be written", "Permission denied"},
      {"no folder", [] { fs::rename(GameFolder(), DriveC() / "gone"); }, module + " could not be written",
       "No such file or directory"},
      {"no drive", [] { WriteFile(SettingsFile(), With(FourMods(), "Path=C:", "Path=Q:")); },
       "Q:" + module.substr(2) + " could not be written", "No such device"},
      {"the game's program",
       [] {
         WriteFile(GameFolder() / "W40k.exe", "MZ");
         WriteFile(ExecutableFolder() / "Make.ini", "[Make]\nOutfile=w40K.EXE\n");
       },
       "C:\\Games\\D\xF6W\\w40K.EXE could not be written", "It is a program"},
      {"the settings", [&] { WriteFile(ExecutableFolder() / "Make.ini", "[Make]\nOutfile=" + own + "ulvane.ini\n"); },
       "C:\\Games\\D\xF6W\\" + own + "ulvane.ini could not be written", "It is one of Gantrel's own files"},
      {"a template", [&] { WriteFile(ExecutableFolder() / "Make.ini", "[Make]\nOutfile=" + own + "FOOTER\n"); },
       "C:\\Games\\D\xF6W\\" + own + "FOOTER could not be written", "It is one of Gantrel's own files"},
  };
  for (const Row& row : rows) {
    for (const char* const command : {"cmdActivate1", "cmdActivateAll"}) {
      ResetWithFourMods();
      WriteFile(ModuleFile(), "old");
      row.damage();
      Use([&](User& user) {
        user.Click(command);
        EXPECT_EQ(user.ShownMessage(),
                  (Message{"Make Module",
                           row.file + ": " + row.reason + ".\n\nThe module file was left as it was.",
                           "critical",
                           {"OK"}}))
            << row.name << command;
        user.Answer("OK");
        EXPECT_FALSE(user.ShownMessage()) << row.name << command;
      });
      EXPECT_EQ(fs::exists(ModuleFile()) ? ReadFile(ModuleFile()) : "old", "old") << row.name << command;
    }
  }
}

}  // namespace
