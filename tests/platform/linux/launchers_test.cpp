#include "platform/linux/launchers.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "installations/registry_lookup.h"
#include "platform/file_dialog.h"
#include "platform/paths.h"
#include "platform/registry.h"
#include "support/user.h"
#include "tests/support/game.h"

namespace fs = std::filesystem;
using support::WriteFile;

namespace {

using Paths = std::vector<std::string>;

Paths Texts(const std::vector<fs::path>& paths) { return {paths.begin(), paths.end()}; }

std::string OnZ(const fs::path& path) {
  std::string text = "Z:" + platform::Shown(path);
  std::ranges::replace(text, '/', '\\');
  return text;
}

// A home and a disk without anything, and the tool outside of all prefixes.
class Launchers : public testing::Test {
 protected:
  void SetUp() override {
    support::Reset();
    fs::remove(prefix_ / "system.reg");
    fs::create_directories(disk_);
  }

  static void MakePrefix(const fs::path& folder, const std::string& installLocation = "") {
    fs::remove_all(folder / "dosdevices");
    fs::create_directories(folder / "dosdevices");
    fs::create_directories(folder / "drive_c");
    fs::create_directory_symlink("/", folder / "dosdevices" / "z:");
    const std::string key = "[Software\\\\THQ\\\\Dawn of War] 1\n\"InstallLocation\"=" + installLocation + "\n";
    WriteFile(folder / "system.reg", "WINE REGISTRY Version 2\n\n#arch=win32\n" + (installLocation.empty() ? "" : key));
  }

  const fs::path prefix_ = support::DriveC().parent_path();
  const fs::path home_ = support::Root() / "home";
  const fs::path steam_ = home_ / ".local/share/Steam";
  const fs::path disk_ = support::Root() / u8"Di\u00DFk {2}, [new]*";
  const std::string disk = disk_.string();
};

TEST_F(Launchers, HavePrefixesInTheirOwnPlacesAndWhereTheirFilesSay) {
  const std::string games = disk + "/Games";
  const std::string inLibrary = disk + "/steamapps/compatdata/4570/pfx";
  const std::string list = "\"libraryfolders\"\n{\n\t\"0\"\n\t{\n\t\t\"path\"\t\t\"" + disk + "\"\n\t\t";
  struct Row {
    std::string file;  // of the launcher, below the home folder; made when it has a name
    std::string text;
    std::string prefix;  // below the home folder if not absolute
  };
  std::vector<Row> rows = {
      {"", "", ".wine"},
      {".local/share/Steam/steamapps/x", "", ".local/share/Steam/steamapps/compatdata/4570.20250104205827/pfx"},
      {".steam/root/config/libraryfolders.vdf", list + "\"label\"\t\t\"\\\"{\"\n\t}\n}\n", inLibrary},
      {".steam/root/steamapps/libraryfolders.vdf", "\"LibraryFolders\" { \"1\"\t\"" + disk + "\" }", inLibrary},
      {".config/heroic/GamesConfig/A1.json", "{\n  \"A1\": {\n    \"winePrefix\": \"" + games + "\",\n", games},
      {".config/heroic/config.json", R"({"defaultSettings":{"winePrefix":")" + games + "\"}}", games + "/Spi\u00E9l"},
      {".var/app/com.heroicgameslauncher.hgl/config/heroic/config.json",
       "{\n\t\"defaultWinePrefix\": \"" + games + "\"}", games + "/default/Dawn of War"},
      {"", "", "Games/Heroic/Prefixes/Dawn of War/pfx"},
      {"", "", "Games/Heroic/Prefixes/default/Dawn of War"},
      {".config/lutris/games/dow.yml", "game:\n  arch: win32\n  prefix: " + games + "\ngame_slug: dow\n", games},
      {".local/share/lutris/games/dow.yml", "game:\n  prefix: ~/Games/d\u00F6w\n", "Games/d\u00F6w/pfx"},
      {".var/app/net.lutris.Lutris/config/lutris/games/dow.yml", "prefix: " + games + "/a\n  b\n", games + "/a b"},
      {".var/app/net.lutris.Lutris/data/lutris/games/dow.yml", "prefix: \"" + disk + "\\xE9\\\n  \\ \\u4E00\"\n",
       disk + "\u00E9 \u4E00"},
      {"", "", ".local/share/bottles/bottles/Dawn of War"},
      {"", "", ".var/app/com.usebottles.bottles/data/bottles/bottles/Dawn-of-War"},
      {".local/share/bottles/data.yml", "custom_bottles_path: " + games + "\n", games + "/Dawn of War"},
  };
  for (const std::string steam :
       {".steam/debian-installation", ".steam/steam", "snap/steam/common/.local/share/Steam",
        ".var/app/com.valvesoftware.Steam/.local/share/Steam", ".var/app/com.valvesoftware.Steam/data/Steam"}) {
    rows.push_back({steam + "/steamapps/libraryfolders.vdf", list + "}\n}\n", inLibrary});
  }
  for (const Row& row : rows) {
    SetUp();
    const fs::path prefix = home_ / row.prefix;
    MakePrefix(prefix);
    if (!row.file.empty()) WriteFile(home_ / row.file, row.text);
    EXPECT_EQ(Texts(platform::Prefixes()), Paths{prefix.string()}) << row.file << "\n" << row.text;
  }
}

