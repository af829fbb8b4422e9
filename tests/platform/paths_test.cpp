#include "platform/paths.h"

#include <gtest/gtest.h>

#include "platform/code_page.h"
#include "platform/folders.h"
#include "support/own_folder.h"

#ifdef _WIN32
#include "platform/windows/system.h"
#include "platform/windows/wide.h"
#else
#include <unistd.h>

#include "platform/linux/drives.h"
#endif

using namespace support;
using platform::AsSpelledOnDisk;
using platform::ListSubfolders;
using platform::ToHostPath;
using platform::ToWindowsPath;
using Names = std::vector<std::string>;

namespace {

class Paths : public testing::Test {
 protected:
  void SetUp() override {
    Reset();
    fs::create_directories(games_);
    if (!fs::exists(devices_)) return;
    fs::create_directories(mounted_);
    fs::create_directory_symlink(Root(), devices_ / "f:");
    fs::create_directory_symlink(mounted_, devices_ / "g:");
    fs::create_symlink("/nowhere", devices_ / "q:");
    fs::create_symlink("h:", devices_ / "h:");
  }

  const fs::path games_ = DriveC() / "Games";
  const fs::path prefix_ = DriveC().parent_path();   // all three on drive C:
  const fs::path devices_ = prefix_ / "dosdevices";  // of a compatibility prefix
  const fs::path mounted_ = Root() / "mounted";
};

TEST_F(Paths, AWindowsPathLeadsBelowItsDrive) {
  using Host = std::optional<fs::path>;
  const std::tuple<std::string, Host, Host> rows[] = {
      {"c:/Games/DoW/x.module", devices_ / "c:/Games/DoW/x.module", "c:\\Games\\DoW\\x.module"},
      {"C:\\Spi\xE9le \x80\\", devices_ / u8"c:/Spi\u00E9le \u20AC/", u8"C:\\Spi\u00E9le \u20AC\\"},
      {"C:", devices_ / "c:", "C:\\"},
      {"C:x", devices_ / "c:/x", "C:\\x"},
      {"g:\\\\a", devices_ / "g:/a", {}},
      {"H:\\x", devices_ / "h:/x", {}},  // a link that cannot be read
      {"Q:\\x", {}, {}},
      {"/opt/x/", "/opt/x/", {}},
      {"\\\\server\\share\\x", {}, "\\\\server\\share\\x"},
      {"Games\\DoW", {}, {}},
      {"1:\\x", {}, {}},
      {"", {}, {}},
  };
  for (const auto& [path, inPrefix, onWindows] : rows) {
    const auto& expected = fs::exists(devices_) ? inPrefix : onWindows;
    EXPECT_EQ(ToHostPath(path).value_or("").native(), expected.value_or("").native()) << path;
  }
}

TEST_F(Paths, AFileIsNamedOnTheDriveThatIsNearestAboveItWhereTheCodePageSpellsIt) {
  using Row = std::pair<fs::path, std::optional<std::string>>;
#ifdef _WIN32
  const Row rows[] = {
      {u8"C:/Games/D\u00F6W/W40k.exe", "C:\\Games\\D\xF6W\\W40k.exe"},
      {"//server/share/x", "\\\\server\\share\\x"},
      {"\\\\?\\C:\\x", "C:\\x"},
      {"\\\\?\\UNC\\server\\share\\x", "\\\\server\\share\\x"},
      {u8"C:\\\u017Bycie", {}},  // not the plain Z
  };
  EXPECT_EQ(platform::DisplayName(L"C:\\\u017B \xD83D\xDE00"), "C:\\? ?");
#else
  fs::create_directory_symlink("/usr", DriveC() / "linked");
  fs::create_directory_symlink("/usr", devices_ / "u:");
  const Row rows[] = {
      {devices_ / "c:" / "Games" / "W40k.exe", "C:\\Games\\W40k.exe"},
      {DriveC() / "linked" / "W40k.exe", "C:\\linked\\W40k.exe"},
      {games_ / ".." / "a", "C:\\a"},
      {mounted_ / u8"Spi\u00E9le" / "x", "G:\\Spi\xE9le\\x"},
      {"/usr2/x", "Z:\\usr2\\x"},  // not below the drive /usr
      {"/usr/x", "U:\\x"},
      {u8"/\u017Bycie/x", {}},
      {"/back\\slash", {}},
      {"/not utf-8 \xFF", {}},
      {"/overlong \xE0\x80\xAF", {}},
      {u8"/\U00010041", {}},  // not truncated to A
  };
  EXPECT_EQ(platform::MapToWindows(std::nullopt, "/usr/x"), "Z:\\usr\\x");
  EXPECT_EQ(platform::DisplayName("/\u017B \U0001F600 \u20AC"), "/? ? \x80");
#endif
  for (const auto& [host, windows] : rows) EXPECT_EQ(ToWindowsPath(host), windows) << host;
}

TEST_F(Paths, SpellingOnTheDiskWinsOverLetterCase) {
  fs::create_directories(games_ / u8"B\u00DCRO \u0153" / "x");
  WriteFile(games_ / "file", "");
  const fs::path given = DriveC() / "gAMES";
  const std::pair<fs::path, fs::path> rows[] = {
      {given / u8"b\u00FCro \u0152/X/New.txt", games_ / u8"B\u00DCRO \u0153/x/New.txt"},
      {given / u8"b\u00FCro \u0152/", games_ / u8"B\u00DCRO \u0153/"},
      {given / u8"missing/b\u00FCro \u0152", games_ / u8"missing/b\u00FCro \u0152"},
      {given / "b?ro*", games_ / "b?ro*"},
      {given / "FILE" / "x", games_ / "file" / "x"},
#ifdef _WIN32
      {"c:/gAMES", "c:\\Games"},
      {"C:\\", "C:\\"},
      {"\\\\?\\C:\\gAMES", "\\\\?\\C:\\Games"},
      {"\\\\server.invalid\\Share\\x", "\\\\server.invalid\\Share\\x"},
#endif
  };
  for (const auto& [path, spelled] : rows) EXPECT_EQ(AsSpelledOnDisk(path), spelled);
  EXPECT_TRUE(platform::SameName("a\xE4\xFF\x9A\x9C\x9E", "A\xC4\x9F\x8A\x8C\x8E"));
  EXPECT_FALSE(platform::SameName("\xF7", "\xD7")) << "signs are no letters";
  EXPECT_TRUE(platform::ComesBefore("A", "a") && !platform::ComesBefore("a", "A")) << "there is one order";
}

TEST_F(Paths, SubfoldersAreThoseTheGameCanFind) {
  for (const char8_t* const name : {u8"b", u8"\u00C4a", u8"A", u8"\u00E4b", u8".hidden", u8"\u017Bycie", u8"a2"}) {
    fs::create_directories(games_ / name);
  }
  WriteFile(games_ / "file", "");
#ifdef _WIN32
  fs::create_directories(games_ / "hidden");
  SetFileAttributesW((games_ / "hidden").c_str(), FILE_ATTRIBUTE_HIDDEN);
#else
  fs::create_directories(games_ / "not utf-8 \xFF");
  fs::create_symlink("/dev/null", games_ / "link to a file");
  fs::create_symlink("nowhere", games_ / "dangling");
  fs::remove(games_ / "a2");
  fs::create_directory_symlink("b", games_ / "a2");
#endif
  const Names names = {"A", "a2", "b", "\304a", std::string("\xE4") + "b"};
  EXPECT_EQ(ListSubfolders("C:\\Games\\"), names);
  EXPECT_EQ(ListSubfolders("c:/games"), names);
  EXPECT_EQ(ListSubfolders("C:\\Games\\B\\"), Names());
  for (const char* const none : {"C:\\Games\\missing", "C:\\Games\\file", "Q:\\"}) EXPECT_FALSE(ListSubfolders(none));
  const platform::FoldersBelow present("C:\\");
  for (const char* const folder : {"", "gAMES", "Games\\B", "games/b"})
    EXPECT_FALSE(present.IsMissing(folder)) << folder;
  for (const char* const folder : {"Game", "Games\\none", "Games\\file"})
    EXPECT_TRUE(present.IsMissing(folder)) << folder;
}

#ifdef _WIN32

TEST_F(Paths, WhatIsLongerThanTheSystemsUsualLimitIsGivenInTheLiteralForm) {
  const std::wstring longName(300, L'x');
  EXPECT_EQ(platform::ToSystem(L"C:\\y\\..\\" + longName), L"\\\\?\\C:\\" + longName);
  EXPECT_EQ(platform::ToSystem(L"\\\\server\\share\\" + longName), L"\\\\?\\UNC\\server\\share\\" + longName);
}

#else

TEST_F(Paths, OfSeveralSpellingsTheGivenOneWinsThenTheFirst) {
  constexpr const char* kNames[][3] = {{"ab", "aB", "AB"}, {"cd", "cD", "CD"}, {"ef", "eF", "EF"}, {"gh", "gH", "GH"}};
  for (const auto& [small, given, large] : kNames) {
    fs::create_directories(games_ / small);
    fs::create_directories(games_ / large);
    EXPECT_EQ(AsSpelledOnDisk(games_ / small), games_ / small);
    EXPECT_EQ(AsSpelledOnDisk(games_ / given / ""), games_ / large / "");
  }
}

TEST_F(Paths, WithoutLinksThereAreCAndZAndWithoutAPrefixZ) {
  fs::remove(devices_ / "c:");
  fs::remove(devices_ / "z:");
  fs::create_symlink("/nowhere", devices_ / "c:");
  fs::create_symlink(mounted_, devices_ / "z:");
  EXPECT_FALSE(ToHostPath("c:\\x")) << "the link counts, even where it leads nowhere";
  EXPECT_FALSE(ToWindowsPath("/x")) << "z: is not / where it leads elsewhere";
  fs::remove_all(devices_);
  EXPECT_EQ(*ToHostPath("c:\\x"), prefix_ / "drive_c" / "x");
  EXPECT_EQ(*ToHostPath("z:\\x"), "/x");
  fs::permissions(Root(), fs::perms::others_write, fs::perm_options::add);
  for (const fs::path& owned : {prefix_, prefix_ / "system.reg"}) {
    if (chown(owned.c_str(), 1, 1) != 0) continue;  // only root may
    EXPECT_FALSE(ToHostPath("c:\\x")) << "below a folder for all, the prefix of another user is not used";
    ASSERT_EQ(chown(owned.c_str(), 0, 0), 0);
  }
  fs::remove(prefix_ / "system.reg");
  EXPECT_FALSE(ToHostPath("c:\\x"));
  EXPECT_EQ(*ToHostPath("z:\\x"), "/x");
}

#endif

}  // namespace
