#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "tests/platform/replacing_files.h"

namespace fs = std::filesystem;
using platform::FileBytes;
using platform::FileRefusal;
using support::ReadFile;
using support::WriteFile;

namespace {

class Files : public ReplacingFiles {};

TEST_F(Files, WhatIsNotReadOrReplacedIsSaid) {
  fs::permissions(file_, fs::perms(0444));
  WriteFile(folder_ / "large", "");
  fs::resize_file(folder_ / "large", FileBytes::kMost + 1);
  const std::error_code missing = std::make_error_code(std::errc::no_such_file_or_directory);
  const std::error_code folder = std::make_error_code(std::errc::is_a_directory);
  struct Row {
    fs::path path;
    std::error_code reading;
    std::error_code replacing;
  };
  const Row rows[] = {
      {file_, {}, std::make_error_code(std::errc::permission_denied)},
      {folder_, folder, folder},
      {folder_ / "", folder, folder},
      {folder_ / "missing" / "file", missing, missing},
      {folder_ / "missing", missing, {}},
      {folder_ / "large", FileRefusal::TooLarge, {}},
      {"File.txt", FileRefusal::FolderUnknown, FileRefusal::FolderUnknown},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Read(row.path), row.reading) << row.path;
    EXPECT_EQ(Replace(row.path, "new"), row.replacing) << row.path;
    EXPECT_TRUE(row.replacing || ReadFile(row.path) == "new") << row.path;
  }
  EXPECT_EQ(ReadFile(file_), "old");
}

TEST_F(Files, AnotherSpellingIsReplacedNotJoined) {
  EXPECT_FALSE(Replace(support::Root() / u8"F\u00D6LDER" / "fILE.TXT", "new"));
  EXPECT_EQ(ReadFile(file_), "new");
  EXPECT_EQ(CountEntries(), 1);
}

TEST_F(Files, WhatHasTheNameOfTheNewFileStopsNothing) {
  fs::create_directories(folder_ / ".gantrel-new" / "full");
  EXPECT_FALSE(Replace(file_, "new"));
  EXPECT_EQ(ReadFile(file_), "new");
  EXPECT_EQ(CountEntries(), 2);
}

// Two writers of two files in one folder, as two instances are, and somebody who reads what they write.
TEST_F(Files, SeveralAtOnceWriteNothingButTheirOwn) {
  constexpr std::size_t kTimes = 40;
  std::atomic<int> atWork = 2;
  const auto write = [&](const fs::path& file, char letter) {
    for (std::size_t i = 1; i <= kTimes; ++i) {
      const auto failure = Replace(file, std::string(i * 1000, letter));
      EXPECT_FALSE(failure) << failure.message();
    }
    --atWork;
  };
  const auto holds = [](const fs::path& file, char letter) {
    FileBytes bytes;
    const auto failure = bytes.Read({file.native()});
    EXPECT_FALSE(failure) << failure.message();
    const auto count = std::ranges::count(bytes.View(), letter);
    return count > 0 && count % 1000 == 0 && count == std::ssize(bytes.View());
  };
  const fs::path other = folder_ / "Other.txt";
  WriteFile(file_, std::string(1000, 'a'));
  WriteFile(other, std::string(1000, 'b'));
  std::thread first(write, file_, 'a');
  std::thread second(write, other, 'b');
  while (atWork > 0) {
    EXPECT_TRUE(holds(file_, 'a'));
    EXPECT_TRUE(holds(other, 'b'));
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  first.join();
  second.join();
  EXPECT_EQ(ReadFile(file_), std::string(kTimes * 1000, 'a'));
  EXPECT_EQ(ReadFile(other), std::string(kTimes * 1000, 'b'));
  EXPECT_EQ(CountEntries(), 2);
}

}  // namespace