TEST_F(Launchers, AreAskedInTheirOrderEachPrefixOnceAndNothingElseMatters) {
  const fs::path lutris = home_ / ".config/lutris/games";
  const Paths prefixes = {prefix_,
                          home_ / ".wine",
                          steam_ / "steamapps/compatdata/1/pfx",
                          disk_ / "steamapps/compatdata/1",
                          home_ / "Games/Heroic/Prefixes/x",
                          disk_ / "lutris",
                          disk_ / "lutris a",
                          disk_ / "lutris b",
                          disk_ / "lutris c",
                          home_ / ".local/share/bottles/bottles/x"};
  for (const std::string& prefix : prefixes) MakePrefix(prefix);
  // Links to what is there already, in circles, and to nowhere.
  fs::create_directories(home_ / ".steam");
  fs::create_directory_symlink("steam", home_ / ".steam/steam");
  fs::create_directory_symlink(steam_, home_ / ".steam/root");
  fs::create_directory_symlink("1", steam_ / "steamapps/compatdata/2");
  fs::create_directory_symlink("..", steam_ / "steamapps/compatdata/1/loop");
  fs::create_directory_symlink(".", disk_ / "lutris/pfx");
  fs::create_directory_symlink("/nowhere", home_ / ".local/share/bottles/bottles/gone");
  // What is damaged, no file, or names what is not there.
  WriteFile(steam_ / "config/libraryfolders.vdf", "\"libraryfolders\" { \"0\" { \"path\" \"/vanished\" \"1\" \"\\");
  WriteFile(steam_ / "steamapps/libraryfolders.vdf",
            "\"1\" \"" + steam_.string() + "/\" \"2\" \"\" \"3\" \"" + disk + "\" } } \"4\" \"/cut o");
  WriteFile(lutris / "1.yml", "game: {prefix: [\n\t\xFF");
  WriteFile(lutris / "2.yml", "prefix: /vanished/prefix\nother: " + disk + "/lutris\nmore: \"" + disk);
  const std::string path = "\"" + disk + "/lutris ";
  std::string directives;  // more than half of what is read in all
  for (int i = 1'000'000; i < 1'070'000; ++i) directives += "%TAG !" + std::to_string(i) + "! x\n";
  WriteFile(lutris / "2a.yml", std::string(20, '[') + path + "a\", [" + path + "too deep\"");
  WriteFile(lutris / "2b.yml", directives + "--- " + path + "b\"");
  WriteFile(lutris / "2c.yml", directives + "--- " + path + "too much\"");
  WriteFile(lutris / "2d.yml", path + "c\"");
  for (const char* const unread : {"too deep", "too much"}) MakePrefix(disk_ / ("lutris " + std::string(unread)));
  fs::create_directories(lutris / "3.yml");
  ASSERT_EQ(mkfifo((lutris / "4.yml").c_str(), 0600), 0);
  fs::create_directories(home_ / ".config/heroic/config.json");
  fs::create_directories(home_ / "Games/Heroic/Prefixes/no prefix/drive_c");
  EXPECT_EQ(Texts(platform::Prefixes()), prefixes);
  EXPECT_EQ(Texts(platform::SteamLibraries()), (Paths{steam_, disk_}));
}

