#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/platform/replacing_files.h"

namespace fs = std::filesystem;
using platform::FileBytes;
using support::ReadFile;
using support::WriteFile;

namespace {

class Files : public ReplacingFiles {};

TEST_F(Files, AReadOnlyFileIsNotReplaced) {
  fs::permissions(file_, fs::perms(0444));
  EXPECT_EQ(Replace(file_, "new"), std::errc::permission_denied);
  EXPECT_EQ(ReadFile(file_), "old");
}

TEST_F(Files, AnotherSpellingIsReplacedNotJoined) {
  EXPECT_FALSE(Replace(support::Root() / u8"F\u00D6LDER" / "fILE.TXT", "new"));
  EXPECT_EQ(ReadFile(file_), "new");
  EXPECT_EQ(CountEntries(), 1);
}

TEST_F(Files, WhatALostRunLeftBehindIsTakenOver) {
  WriteFile(folder_ / ".gantrel-new", "half");
  EXPECT_FALSE(Replace(file_, "new"));
  EXPECT_EQ(ReadFile(file_), "new");
  EXPECT_EQ(CountEntries(), 1);
}

TEST_F(Files, AFolderIsNoFile) {
  FileBytes bytes;
  for (const fs::path& folder : {folder_, folder_ / ""}) {
    EXPECT_EQ(bytes.Read({folder.native()}), std::errc::is_a_directory) << folder;
    EXPECT_EQ(Replace(folder, "new"), std::errc::is_a_directory) << folder;
  }
}

TEST_F(Files, WhatIsMissingIsSaidToBe) {
  FileBytes bytes;
  for (const fs::path& file : {folder_ / "missing", folder_ / "missing" / "file"}) {
    EXPECT_EQ(bytes.Read({file.native()}), std::errc::no_such_file_or_directory) << file;
  }
  EXPECT_EQ(Replace(folder_ / "missing" / "file", "new"), std::errc::no_such_file_or_directory);
}

}  // namespace
