#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "tests/platform/replacing_files.h"

namespace fs = std::filesystem;
using platform::FileBytes;
using support::ReadFile;
using support::WriteFile;

namespace {

class LinuxFiles : public ReplacingFiles {};

TEST_F(LinuxFiles, AReplacedFileKeepsItsPermissionsAndLeavesNothingBeside) {
  for (const auto mode : {fs::perms(0640), fs::perms(0606), fs::perms(0755)}) {
    fs::permissions(file_, mode);
    EXPECT_FALSE(Replace(file_, "new"));
    EXPECT_EQ(fs::status(file_).permissions(), mode);
  }
  EXPECT_EQ(ReadFile(file_), "new");
  EXPECT_EQ(CountEntries(), 1);
}

TEST_F(LinuxFiles, LinksAreFollowed) {
  fs::create_directory(folder_ / "sub");
  fs::create_symlink("../File.txt", folder_ / "sub" / "second");
  fs::create_symlink("sub/second", folder_ / "first");
  fs::create_symlink("sub/new", folder_ / "dangling");
  EXPECT_FALSE(Replace(folder_ / "first", "through two links"));
  EXPECT_FALSE(Replace(folder_ / "dangling", "made"));
  EXPECT_TRUE(fs::is_symlink(folder_ / "first"));
  EXPECT_EQ(ReadFile(file_), "through two links");
  EXPECT_EQ(ReadFile(folder_ / "sub" / "new"), "made");
}

TEST_F(LinuxFiles, WhatIsNoOrdinaryFileIsRefused) {
  ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0600), 0);
  for (const char* const name : {"pipe", "."}) {
    FileBytes bytes;
    EXPECT_TRUE(bytes.Read({(folder_ / name).native()})) << name;
    EXPECT_TRUE(Replace(folder_ / name, "new")) << name;
  }
  EXPECT_TRUE(fs::is_fifo(folder_ / "pipe"));
  EXPECT_EQ(Replace(folder_ / "missing" / "file", "new"), std::errc::no_such_file_or_directory);
}

// Runs what follows as another user, since nothing is refused to root. The test's process ends with the test.
void BecomeOrdinaryUser() {
  constexpr uid_t kNobody = 65534;
  if (geteuid() != 0) return;
  ASSERT_EQ(seteuid(kNobody), 0);
}

void BecomeRootAgain() { [[maybe_unused]] const int result = seteuid(getuid()); }

TEST_F(LinuxFiles, AFileIsWrittenInPlaceWhereItsFolderTakesNoNewOne) {
  fs::permissions(file_, fs::perms(0666));
  fs::permissions(folder_, fs::perms(0555));
  for (fs::path path = folder_.parent_path(); path != "/tmp" && path != "/"; path = path.parent_path()) {
    fs::permissions(path, fs::perms::others_exec, fs::perm_options::add);
  }
  BecomeOrdinaryUser();
  const auto grown = Replace(file_, "longer than before");
  const std::string afterGrowing = ReadFile(file_);
  const auto shrunk = Replace(file_, "s");
  BecomeRootAgain();
  EXPECT_FALSE(grown) << grown.message();
  EXPECT_EQ(afterGrowing, "longer than before");
  EXPECT_FALSE(shrunk) << shrunk.message();
  EXPECT_EQ(ReadFile(file_), "s");
}

TEST_F(LinuxFiles, AFullDiskLeavesTheOldFile) {
  if (mount("none", folder_.c_str(), "tmpfs", 0, "size=64k") != 0) GTEST_SKIP() << "cannot mount a small disk here";
  WriteFile(file_, "old");
  const auto failure = Replace(file_, std::string(100'000, 'x'));
  const std::string after = ReadFile(file_);
  const auto entries = CountEntries();
  umount(folder_.c_str());
  EXPECT_EQ(failure, std::errc::no_space_on_device);
  EXPECT_EQ(after, "old");
  EXPECT_EQ(entries, 1);
}

}  // namespace
