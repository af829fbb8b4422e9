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
    fs::create_symlink("h:", support::Prefix() / "dosdevices" / "h:");
  }
  void TearDown() override { fs::remove(support::Prefix() / "dosdevices" / "h:"); }

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
      {"H:\\x", devices + "h:/x"},  // where it leads, the system does not tell
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

TEST_F(Paths, OfSeveralSpellingsTheGivenOneWinsThenTheFirst) {
  constexpr const char* kNames[][3] = {{"ab", "aB", "AB"}, {"cd", "cD", "CD"}, {"ef", "eF", "EF"}, {"gh", "gH", "GH"}};
  for (const auto& [small, given, large] : kNames) {
    fs::create_directories(games_ / small);
    fs::create_directories(games_ / large);
    EXPECT_EQ(AsSpelledOnDisk({games_ / small}).text, games_ / small);
    EXPECT_EQ(AsSpelledOnDisk({games_ / given / ""}).text, games_ / large / "");
  }
}

TEST_F(Paths, ThePrefixIsTheOneAboveTheExecutableOrThatInTheHomeFolder) {
  EXPECT_EQ(platform::PrefixFolder()->text, prefix_);
  fs::remove(support::Prefix() / "system.reg");
  EXPECT_FALSE(platform::PrefixFolder());
  fs::create_directory(support::Root() / "home" / ".wine");
  EXPECT_EQ(platform::PrefixFolder()->text, (support::Root() / "home" / ".wine").native());
}

TEST_F(Paths, LinksToFoldersAreSubfolders) {
  for (const char* const name : {"b", "not utf-8 \xFF"}) fs::create_directories(games_ / name);
  fs::create_directory_symlink("b", games_ / "link");
  fs::create_symlink("/dev/null", games_ / "link to a file");
  fs::create_symlink("nowhere", games_ / "dangling");
  EXPECT_EQ(platform::ListSubfolders("g:\\"), (std::vector<std::string>{"b", "link"}));
}

}  // namespace
