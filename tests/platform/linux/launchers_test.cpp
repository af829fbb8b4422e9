#include "platform/linux/launchers.h"

#include <sys/stat.h>

#include <algorithm>
#include <iterator>

#include "installations/registry_lookup.h"
#include "platform/file_dialog.h"
#include "platform/registry.h"
#include "tests/support/game.h"

using namespace support;

namespace {

Names Texts(const std::vector<fs::path>& paths) { return {paths.begin(), paths.end()}; }

std::string OnZ(const fs::path& path) {
  std::string text = "Z:" + platform::DisplayName(path);
  std::ranges::replace(text, '/', '\\');
  return text;
}

// An empty home and disk; the tool is outside all prefixes.
class Launchers : public testing::Test {
 protected:
  void SetUp() override {
    Reset();
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

  const fs::path prefix_ = DriveC().parent_path();
  const fs::path home_ = Root() / "home";
  const fs::path steam_ = home_ / ".local/share/Steam";
  const fs::path disk_ = Root() / u8"Di\u00DFk {2}, [new]*";
  const std::string disk = disk_.string();
};

TEST_F(Launchers, HavePrefixesInTheirOwnPlacesAndWhereTheirFilesSayInThisOrderAndEachOnce) {
  const std::string lutris = ".config/lutris/games/";
  const std::string flatpak = ".var/app/";
  const std::string heroic = "Games/Heroic/Prefixes/";
  const auto library = [this](const char* name) { return disk + "/" + name + "/steamapps/compatdata/1"; };
  const auto list = [this](const char* name) { return R"("libraryfolders" { "0" { "path" ")" + disk + "/" + name; };
  std::string directives;  // more than half of the total limit
  for (int i = 1'000'000; i < 1'070'000; ++i) directives += "%TAG !" + std::to_string(i) + "! x\n";
  // A prefix and the launcher's file that names it, relative to the home folder unless absolute.
  const std::array<std::string, 3> rows[] = {
      {prefix_.string()},
      {".wine"},
      {".local/share/Steam/steamapps/compatdata/4570.20250104205827/pfx"},
      {library("a"), ".local/share/Steam/steamapps/libraryfolders.vdf", list("a") + R"(" "label" "\"{" } })"},
      {library("b"), ".local/share/Steam/config/libraryfolders.vdf",
       R"("1" "/vanished" "2" "" "3" ")" + disk + "/b\" \"/c"},
      {library("c"), flatpak + "com.valvesoftware.Steam/.local/share/Steam/config/libraryfolders.vdf",
       list("c") + "\""},
      {library("d"), flatpak + "com.valvesoftware.Steam/data/Steam/config/libraryfolders.vdf", list("d") + "\""},
      {library("e"), "snap/steam/common/.local/share/Steam/config/libraryfolders.vdf", list("e") + "\""},
      {library("f"), ".steam/debian-installation/config/libraryfolders.vdf", list("f") + "\""},
      {library("g"), ".steam/root/config/libraryfolders.vdf", list("g") + "\""},
      {library("h"), ".steam/steam/config/libraryfolders.vdf", list("h") + "\""},
      {disk + "/1", ".config/heroic/GamesConfig/A1.json", "{ \"A1\": {\n\"winePrefix\": \"" + disk + "/1\",\n"},
      {disk + "/2/Spi\u00E9l", ".config/heroic/config.json", R"({"defaultSettings":{"winePrefix":")" + disk + "/2\"}}"},
      {disk + "/3/default/Dawn of War", flatpak + "com.heroicgameslauncher.hgl/config/heroic/config.json",
       "{\n\t\"defaultWinePrefix\": \"" + disk + "/3\"}"},
      {heroic + "Dawn of War/pfx"},
      {heroic + "default/Dawn of War"},
      {disk + "/4", lutris + "1.yml", "game:\n  arch: win32\n  prefix: " + disk + "/4\ngame_slug: dow\n"},
      {disk + "/5", lutris + "2.yml", std::string(20, '[') + '"' + disk + "/5\", [\"" + disk + "/too deep\""},
      {disk + "/6", lutris + "3.yml", directives + "--- \"" + disk + "/6\""},
      {disk + "/7", lutris + "5.yml", "\"" + disk + "/7\", game: {prefix: [\n\t"},
      {"Games/d\u00F6w/pfx", ".local/share/lutris/games/dow.yml", "game:\n  prefix: ~/Games/d\u00F6w\n"},
      {disk + "/8 b", flatpak + "net.lutris.Lutris/config/lutris/games/dow.yml", "prefix: " + disk + "/8\n  b\n"},
      {disk + "/\u00E9 \u4E00", flatpak + "net.lutris.Lutris/data/lutris/games/dow.yml",
       "prefix: \"" + disk + "/\\xE9\\\n  \\ \\u4E00\"\n"},
      {disk + "/9/Dawn of War", ".local/share/bottles/data.yml", "custom_bottles_path: " + disk + "/9\n"},
      {".local/share/bottles/bottles/Dawn of War"},
      {flatpak + "com.usebottles.bottles/data/bottles/bottles/Dawn-of-War"},
  };
  Names prefixes;
  for (const auto& [prefix, file, text] : rows) {
    prefixes.push_back((home_ / prefix).string());
    MakePrefix(prefixes.back());
    if (!file.empty()) WriteFile(home_ / file, text);
  }
  // Duplicate, circular and broken links; things that are no file or no prefix, or too large.
  fs::create_directory_symlink("1", disk_ / "a/steamapps/compatdata/2");
  fs::create_directory_symlink("..", disk_ / "a/steamapps/compatdata/1/loop");
  fs::create_directory_symlink(".", disk_ / "4/pfx");
  fs::create_directory_symlink("/nowhere", home_ / ".local/share/bottles/bottles/gone");
  for (const char* const unread : {"too deep", "too much"}) MakePrefix(disk_ / unread);
  WriteFile(home_ / (lutris + "4.yml"), directives + "--- \"" + disk + "/too much\"");
  WriteFile(home_ / (lutris + "5a.yml"), "\xFF");
  ASSERT_EQ(mkfifo((home_ / (lutris + "6.yml")).c_str(), 0600), 0);
  fs::create_directories(home_ / (lutris + "7.yml"));
  fs::create_directories(home_ / heroic / "no prefix/drive_c");
  EXPECT_EQ(Texts(platform::Prefixes()), prefixes);
}

