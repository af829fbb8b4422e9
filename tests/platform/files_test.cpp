#include "platform/files.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include "platform/windows/system.h"
#include <sddl.h>
#else
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "support/own_folder.h"

using namespace support;
using platform::FileRefusal;

namespace {

std::error_code Replace(const fs::path& file, std::string_view bytes) { return platform::ReplaceFile(file, bytes); }
std::error_code Read(const fs::path& file) {
  std::string bytes;
  return platform::ReadFile(file, bytes);
}

// A folder with one file, "old".
class Files : public testing::Test {
 protected:
  void SetUp() override {
    Reset();
    fs::create_directory(folder_);
    WriteFile(file_, "old");
  }

  const fs::path folder_ = Root() / u8"f\u00F6lder";
  const fs::path file_ = folder_ / "File.txt";
};

const std::error_code kDenied = std::make_error_code(std::errc::permission_denied);
const std::error_code kMissing = std::make_error_code(std::errc::no_such_file_or_directory);
const std::error_code kFolder = std::make_error_code(std::errc::is_a_directory);

TEST_F(Files, WhatIsNotReadOrReplacedIsSaid) {
  fs::permissions(file_, fs::perms(0444));
  WriteFile(folder_ / "large", "");
  fs::resize_file(folder_ / "large", platform::kMostBytes + 1);
#ifdef _WIN32
  const fs::path device = folder_ / "NUL";
#else
  const fs::path device = folder_ / "pipe";
  mkfifo(device.c_str(), 0600);
#endif
  const std::tuple<fs::path, std::error_code, std::error_code> rows[] = {
      {file_, {}, kDenied},
      {folder_ / "", kFolder, kFolder},
      {folder_ / "missing" / "file", kMissing, kMissing},
      {folder_ / "missing", kMissing, {}},
      {folder_ / "large", FileRefusal::TooLarge, {}},
      {"File.txt", FileRefusal::FolderUnknown, FileRefusal::FolderUnknown},
      {device, FileRefusal::NotOrdinary, FileRefusal::NotOrdinary},
  };
  for (const auto& [path, reading, replacing] : rows) {
    EXPECT_EQ(Read(path), reading) << path;
    EXPECT_EQ(Replace(path, "new"), replacing) << path;
    EXPECT_TRUE(replacing || ReadFile(path) == "new") << path;
  }
  EXPECT_EQ(platform::ReplaceFile(folder_ / "missing", "newer", {file_, true}), std::errc::file_exists);
  EXPECT_EQ(ReadFile(folder_ / "missing"), "new");
  EXPECT_EQ(ReadFile(file_), "old");
}

#ifdef _WIN32

// Another program with the file open.
using Holder = std::unique_ptr<void, decltype([](HANDLE handle) { CloseHandle(handle); })>;
Holder Hold(const fs::path& file, DWORD share) {
  return Holder(CreateFileW(file.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
}

std::string AccessRights(const fs::path& file) {
  std::string rights(4096, '\0');
  DWORD size = static_cast<DWORD>(rights.size());
  EXPECT_TRUE(GetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size));
  return rights.substr(0, size);
}

TEST_F(Files, AReplacedFileKeepsItsAttributesAndAccessRights) {
  const std::string usual = AccessRights(file_);
  PSECURITY_DESCRIPTOR own = nullptr;
  ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;FA;;;WD)", SDDL_REVISION_1, &own, nullptr));
  ASSERT_TRUE(SetFileSecurityW(file_.c_str(), DACL_SECURITY_INFORMATION, own));
  const std::string rights = AccessRights(file_);
  ASSERT_NE(rights, usual);
  SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE);
  const DWORD attributes = GetFileAttributesW(file_.c_str());
  EXPECT_FALSE(Replace(file_, "new"));
  EXPECT_EQ(GetFileAttributesW(file_.c_str()), attributes);
  EXPECT_EQ(AccessRights(file_), rights);
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
}

#else

TEST_F(Files, LinksAreFollowedButNotThatOfTheNewFile) {
  WriteFile(folder_ / "sub" / "victim", "victim");
  struct stat tool = {};
  ASSERT_EQ(stat(ExecutableFolder().c_str(), &tool), 0);
  fs::create_symlink("sub/victim", folder_ / (".gantrel-new-" + std::to_string(tool.st_ino)));
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

TEST_F(Files, AnOrdinaryUserKeepsAFilesGroupAndReplacesNoneThatOthersOwn) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can be somebody else";
  constexpr uid_t kUser = 65533;
  constexpr gid_t kGroup = 65532;
  const fs::path another = folder_ / "another";
  WriteFile(another, "old");
  fs::permissions(Root(), fs::perms(0755));
  fs::permissions(file_, fs::perms(0664));
  ASSERT_EQ(chown(folder_.c_str(), kUser, kUser) + chown(file_.c_str(), 0, kGroup), 0);
  ASSERT_EQ(setgroups(1, &kGroup) + setresgid(kUser, kUser, 0) + setresuid(kUser, kUser, 0), 0);
  const std::error_code ofGroup = Replace(file_, "new");
  const std::error_code ofAnother = Replace(another, "new");
  ASSERT_EQ(setresuid(0, 0, 0) + setresgid(0, 0, 0) + setgroups(0, nullptr), 0);
  struct stat status = {};
  ASSERT_EQ(stat(file_.c_str(), &status), 0);
  EXPECT_FALSE(ofGroup);
  EXPECT_EQ(status.st_gid, kGroup);
  EXPECT_EQ(ofAnother, kDenied);
}

TEST_F(Files, WhereAllMayWriteOnlyLinksOfTheUserAndOfTheFoldersOwnerAreFollowed) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can make links of others";
  constexpr uid_t kUser = 0;
  constexpr uid_t kAnother = 65533;
  const std::tuple<uid_t, uid_t, std::error_code> rows[] = {
      {kAnother, kUser, {}}, {kAnother, kAnother, {}}, {kUser, kAnother, FileRefusal::LinkOfAnother}};
  const fs::path link = folder_ / "link";
  fs::create_symlink("File.txt", link);
  fs::permissions(folder_, fs::perms(01777));
  for (const auto& [ownerOfFolder, ownerOfLink, outcome] : rows) {
    ASSERT_EQ(chown(folder_.c_str(), ownerOfFolder, 0), 0);
    ASSERT_EQ(lchown(link.c_str(), ownerOfLink, 0), 0);
    EXPECT_EQ(Read(link), outcome);
    EXPECT_EQ(Replace(link, "new"), outcome);
  }
}

#endif

}  // namespace
