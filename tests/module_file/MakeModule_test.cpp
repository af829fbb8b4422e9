#include "tests/support/game.h"

using namespace support;

namespace {

Act WriteOwn(const std::string& file, const std::string& text) {
  return [=] { WriteFile(ExecutableFolder() / file, text); };
}

// This command changes nothing else here.
const Act kWriteModule = Click("cmdActivate1");

TEST(ModuleWriter, MakeIniNamesTheFiles) {
  const Act makeIni = WriteOwn("Make.ini", "[Make]\nOutfile=Other.module\nHeader=sub\\Top.txt\nFooter=SUB/end.TXT\n");
  Check(FourMods(), "", {makeIni, WriteOwn("sub/top.txt", "top"), WriteOwn("sub/end.txt", "end"), kWriteModule},
        kFourShown);
  EXPECT_EQ(ReadFile(GameFolder() / "Other.module"),
            Text({"top", "DataFolder.5 = GammaData", "DataFolder.6 = GammaSound", "DataFolder.7 = AlphaData", "end"}));
  const Act removeMakeIni = [] { fs::remove(ExecutableFolder() / "Make.ini"); };
  const Names folders = {"GammaData", "GammaSound", "AlphaData"};
  Check(FourMods(), "without it, default names apply", {removeMakeIni, kWriteModule}, kFourShown, {}, folders);
}

TEST(ModuleWriter, AFailureIsSaid) {
  const std::string noFolder = With(FourMods(), "Path=C:\\Games\\D\xF6W\\", "Path=");
  const Message noGame = {"Make Module", "Please set up a game first.", "exclamation", {"OK"}};
  Check(FourMods(), "", {Write(noFolder), kWriteModule, Sees(noGame), Answer("OK")}, kFourShown, noFolder);
  const std::string game = "C:\\Games\\D\xF6W\\";
  // From the game's folder to the tool's.
  const std::string own = "..\\.." + platform::ToWindowsPath({ExecutableFolder().native()})->substr(2) + "\\";
  const std::string ownFile = " could not be written: It is one of Gantrel's own files.";
  const Act writeProgram = [] {
    WriteFile(GameFolder() / "W40k.exe", "MZ");
    fs::resize_file(GameFolder() / "W40k.exe", 17 << 20);
  };
  const auto tryFailure = [&](const std::string& settings, const std::string& makeIni, const std::string& said) {
    const Message message = {"Make Module", said + "\n\nThe module file was not changed.", "critical", {"OK"}};
    Check(settings, said,
          {writeProgram, WriteOwn("Make.ini", "[Make]\n" + makeIni), kWriteModule, Sees(message), Answer("OK")},
          kFourShown);
  };
  tryFailure(FourMods(), "Header=TOP\n",
             platform::DisplayName(ExecutableFolder() / "TOP") + " could not be read: No such file or directory.");
  tryFailure(FourMods(), "Outfile=w40K.EXE\n", game + "w40K.EXE could not be written: It is a program.");
  for (const char* const file : {"ulvane.ini", "make.INI", "FOOTER"}) {
    const std::string path = own + file;
    tryFailure(FourMods(), "Outfile=" + path + "\n", std::string(game).append(path).append(ownFile));
  }
  tryFailure(With(FourMods(), "Path=C:", "Path=Q:"), "",
             "Q:" + game.substr(2) + "Ulvane.module could not be written: No such device.");
}

TEST(ModuleWriter, AStartPutsTemplatesThatAreMissingAndReplacesNone) {
  ResetWithFourMods();
  const fs::path own = ExecutableFolder();
  for (const char* const name : {"Make.ini", "HEADER"}) WriteFile(own / "templates" / name, "shipped");
  for (const char* const name : {"Make.ini", "FOOTER"}) fs::remove(own / name);
  WriteFile(own / "HEADER", "edited");
  EXPECT_FALSE(Use({}));
  EXPECT_EQ(ReadFile(own / "Make.ini"), "shipped");
  EXPECT_EQ(ReadFile(own / "HEADER"), "edited");
  EXPECT_FALSE(fs::exists(own / "FOOTER")) << "where there is none to put";
}

}  // namespace
