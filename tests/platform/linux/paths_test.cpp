#include "platform/paths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/drives.h"
#include "support/linux/prefix.h"
#include "support/own_folder.h"

namespace fs = std::filesystem;
using platform::AsSpelledOnDisk;
using platform::HostPath;
using platform::MapToHost;
using platform::MapToWindows;

namespace {

class Paths : public testing::Test {
 protected:
  void SetUp() override {
    support::Reset();
    fs::create_directories(games_);
    fs::create_directory_symlink(games_, support::Prefix() / "dosdevices" / "g:");
    fs::create_symlink("/dev/null", support::Prefix() / "dosdevices" / "com1");
    fs::create_symlink("/dev/null", support::Prefix() / "dosdevices" / "d::");
    fs::create_symlink("/nowhere", support::Prefix() / "dosdevices" / "e:");
  }

  std::string prefix_ = support::Prefix().native();
  std::optional<HostPath> drives_ = HostPath{prefix_};
  fs::path games_ = support::Root() / "mounted" / "games";
};

TEST_F(Paths, AWindowsPathLeadsBelowItsDrive) {
  struct Row {
    std::string windows;
    std::optional<std::string> host;
  };
  const std::string devices = prefix_ + "/dosdevices/";
  const Row rows[] = {
      {"C:\\Games\\DoW\\", devices + "c:/Games/DoW/"},
      {"c:/Games//DoW/x.module", devices + "c:/Games/DoW/x.module"},
      {"g:\\\\a", devices + "g:/a"},
      {"C:\\Spi\xE9le \x80\\", devices + "c:/Spi\u00E9le \u20AC/"},
      {"C:", devices + "c:"},
      {"Z:\\opt\\x", devices + "z:/opt/x"},
      {"/opt/x/", "/opt/x/"},
      {"D:\\x", {}},
      {"E:\\x", {}},
      {"\\\\server\\share", {}},
      {"Games\\DoW", {}},
      {"1:\\x", {}},
      {"", {}},
  };
  for (const Row& row : rows) {
    const auto path = MapToHost(drives_, row.windows);
    EXPECT_EQ(path ? std::optional(path->text) : std::nullopt, row.host) << row.windows;
  }
}

TEST_F(Paths, WithoutLinksThereAreCAndZ) {
  fs::remove_all(support::Prefix() / "dosdevices");
  EXPECT_EQ(MapToHost(drives_, "c:\\x")->text, prefix_ + "/drive_c/x");
  EXPECT_EQ(MapToHost(drives_, "z:\\x")->text, "/x");
  EXPECT_EQ(MapToHost(std::nullopt, "z:\\x")->text, "/x") << "without a prefix, too";
  EXPECT_FALSE(MapToHost(std::nullopt, "c:\\x"));
}

TEST_F(Paths, AFileIsNamedOnTheDriveThatIsNearestAboveIt) {
  fs::create_directory(support::DriveC() / "Games");
  fs::create_directory_symlink("/usr", support::DriveC() / "linked");
  struct Row {
    fs::path host;
    std::optional<std::string> windows;
  };
  const Row rows[] = {
      {support::DriveC() / "Games" / "W40k.exe", "C:\\Games\\W40k.exe"},
      {support::Prefix() / "dosdevices" / "c:" / "Games" / "W40k.exe", "C:\\Games\\W40k.exe"},
      {support::DriveC() / "linked" / "W40k.exe", "C:\\linked\\W40k.exe"},
      {support::DriveC() / "Games" / ".." / "a", "C:\\a"},
      {games_ / "Spi\u00E9le" / "x", "G:\\Spi\xE9le\\x"},
      {"/usr/W40k.exe", "Z:\\usr\\W40k.exe"},
      {"/W40k.exe", "Z:\\W40k.exe"},
      {"/\u017Bycie/x", {}},
      {"/back\\slash", {}},
      {"/not utf-8 \xFF", {}},
  };
  for (const Row& row : rows) EXPECT_EQ(MapToWindows(drives_, {row.host.native()}), row.windows) << row.host;
  EXPECT_EQ(MapToWindows(std::nullopt, {"/usr/x"}), "Z:\\usr\\x");
}

TEST_F(Paths, SpellingOnTheDiskWinsOverLetterCase) {
  fs::create_directories(games_ / "B\u00DCRO \u0153" / "x");
  fs::create_directories(games_ / "two");
  fs::create_directories(games_ / "TWO");
  const std::string games = games_.native();
  struct Row {
    std::string given;
    std::string spelled;
  };
  const Row rows[] = {
      {"/b\u00FCro \u0152/X/New.txt", "/B\u00DCRO \u0153/x/New.txt"},
      {"/two", "/two"},
      {"/Two/", "/TWO/"},
      {"/missing/TWO", "/missing/TWO"},
      {"/b?ro \u0153", "/b?ro \u0153"},
  };
  for (const Row& row : rows) EXPECT_EQ(AsSpelledOnDisk({games + row.given}).text, games + row.spelled);
}

TEST_F(Paths, ThePrefixIsTheOneAboveTheExecutableOrThatInTheHomeFolder) {
  EXPECT_EQ(platform::PrefixFolder()->text, prefix_);
  fs::remove(support::Prefix() / "system.reg");
  EXPECT_FALSE(platform::PrefixFolder());
  fs::create_directory(support::Root() / "home" / ".wine");
  EXPECT_EQ(platform::PrefixFolder()->text, (support::Root() / "home" / ".wine").native());
}

TEST_F(Paths, SubfoldersAreThoseTheGameCanFind) {
  for (const char* const name : {"b", "\u00C4a", "A", "\u00E4b", ".hidden", "\u017Bycie", "not utf-8 \xFF", "a2"}) {
    fs::create_directories(games_ / name);
  }
  support::WriteFile(games_ / "file", "");
  fs::create_directory_symlink("b", games_ / "link");
  fs::create_symlink("file", games_ / "link to a file");
  fs::create_symlink("nowhere", games_ / "dangling");
  const std::vector<std::string> names = {"A",
                                          "a2",
                                          "b",
                                          "link",
                                          "\304a",
                                          "\xE4"
                                          "b"};
  EXPECT_EQ(platform::ListSubfolders("g:\\"), names);
  EXPECT_FALSE(platform::ListSubfolders("g:\\missing"));
  EXPECT_FALSE(platform::ListSubfolders("g:\\file"));
  EXPECT_EQ(platform::ListSubfolders("G:\\B"), std::vector<std::string>());
}

}  // namespace
