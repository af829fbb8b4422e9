#include "platform/files.h"

#include <gtest/gtest.h>
#include <filesystem>
#include <string>

#include "tests/support/own_folder.h"

namespace fs = std::filesystem;
using platform::FileBytes;
using platform::HostPath;
using platform::ReplaceFile;
using support::ReadFile;
using support::WriteFile;

namespace {

class Files : public testing::Test {
 protected:
  void SetUp() override {
    support::Reset();
    fs::create_directory(folder_);
    WriteFile(file_, "old");
  }

  static std::error_code Replace(const fs::path& file, std::string_view bytes) {
    return ReplaceFile(HostPath{file.native()}, bytes);
  }

  std::size_t CountEntries() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
  }

  const fs::path folder_ = support::Root() / u8"f\u00F6lder";
  const fs::path file_ = folder_ / "File.txt";
};

TEST_F(Files, AReadOnlyFileIsNotReplaced) {
  fs::permissions(file_, fs::perms(0444));
  EXPECT_EQ(Replace(file_, "new"), std::errc::permission_denied);
  EXPECT_EQ(ReadFile(file_), "old");
}

TEST_F(Files, AnotherSpellingIsReplacedNotJoined) {
  EXPECT_FALSE(Replace(support::Root() / u8"F\u00D6LDER" / "fILE.TXT", "new"));
  EXPECT_EQ(ReadFile(file_), "new");
  EXPECT_EQ(CountEntries(), 1U);
}

TEST_F(Files, WhatALostRunLeftBehindIsTakenOver) {
  WriteFile(folder_ / ".gantrel-new", "half");
  EXPECT_FALSE(Replace(file_, "new"));
  EXPECT_EQ(ReadFile(file_), "new");
  EXPECT_EQ(CountEntries(), 1U);
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
