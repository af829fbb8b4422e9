#include "platform/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>

#ifdef _WIN32
#include "platform/windows/system.h"
#include <sddl.h>
#else
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "support/own_folder.h"

namespace fs = std::filesystem;
using platform::FileBytes;
using platform::FileRefusal;
using support::ReadFile;
using support::WriteFile;

namespace {

std::error_code Replace(const fs::path& file, std::string_view bytes) {
  return platform::ReplaceFile({file.native()}, bytes);
}
std::error_code Read(const fs::path& file) { return FileBytes().Read({file.native()}); }

// A folder with one file, "old", to be replaced.
class Files : public testing::Test {
 protected:
  void SetUp() override {
    support::Reset();
    fs::create_directory(folder_);
    WriteFile(file_, "old");
  }

  auto CountEntries() const { return std::distance(fs::directory_iterator(folder_), fs::directory_iterator()); }

  const fs::path folder_ = support::Root() / u8"f\u00F6lder";
  const fs::path file_ = folder_ / "File.txt";
};

const std::error_code kDenied = std::make_error_code(std::errc::permission_denied);
const std::error_code kMissing = std::make_error_code(std::errc::no_such_file_or_directory);
const std::error_code kFolder = std::make_error_code(std::errc::is_a_directory);

TEST_F(Files, WhatIsNotReadOrReplacedIsSaidAndWhatHasTheNameOfTheNewFileStopsNothing) {
  fs::create_directories(folder_ / ".gantrel-new" / "full");
  fs::permissions(file_, fs::perms(0444));
  WriteFile(folder_ / "large", "");
  fs::resize_file(folder_ / "large", FileBytes::kMost + 1);
  struct Row {
    fs::path path;
    std::error_code reading;
    std::error_code replacing;
  };
  const Row rows[] = {
      {file_, {}, kDenied},
      {folder_, kFolder, kFolder},
      {folder_ / "", kFolder, kFolder},
      {folder_ / "missing" / "file", kMissing, kMissing},
      {folder_ / "missing", kMissing, {}},
      {folder_ / "large", FileRefusal::TooLarge, {}},
      {"File.txt", FileRefusal::FolderUnknown, FileRefusal::FolderUnknown},
#ifdef _WIN32
      {folder_ / "NUL", FileRefusal::NotOrdinary, FileRefusal::NotOrdinary},
#endif
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Read(row.path), row.reading) << row.path;
    EXPECT_EQ(Replace(row.path, "new"), row.replacing) << row.path;
    EXPECT_TRUE(row.replacing || ReadFile(row.path) == "new") << row.path;
  }
  EXPECT_EQ(ReadFile(file_), "old");
}

// Two writers of two files in one folder, as two instances are, and somebody who reads what they write.
TEST_F(Files, SeveralAtOnceWriteNothingButTheirOwn) {
  constexpr std::size_t kTimes = 40;
  std::atomic<int> atWork = 2;
  const auto write = [&](const fs::path& file, char letter) {
    for (std::size_t i = 1; i <= kTimes; ++i)
      EXPECT_EQ(Replace(file, std::string(i * 1000, letter)), std::error_code());
    --atWork;
  };
  const auto holds = [](const fs::path& file, char letter) {
    FileBytes bytes;
    EXPECT_EQ(bytes.Read({file.native()}), std::error_code());
    const auto count = std::ranges::count(bytes.View(), letter);
    return count > 0 && count % 1000 == 0 && count == std::ssize(bytes.View());
  };
  const fs::path other = folder_ / "Other.txt";
  WriteFile(file_, std::string(1000, 'a'));
  WriteFile(other, std::string(1000, 'b'));
  std::thread first(write, file_, 'a');
  std::thread second(write, other, 'b');
  while (atWork > 0) {
    EXPECT_TRUE(holds(file_, 'a') && holds(other, 'b'));
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  first.join();
  second.join();
  EXPECT_EQ(ReadFile(file_) + ReadFile(other), std::string(kTimes * 1000, 'a') + std::string(kTimes * 1000, 'b'));
  EXPECT_EQ(CountEntries(), 2);
}

#ifdef _WIN32

// Another program that has the file open.
using Holder = std::unique_ptr<void, decltype([](HANDLE handle) { CloseHandle(handle); })>;
Holder Hold(const fs::path& file, DWORD share) {
  return Holder(CreateFileW(file.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
}

// As text, which can be compared.
std::wstring AccessRights(const fs::path& file) {
  alignas(SECURITY_DESCRIPTOR) std::array<std::byte, 4096> descriptor = {};
  DWORD size = static_cast<DWORD>(descriptor.size());
  wchar_t* text = nullptr;
  EXPECT_TRUE(GetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), size, &size) &&
              ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor.data(), SDDL_REVISION_1,
                                                                   DACL_SECURITY_INFORMATION, &text, nullptr));
  return text;
}