TEST_F(Launchers, TheFirstPrefixThatHasTheValueAnswersInPathsOnTheToolsDrives) {
  const fs::path other = home_ / "Games/Heroic/Prefixes/x";
  struct Row {
    std::string own;    // the value in the tool's prefix; if empty, the key is missing
    std::string other;  // the value in another prefix
    std::string expected;
    std::uintmax_t ownSize = 0;  // minimum size of the tool's registry file
  };
  constexpr std::uintmax_t kMostBytes = std::uintmax_t{128} * 1024 * 1024;
  const Row rows[] = {
      {"dword:00000007", R"("C:\\DoW")", "7"},
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
  const std::string notUtf8 = disk + "/\xFC";
  const fs::path game = disk_ / u8"steamapps/common/D\u00F6W";
  WriteFile(steam_ / "steamapps/libraryfolders.vdf", "\"1\" \"" + notUtf8 + "\" \"2\" \"" + disk + "\"");
  WriteFile(steam_ / "steamapps/common/Other/W40k.exe/no game", "");
  for (const fs::path& folder : {fs::path(notUtf8) / "steamapps/common/DoW", game, game / ".hidden"})
    WriteFile(folder / "W40K.EXE", "");
  for (const fs::path& prefix : {steam_ / "steamapps/compatdata/1/pfx", home_ / ".wine"}) MakePrefix(prefix);
  const Names starts = {notUtf8 + "/steamapps/common/DoW", game, home_ / ".wine/drive_c",
                        steam_ / "steamapps/compatdata/1/pfx/drive_c", home_};
  EXPECT_EQ(Texts(platform::StartFolders("w40k.exe")), starts);
  const auto inHome = [&] { return std::distance(fs::recursive_directory_iterator(home_), {}); };
  const auto before = inHome();
  const Act enter = Press("Return");
  const Act look = [&] {
    EXPECT_EQ(Entries("fileTypeCombo"), (Names{"W40k.exe", "All Files"}));
    const std::string steam = "~/.local/share/Steam/steamapps/";
    const std::string ofDisk = platform::DisplayName(disk + "/steamapps/common");
    const Names places = {"~", steam + "common", ofDisk, "~/.wine/drive_c", steam + "compatdata/1/pfx/drive_c"};
    EXPECT_EQ(Entries("sidebar"), places);
  };
  const Act open = InTurn({Click("cmdnew"), enter, look});
  // The dialog lists folders gradually, in its own thread.
  const Act untilListed = [&] {
    if (Entries("treeView").size() < 2) DoNext({Wait(std::chrono::milliseconds(10)), untilListed});
  };
  const Act openHidden = InTurn({untilListed, GoTo("treeView"), Type(".h"), Press("Del"), enter, GoTo("fileNameEdit")});
  EXPECT_FALSE(Use({open, openHidden, Type("W40K.EXE"), enter, [&] {
                      EXPECT_EQ(Entries("lstGames"), Names{"Dawn of War (" + OnZ(game / ".hidden" / "") + ")"});
                    }}));
  EXPECT_EQ(inHome(), before);
}

}  // namespace