TEST_F(Launchers, TheFirstPrefixThatHasTheValueAnswersInPathsOnTheToolsDrives) {
  const fs::path other = home_ / "Games/Heroic/Prefixes/x";
  struct Row {
    std::string own;    // the value in the registry of the tool's prefix, which has no key if this is empty
    std::string other;  // the same of another prefix
    std::string expected;
    std::uintmax_t ownSize = 0;  // of the file of the tool's prefix, if it has more than that
  };
  constexpr std::uintmax_t kMostBytes = std::uintmax_t{128} * 1024 * 1024;
  const Row rows[] = {
      {R"("D:\\DoW")", R"("C:\\DoW")", "D:\\DoW"},
      {"dword:00000007", R"("C:\\DoW")", "7"},
      {"", R"("C:\\DoW\\")", OnZ(other / "drive_c/DoW")},
      {"damaged", R"("C:\\DoW")", OnZ(other / "drive_c/DoW")},
      {R"("D:\\DoW")", R"("C:\\DoW")", "D:\\DoW", kMostBytes},
      {R"("D:\\DoW")", R"("C:\\DoW")", OnZ(other / "drive_c/DoW"), kMostBytes + 1},
      {"", R"(str(2):"t:/Common\\DoW")", OnZ(disk_ / "Common/DoW")},
      {"", R"("S:\\DoW")", "G:\\DoW"},
      {"", R"("z:\\opt\\DoW")", "Z:\\opt\\DoW"},
      {"", R"("E:\\DoW")", ""},
      {"", R"("U:\\DoW")", ""},
      {"", R"("DoW")", "DoW"},
  };
  for (const Row& row : rows) {
    SetUp();
    MakePrefix(home_ / ".wine", row.own);
    if (row.ownSize != 0) fs::resize_file(home_ / ".wine/system.reg", row.ownSize);
    MakePrefix(other, row.other);
    for (const fs::path& folder : {home_ / "\u4E00", steam_}) fs::create_directories(folder);
    fs::create_directory_symlink(steam_.parent_path(), home_ / ".wine/dosdevices/g:");
    for (const auto& [letter, folder] :
         {std::pair("s:", home_ / ".local/share"), {"t:", disk_}, {"u:", home_ / "\u4E00"}})
      fs::create_directory_symlink(folder, other / "dosdevices" / letter);
    EXPECT_EQ(GetKeyValue(platform::kHkeyLocalMachine, "Software\\THQ\\Dawn of War", "InstallLocation"), row.expected)
        << row.own << " " << row.other;
  }
}

TEST_F(Launchers, AreOfferedByTheFileDialogWhichChangesNothing) {
  using namespace support;
  const std::string notUtf8 = disk + "/\xFC";
  const fs::path game = disk_ / u8"steamapps/common/D\u00F6W";
  WriteFile(steam_ / "steamapps/libraryfolders.vdf", "\"1\" \"" + notUtf8 + "\" \"2\" \"" + disk + "\"");
  WriteFile(steam_ / "steamapps/common/Other/W40k.exe/no game", "");
  for (const fs::path& folder : {fs::path(notUtf8) / "steamapps/common/DoW", game, game / ".hidden"})
    WriteFile(folder / "W40K.EXE", "");
  for (const fs::path& prefix : {steam_ / "steamapps/compatdata/1/pfx", home_ / ".wine"}) MakePrefix(prefix);
  const Paths starts = {notUtf8 + "/steamapps/common/DoW", game, home_ / ".wine/drive_c",
                        steam_ / "steamapps/compatdata/1/pfx/drive_c", home_};
  EXPECT_EQ(Texts(platform::StartFolders("w40k.exe")), starts);
  const auto inHome = [&] { return std::distance(fs::recursive_directory_iterator(home_), {}); };
  const auto before = inHome();
  const Act enter = Press(Key::Enter);
  const Act look = [&] {
    EXPECT_EQ(Entries("fileTypeCombo"), (Names{"W40k.exe", "All Files"}));
    const Names places = {"~", "~/.local/share/Steam/steamapps/common", platform::Shown(disk + "/steamapps/common"),
                          "~/.wine/drive_c", "~/.local/share/Steam/steamapps/compatdata/1/pfx/drive_c"};
    EXPECT_EQ(Entries("sidebar"), places);
  };
  const Act open = InTurn({Click("cmdnew"), enter, look});
  const Act openHidden = InTurn({GoTo("treeView"), Type(".h"), Press(Key::Delete), enter, GoTo("fileNameEdit")});
  EXPECT_FALSE(Use({open, openHidden, Type("W40K.EXE"), enter, [&] {
                      EXPECT_EQ(Entries("lstGames"), Names{"Dawn of War (" + OnZ(game / ".hidden" / "") + ")"});
                    }}));
  EXPECT_EQ(inHome(), before);
}

}  // namespace
