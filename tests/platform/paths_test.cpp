#include "platform/paths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/own_folder.h"

namespace fs = std::filesystem;
using platform::ListSubfolders;
using support::DriveC;

namespace {

class CommonPaths : public testing::Test {
 protected:
  void SetUp() override { support::Reset(); }

  const fs::path games_ = DriveC() / "Games";
};

TEST_F(CommonPaths, FilesAreBesideTheExecutable) {
  for (const char* const name : {"sub/H\xC9.txt", "sub\\H\xC9.txt"}) {
    EXPECT_EQ(fs::path(platform::BesideExecutable(name).text), support::ExecutableFolder() / "sub" / u8"H\u00C9.txt");
  }
}

TEST_F(CommonPaths, SpellingOnTheDiskWinsOverLetterCase) {
  fs::create_directories(games_ / u8"B\u00DCRO \u0153" / "x");
  struct Row {
    fs::path given;
    fs::path spelled;
  };
  const Row rows[] = {
      {u8"b\u00FCro \u0152/X/New.txt", u8"B\u00DCRO \u0153/x/New.txt"},
      {u8"b\u00FCro \u0152/", u8"B\u00DCRO \u0153/"},
      {u8"b\u00FCro \u0152", u8"B\u00DCRO \u0153"},
      {u8"missing/b\u00FCro \u0152", u8"missing/b\u00FCro \u0152"},
      {u8"b?ro \u0153", u8"b?ro \u0153"},
      {u8"b*", u8"b*"},
  };
  for (const Row& row : rows) {
    const fs::path given = DriveC() / "gAMES" / row.given;
    EXPECT_EQ(fs::path(platform::AsSpelledOnDisk({given.native()}).text), games_ / row.spelled) << given;
  }
}

TEST_F(CommonPaths, SubfoldersAreThoseTheGameCanFind) {
  for (const char8_t* const name : {u8"b", u8"\u00C4a", u8"A", u8"\u00E4b", u8".hidden", u8"\u017Bycie", u8"a2"}) {
    fs::create_directories(games_ / name);
  }
  support::WriteFile(games_ / "file", "");
  const std::vector<std::string> names = {"A", "a2", "b", "\304a", std::string("\xE4") + "b"};
  EXPECT_EQ(ListSubfolders("C:\\Games\\"), names);
  EXPECT_EQ(ListSubfolders("c:/games"), names);
  EXPECT_EQ(ListSubfolders("C:\\Games\\B\\"), std::vector<std::string>());
  for (const char* const none : {"C:\\Games\\missing", "C:\\Games\\file", "Q:\\"}) EXPECT_FALSE(ListSubfolders(none));
}

}  // namespace
