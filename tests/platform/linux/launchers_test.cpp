#include "platform/linux/launchers.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "mods/frmMain.h"
#include "platform/registry.h"
#include "support/linux/prefix.h"
#include "support/own_folder.h"

namespace fs = std::filesystem;
using support::WriteFile;

namespace {

using Paths = std::vector<std::string>;

Paths Texts(const std::vector<platform::HostPath>& paths) {
  Paths texts;
  for (const platform::HostPath& path : paths) texts.push_back(path.text);
  return texts;
}

// A home and a disk without anything, and the tool outside of all prefixes.
class Launchers : public testing::Test {
 protected:
  void SetUp() override { Restart(); }
  void TearDown() override { fs::remove(loop_); }

  void Restart() {
    support::Reset();
    fs::remove(support::Prefix() / "system.reg");
    fs::create_directories(disk_);
  }

  static void MakePrefix(const fs::path& folder, const std::string& installLocation = "") {
    fs::create_directories(folder / "dosdevices");
    fs::create_directories(folder / "drive_c");
    fs::create_directory_symlink("/", folder / "dosdevices" / "z:");
    std::string text = "WINE REGISTRY Version 2\n\n#arch=win32\n\n";
    if (!installLocation.empty())
      text += "[Software\\\\THQ\\\\Dawn of War] 1\n\"InstallLocation\"=" + installLocation + "\n";
    WriteFile(folder / "system.reg", text);
  }

  static std::string Registered() {
    return frmMain::GetKeyValue(platform::kHkeyLocalMachine, "Software\\THQ\\Dawn of War", "InstallLocation");
  }

