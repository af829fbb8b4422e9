#include "mods/which_mod_wins.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/folders.h"
#include "tests/support/game.h"

namespace fs = std::filesystem;
using namespace support;

namespace {

// Each mod as "name: files".
std::string Shared(const std::vector<ModFiles>& mods, const std::string& mod) {
  std::string text;
  for (const SharedFiles& shared : FindSharedFiles(mods, mod)) {
    text += shared.mod + (shared.wins ? " wins:" : " loses:");
    for (const std::string& file : shared.files) text += " " + file;
    text += "\n";
  }
  return text;
}

TEST(WhichModWins, IsTheLowerOneOfTwoThatHaveAFileOfTheSamePath) {
  const std::vector<ModFiles> mods = {{"Top", {"a", "b\\C", "x"}},
                                      {"Mod", {"B\\c", "a", "\xD6", "A", "b\\d"}},
                                      {"Other", {"c", "b", "d"}},
                                      {"Low", {"\xF6", "A", "a"}},
                                      {"Lowest", {"a"}}};
  EXPECT_EQ(Shared(mods, "Mod"), "Lowest wins: a\nLow wins: a \xD6\nTop loses: a B\\c\n");
  EXPECT_EQ(Shared(mods, "Other") + Shared(mods, "x"), "");
}

TEST(WhichModWins, IsSaidInAFewLines) {
  const std::vector<SharedFiles> one = {{"Low", true, {"a"}}};
  const std::vector<SharedFiles> many = {{"b", false, {"1", "2", "3", "4", "5", "6"}},
                                         {"c", true, {"1"}},
                                         {"d", true, {"1"}},
                                         {"e", true, {"1"}},
                                         {"f", true, {"1"}}};
  EXPECT_EQ(SharedFilesText("M", {}, {{"A", "B", "C", "D", "E"}}),
            "No other activated mod shares files with 'M'.\n\nMissing folders: A, B, C, D and 1 more.");
  EXPECT_EQ(SharedFilesText("M", one, {{}, true, true, true}),
            "'M' shares files with 1 other activated mod.\n\n'Low' wins, 1 file:\na\n\nSome folders could "
            "not be read.\nLinks that leave the game's folder were not followed.\nThere are more than 200,000 "
            "files; the rest were not checked.");
  EXPECT_EQ(SharedFilesText("M", many, {}),
            "'M' shares files with 5 other activated mods.\n\n'M' wins over 'b', 6 files, including:\n"
            "1\n2\n3\n4\n5\n\n'c' wins, 1 file:\n1\n\n'd' wins, 1 file:\n1\n\n'e' wins, 1 file:\n1\n\nAnd 1 "
            "more mod.");
}

TEST(WhichModWins, LooksIntoTheFoldersOfTheActivatedMods) {
  ResetWithFourMods();
  const fs::path base = GameFolder() / "w40K";
  for (const char* const file :
       {"Art/.x", "alphadata/Art/.x", "GammaSound/art/.X", "GammaData/ART/.x", "BetaData/art/.x"})
    WriteFile(base / file, "");
  const Module1::Settings settings(
      With(FourMods(), "Name=Delta\r\nActive=0\r\nDirCount=0",
           "Name=Delta\r\nActive=1\r\nDirCount=3\r\nDir1=Nowhere\r\nDir2=\r\nDir3=Nowhere"));
  EXPECT_EQ(WhichModWins(settings, "Dawn of War", "Alpha"),
            "'Alpha' shares files with 1 other activated mod.\n\n'Gamma' wins, 1 file:\nArt\\.x\n\n"
            "Missing folders: Nowhere.");
  EXPECT_EQ(WhichModWins(settings, "Dawn of War", "Beta"), std::nullopt);
}

TEST(WhichModWins, FollowsLinksWithinTheGameAlone) {
  ResetWithFourMods();
  const fs::path base = GameFolder() / "w40K";
  WriteFile(base / "Data" / "in" / "file", "");
  const auto list = [](const std::string& folder, std::size_t most) {
    return platform::ListFiles("C:\\Games\\D\xF6W\\W40k\\" + folder, "C:\\Games\\D\xF6W\\", most);
  };
  EXPECT_EQ(list("data", 2).files, (Names{"in\\file"}));
  EXPECT_TRUE(list("data", 1).isCut && !list("data", 2).isCut && list("x", 2).isMissing);
#ifndef _WIN32
  WriteFile(Root() / "outside" / "file", "");
  fs::create_directory_symlink(base / "Data", base / "b" / "inside");
  EXPECT_EQ(list("b", 9).files, (Names{"inside\\in\\file"}));
  EXPECT_FALSE(list("b", 9).hasLinksOut);
  fs::create_directory_symlink("..", base / "Data" / "up");
  fs::create_directory_symlink(Root() / "outside", base / "Data" / "out");
  const auto looped = list("b", 99);
  EXPECT_TRUE(looped.hasLinksOut && !looped.isCut && !looped.hasUnread);
  EXPECT_EQ(std::ranges::count(looped.files, "inside\\in\\file"), 1);
  EXPECT_EQ(std::ranges::count(looped.files, "inside\\out\\file"), 0);
#endif
}

}  // namespace