TEST_F(Files, AReplacedFileKeepsItsAttributesAndAccessRights) {
  const std::wstring usual = AccessRights(file_);
  PSECURITY_DESCRIPTOR own = nullptr;
  ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;FA;;;WD)", SDDL_REVISION_1, &own, nullptr));
  ASSERT_TRUE(SetFileSecurityW(file_.c_str(), DACL_SECURITY_INFORMATION, own));
  const std::wstring rights = AccessRights(file_);
  ASSERT_NE(rights, usual);
  for (const DWORD attribute : {2UL, 4UL, 32UL}) {  // hidden, system, archive
    SetFileAttributesW(file_.c_str(), attribute);
    const DWORD before = GetFileAttributesW(file_.c_str());
    EXPECT_FALSE(Replace(file_, "new"));
    EXPECT_EQ(GetFileAttributesW(file_.c_str()), before);
    EXPECT_EQ(AccessRights(file_), rights);
  }
  EXPECT_EQ(ReadFile(file_), "new");
  EXPECT_EQ(CountEntries(), 1);
}

TEST_F(Files, AProgramThatHoldsTheFileForAMomentIsWaitedFor) {
  for (const bool isRead : {true, false}) {
    Holder holder = Hold(file_, 0);
    std::thread other([&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(60));
      holder.reset();
    });
    EXPECT_FALSE(isRead ? Read(file_) : Replace(file_, "new"));
    other.join();
  }
  EXPECT_EQ(ReadFile(file_), "new");
}

TEST_F(Files, WhatAnotherProgramHoldsIsWrittenInPlaceOrStaysAndTheReasonIsSaid) {
  {
    const Holder holder = Hold(file_, FILE_SHARE_READ | FILE_SHARE_WRITE);
    for (const char* const text : {"longer than before", "s"}) {
      EXPECT_FALSE(Replace(file_, text));
      EXPECT_EQ(ReadFile(file_), text);
    }
  }
  const Holder holder = Hold(file_, FILE_SHARE_READ);
  const std::error_code failure = Replace(file_, "new");
  EXPECT_EQ(failure.value(), ERROR_SHARING_VIOLATION);
  EXPECT_NE(failure.message(), "Permission denied");
  EXPECT_EQ(ReadFile(file_), "s");
  EXPECT_EQ(CountEntries(), 1);
}

#else

TEST_F(Files, LinksAreFollowedButNotThatOfTheNewFile) {
  WriteFile(folder_ / "sub" / "victim", "victim");
  fs::create_symlink("sub/victim", folder_ / ".gantrel-new");
  fs::create_symlink("../File.txt", folder_ / "sub" / "second");
  fs::create_symlink(folder_ / "sub" / "second", folder_ / "first");
  fs::create_symlink("sub/new", folder_ / "dangling");
  fs::create_symlink("round", folder_ / "round");
  EXPECT_FALSE(Replace(folder_ / "first", "through two links"));
  EXPECT_FALSE(Replace(folder_ / "dangling", "made"));
  EXPECT_EQ(Replace(folder_ / "round", "new"), std::errc::too_many_symbolic_link_levels);
  fs::remove(folder_ / "round");
  EXPECT_TRUE(fs::is_symlink(folder_ / "first"));
  EXPECT_EQ(ReadFile(file_), "through two links");
  EXPECT_EQ(ReadFile(folder_ / "sub" / "new"), "made");
  EXPECT_EQ(ReadFile(folder_ / "sub" / "victim"), "victim");
}

constexpr uid_t kUser = 65534;
constexpr uid_t kAnother = 65533;

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

// How a folder with a file may be, made for real, and met by an ordinary user, since nothing is refused to root.
const struct World {
  const char* name;
  bool (*make)(const fs::path& folder);  // whether this machine allows it
  const char* path;
  std::error_code reading;
  std::error_code replacing;
} kWorlds[] = {
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

TEST_F(Files, InEveryWorldAllOrNothingIsWrittenAndTheReasonIsTheTrueOne) {
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

#endif

}  // namespace