  const fs::path home_ = support::Root() / "home";
  const fs::path loop_ = home_ / ".steam" / "steam";
  const fs::path disk_ = support::Root() / u8"Di\u00DFk {2}, [new]*";
  const std::string disk = disk_.string();
};

TEST_F(Launchers, HavePrefixesInTheirOwnPlacesAndWhereTheirFilesSay) {
  const std::string games = disk + "/Games";
  const std::string inSteam = "/steamapps/compatdata/";
  const std::string inLibrary = disk + inSteam + "4570/pfx";
  const std::string libraries = "\"libraryfolders\"\n{\n\t\"contentstatsid\"\t\t\"-98\"\n\t\"0\"\n\t{\n";
  const std::string library = "\t\t\"path\"\t\t\"" + disk + "\"\n";
  const std::string longFolder = games + "/a name with blanks that is longer than a line of the launcher's file is";
  std::string folded = longFolder;
  folded.replace(folded.rfind(' '), 1, "\n    ");
  struct Row {
    std::string file;  // of the launcher, below the home folder; made when it has a name
    std::string text;
    std::string prefix;  // below the home folder if not absolute
  };
  const std::vector<Row> rows = {
      {"", "", ".wine"},
      // Steam: the prefix in the first library, or in another one that its list names.
      {".local/share/Steam/steamapps/x", "", ".local/share/Steam" + inSteam + "4570/pfx"},
      {".steam/debian-installation/steamapps/x", "",
       ".steam/debian-installation" + inSteam + "4570.20250104205827/pfx"},
      {".steam/root/steamapps/libraryfolders.vdf", libraries + library + "\t\t\"label\"\t\t\"\"\n\t}\n}\n", inLibrary},
      {".steam/steam/config/libraryfolders.vdf", libraries + "\t\t\"label\"\t\t\"\\\"{\\\\\"\n" + library, inLibrary},
      {".var/app/com.valvesoftware.Steam/data/Steam/steamapps/libraryfolders.vdf",
       "\"LibraryFolders\"\n{\n\t\"TimeNextStatsReport\"\t\t\"1623\"\n\t\"1\"\t\t\"" + disk + "\"\n}\n", inLibrary},
      {".var/app/com.valvesoftware.Steam/.local/share/Steam/steamapps/libraryfolders.vdf", libraries + library,
       inLibrary},
      {"snap/steam/common/.local/share/Steam/steamapps/libraryfolders.vdf", libraries + library, inLibrary},
      // Heroic.
      {".config/heroic/GamesConfig/Abc1.json", R"({"Abc1": {"winePrefix": ")" + games + R"("}, "version": "v0"})",
       games},
      {".config/heroic/GamesConfig/Abc1.json", "{\n  \"Abc1\": {\n    \"winePrefix\": \"" + games + "\"\n",
       games + "/pfx"},
      {".var/app/com.heroicgameslauncher.hgl/config/heroic/config.json",
       R"({"defaultSettings":{"defaultWinePrefix":")" + games + R"("}})", games + "/default/Dawn of War"},
      {".config/heroic/config.json", R"({"defaultSettings": {"winePrefix": ")" + games + R"("}})",
       games + "/Spi\u00E9l"},
      {"", "", "Games/Heroic/Prefixes/Dawn of War/pfx"},
      {"", "", "Games/Heroic/Prefixes/default/Dawn of War"},
      // Lutris.
      {".config/lutris/games/dow-1.yml", "game:\n  arch: win32\n  prefix: " + games + "\ngame_slug: dow\n", games},
      {".local/share/lutris/games/dow-1.yml", "game:\n  prefix: ~/Games/d\u00F6w\n", "Games/d\u00F6w/pfx"},
      {".var/app/net.lutris.Lutris/config/lutris/games/dow.yml", "game:\n  prefix: " + folded + "\n", longFolder},
      {".var/app/net.lutris.Lutris/data/lutris/games/dow.yml",
       "game:\n  prefix: \"" + support::Root().string() + "/Spi\\xE9\\\n    \\ \\u4E00\"\n",
       support::Root().string() + "/Spi\u00E9 \u4E00"},
      // Bottles.
      {"", "", ".local/share/bottles/bottles/Dawn of War"},
      {"", "", ".var/app/com.usebottles.bottles/data/bottles/bottles/Dawn-of-War"},
      {".local/share/bottles/data.yml", "custom_bottles_path: " + games + "\n", games + "/Dawn of War"},
  };
  for (const Row& row : rows) {
    Restart();
    const fs::path prefix = home_ / row.prefix;
    MakePrefix(prefix);
    if (!row.file.empty()) WriteFile(home_ / row.file, row.text);
    EXPECT_EQ(Texts(platform::Prefixes()), Paths{prefix.string()}) << row.file << "\n" << row.text;
  }
}

TEST_F(Launchers, AreAskedInTheirOrderEachPrefixOnceAndNothingElseMatters) {
  const fs::path steam = home_ / ".local" / "share" / "Steam";
  const fs::path lutris = home_ / ".config" / "lutris" / "games";
  const Paths prefixes = {support::Prefix(),
                          home_ / ".wine",
                          steam / "steamapps/compatdata/1/pfx",
                          disk_ / "steamapps/compatdata/1",
                          home_ / "Games/Heroic/Prefixes/x",
                          disk_ / "lutris",
                          home_ / ".local/share/bottles/bottles/x"};
  for (const fs::path prefix : prefixes) {
    fs::remove_all(prefix / "dosdevices");
    MakePrefix(prefix);
  }
  // Links to what is there already, in circles, and to nowhere.
  fs::create_directories(home_ / ".steam");
  fs::create_directory_symlink(steam, home_ / ".steam" / "root");
  fs::create_directory_symlink("steam", loop_);
  fs::create_directory_symlink("1", steam / "steamapps/compatdata/2");
  fs::create_directory_symlink("..", steam / "steamapps/compatdata/1/loop");
  fs::create_directory_symlink(".", disk_ / "lutris" / "pfx");
  fs::create_directory_symlink("/nowhere", home_ / ".local/share/bottles/bottles/gone");
  // What is damaged, no file, or names what is not there, stops nothing that follows.
  WriteFile(steam / "config" / "libraryfolders.vdf", "\"libraryfolders\" { \"0\" { \"path\" \"/vanished\" \"1\" \"\\");
  WriteFile(steam / "steamapps" / "libraryfolders.vdf",
            "\"1\" \"" + steam.string() + "/\" \"2\" \"\" \"3\" \"" + disk + "\" } } \"4\" \"/cut o");
  WriteFile(lutris / "1.yml", "game: {prefix: [\n\t\xFF");
  WriteFile(lutris / "2.yml", "prefix: /vanished/prefix\nother: " + disk + "/lutris\nmore: \"" + disk);
  fs::create_directories(lutris / "3.yml");
  ASSERT_EQ(mkfifo((lutris / "4.yml").c_str(), 0600), 0);
  fs::create_directories(home_ / ".config" / "heroic" / "config.json");
  fs::create_directories(home_ / "Games/Heroic/Prefixes/no prefix/drive_c");
  EXPECT_EQ(Texts(platform::Prefixes()), prefixes);
  EXPECT_EQ(Texts(platform::SteamLibraries()), (Paths{steam, disk_}));
}

TEST_F(Launchers, TheFirstPrefixThatHasTheKeyAnswersInPathsOnTheToolsDrives) {
  const fs::path other = home_ / "Games" / "Heroic" / "Prefixes" / "x";
  const auto onZ = [](const fs::path& path) {
    std::string text = "Z:" + platform::Shown({path.native()});
    std::ranges::replace(text, '/', '\\');
    return text;
  };
  struct Row {
    std::string own;    // as the registry of the tool's prefix has it; empty when it has none
    std::string other;  // the same of another prefix
    std::string expected;
  };
  const Row rows[] = {
      {R"("D:\\DoW")", R"("C:\\DoW")", "D:\\DoW"},
      {"dword:00000007", R"("C:\\DoW")", "7"},
      {"", R"("C:\\DoW\\")", onZ(other / "drive_c" / "DoW")},
      {"", R"(str(2):"t:/Common\\DoW")", onZ(disk_ / "Common" / "DoW")},
      {"", R"("S:\\DoW")", "G:\\DoW"},
      {"", R"("z:\\opt\\DoW")", "Z:\\opt\\DoW"},
      {"", R"("z:\\")", "Z:\\"},
      {"", R"("E:\\DoW")", ""},
      {"", R"("U:\\DoW")", ""},
      {"", R"("DoW")", "DoW"},
      {"", R"("")", ""},
  };
  for (const Row& row : rows) {
    Restart();
    MakePrefix(home_ / ".wine", row.own);
    MakePrefix(other, row.other);
    const fs::path devices = other / "dosdevices";
    fs::create_directories(home_ / "g");
    fs::create_directories(home_ / u8"\u4E00");
    fs::create_directory_symlink(home_ / "g", home_ / ".wine" / "dosdevices" / "g:");
    fs::create_directory_symlink(home_ / "g", devices / "s:");
    fs::create_directory_symlink(disk_, devices / "t:");
    fs::create_directory_symlink(home_ / u8"\u4E00", devices / "u:");
    EXPECT_EQ(Registered(), row.expected) << row.own << " " << row.other;
  }
}

}  // namespace
