#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "tests/platform/replacing_files.h"

namespace fs = std::filesystem;
using platform::FileRefusal;
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
  fs::create_symlink("round", folder_ / "round");
  EXPECT_FALSE(Replace(folder_ / "first", "through two links"));
  EXPECT_FALSE(Replace(folder_ / "dangling", "made"));
  EXPECT_EQ(Replace(folder_ / "round", "new"), std::errc::too_many_symbolic_link_levels);
  fs::remove(folder_ / "round");
  EXPECT_TRUE(fs::is_symlink(folder_ / "first"));
  EXPECT_EQ(ReadFile(file_), "through two links");
  EXPECT_EQ(ReadFile(folder_ / "sub" / "new"), "made");
}

TEST_F(LinuxFiles, ALinkUnderTheNameOfTheNewFileIsNotWrittenTo) {
  WriteFile(folder_ / "victim", "victim");
  fs::create_symlink("victim", folder_ / ".gantrel-new");
  EXPECT_FALSE(Replace(file_, "new"));
  EXPECT_EQ(ReadFile(folder_ / "victim"), "victim");
}

TEST_F(LinuxFiles, AFileIsReadToItsEndWhateverItsSizeSays) {
  ASSERT_EQ(fs::file_size("/proc/self/status"), 0U);
  platform::FileBytes bytes;
  EXPECT_FALSE(bytes.Read({"/proc/self/status"}));
  EXPECT_TRUE(bytes.View().starts_with("Name:"));
}

constexpr uid_t kUser = 65534;
constexpr uid_t kAnother = 65533;

// How a folder with a file may be, made for real, and met by an ordinary user, since nothing is refused to root.
struct World {
  const char* name;
  bool (*make)(const fs::path& folder);  // whether this machine allows it
  const char* path;
  std::error_code reading;
  std::error_code replacing;
};

bool Permit(const fs::path& path, unsigned int mode) { return chmod(path.c_str(), mode) == 0; }

bool MountSmallDisk(const fs::path& folder) {
  if (mount("none", folder.c_str(), "tmpfs", 0, "size=64k,mode=777") != 0) return false;
  WriteFile(folder / "File.txt", "old");
  return Permit(folder / "File.txt", 0666);
}

bool MountReadOnlyDisk(const fs::path& folder) {
  return MountSmallDisk(folder) && mount("none", folder.c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, "") == 0;
}

// In a folder that all may write to.
template <uid_t kOwner>
bool Link(const fs::path& folder) {
  fs::create_symlink("File.txt", folder / "link");
  return Permit(folder, 01777) && lchown((folder / "link").c_str(), kOwner, kOwner) == 0;
}

const std::error_code kDenied = std::make_error_code(std::errc::permission_denied);
const World kWorlds[] = {
    {"full disk", MountSmallDisk, "File.txt", {}, std::make_error_code(std::errc::no_space_on_device)},
    {"read-only disk", MountReadOnlyDisk, "File.txt", {}, std::make_error_code(std::errc::read_only_file_system)},
    {"read-only file", [](auto& folder) { return Permit(folder / "File.txt", 0444); }, "File.txt", {}, kDenied},
    {"unreadable file", [](auto& folder) { return Permit(folder / "File.txt", 0222); }, "File.txt", kDenied, {}},
    {"folder that takes no new file", [](auto& folder) { return Permit(folder, 0555); }, "File.txt", {}, {}},
    {"folder that cannot be listed", [](auto& folder) { return Permit(folder, 0311); }, "fILE.TXT", kDenied, kDenied},
    {"pipe", [](auto& folder) { return mkfifo((folder / "pipe").c_str(), 0600) == 0 && Permit(folder / "pipe", 0666); },
     "pipe", FileRefusal::NotOrdinary, FileRefusal::NotOrdinary},
    {"link of the user's", Link<kUser>, "link", {}, {}},
    {"link of the folder's owner", Link<0>, "link", {}, {}},
    {"link of another", Link<kAnother>, "link", FileRefusal::LinkOfAnother, FileRefusal::LinkOfAnother},
};

TEST_F(LinuxFiles, InEveryWorldAllOrNothingIsWrittenAndTheReasonIsTheTrueOne) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can make these worlds";
  const std::string bytes(100'000, 'n');
  std::string notAllowed;
  for (const World& world : kWorlds) {
    SetUp();
    Permit(folder_, 0777);
    Permit(file_, 0666);
    if (!world.make(folder_)) {
      notAllowed += std::string(", ") + world.name;
      continue;
    }
    ASSERT_EQ(setresuid(kUser, kUser, 0), 0);
    const auto reading = Read(folder_ / world.path);
    const auto replacing = Replace(folder_ / world.path, bytes);
    ASSERT_EQ(setresuid(0, 0, 0), 0);
    EXPECT_EQ(reading, world.reading) << world.name << ": " << reading.message();
    EXPECT_EQ(replacing, world.replacing) << world.name << ": " << replacing.message();
    EXPECT_EQ(ReadFile(file_), world.replacing ? "old" : bytes) << world.name;
    EXPECT_FALSE(fs::exists(folder_ / ".gantrel-new")) << world.name;
    umount(folder_.c_str());
  }
  if (!notAllowed.empty()) GTEST_SKIP() << "tried but for what this machine does not allow" << notAllowed;
}

}  // namespace
