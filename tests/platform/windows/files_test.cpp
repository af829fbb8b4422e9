#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/windows/system.h"
#include <sddl.h>

#include "tests/platform/replacing_files.h"

namespace fs = std::filesystem;
using platform::FileRefusal;
using support::ReadFile;

namespace {

// Another program that has the file open.
class Holder {
 public:
  Holder(const fs::path& file, DWORD share)
      : handle_(CreateFileW(file.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr)) {
    EXPECT_NE(handle_, INVALID_HANDLE_VALUE);
  }
  ~Holder() { CloseHandle(handle_); }
  Holder(const Holder&) = delete;
  Holder& operator=(const Holder&) = delete;

 private:
  HANDLE handle_;
};

std::wstring ThisUser() {
  HANDLE token = nullptr;
  OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token);
  alignas(TOKEN_USER) std::array<std::byte, 256> user = {};
  DWORD size = 0;
  GetTokenInformation(token, TokenUser, user.data(), static_cast<DWORD>(user.size()), &size);
  CloseHandle(token);
  wchar_t* text = nullptr;
  ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid, &text);
  std::wstring name = text;
  LocalFree(text);
  return name;
}

class WindowsFiles : public ReplacingFiles {
 protected:
  // As text, which can be compared.
  std::wstring AccessRights() const {
    DWORD size = 0;
    GetFileSecurityW(file_.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::byte> descriptor(size);
    GetFileSecurityW(file_.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), size, &size);
    wchar_t* text = nullptr;
    if (ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor.data(), SDDL_REVISION_1,
                                                             DACL_SECURITY_INFORMATION, &text, nullptr) == 0) {
      return L"none";
    }
    std::wstring rights = text;
    LocalFree(text);
    return rights;
  }
};

TEST_F(WindowsFiles, AReplacedFileKeepsItsAttributesAndLeavesNothingBeside) {
  constexpr DWORD kAttributes[] = {FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_SYSTEM, FILE_ATTRIBUTE_ARCHIVE};
  for (const DWORD attributes : kAttributes) {
    SetFileAttributesW(file_.c_str(), attributes);
    const DWORD before = GetFileAttributesW(file_.c_str());
    EXPECT_FALSE(Replace(file_, "new"));
    EXPECT_EQ(GetFileAttributesW(file_.c_str()), before);
    EXPECT_EQ(ReadFile(file_), "new");
  }
  EXPECT_EQ(CountEntries(), 1);
}

TEST_F(WindowsFiles, AReplacedFileKeepsItsAccessRights) {
  const std::wstring usual = AccessRights();
  PSECURITY_DESCRIPTOR own = nullptr;
  ASSERT_NE(ConvertStringSecurityDescriptorToSecurityDescriptorW((L"D:P(A;;FA;;;" + ThisUser() + L")").c_str(),
                                                                 SDDL_REVISION_1, &own, nullptr),
            0);
  ASSERT_NE(SetFileSecurityW(file_.c_str(), DACL_SECURITY_INFORMATION, own), 0);
  LocalFree(own);
  const std::wstring before = AccessRights();
  ASSERT_NE(before, usual);
  EXPECT_FALSE(Replace(file_, "new"));
  EXPECT_EQ(AccessRights(), before);
  EXPECT_EQ(ReadFile(file_), "new");
}

TEST_F(WindowsFiles, AProgramThatHoldsTheFileForAMomentIsWaitedFor) {
  constexpr auto kMoment = std::chrono::milliseconds(60);
  for (const bool isRead : {true, false}) {
    auto holder = std::make_unique<Holder>(file_, 0);
    std::thread other([&] {
      std::this_thread::sleep_for(kMoment);
      holder.reset();
    });
    EXPECT_FALSE(isRead ? Read(file_) : Replace(file_, "new"));
    other.join();
  }
  EXPECT_EQ(ReadFile(file_), "new");
}

TEST_F(WindowsFiles, AFileThatAnotherProgramHoldsFastStaysAndTheReasonIsSaid) {
  const Holder holder(file_, FILE_SHARE_READ);
  const std::error_code failure = Replace(file_, "new");
  EXPECT_EQ(failure.value(), ERROR_SHARING_VIOLATION);
  EXPECT_NE(failure.message(), "Permission denied");
  EXPECT_EQ(ReadFile(file_), "old");
  EXPECT_EQ(CountEntries(), 1);
}

TEST_F(WindowsFiles, AFileWhoseNameAnotherProgramHoldsIsWrittenInPlace) {
  const Holder holder(file_, FILE_SHARE_READ | FILE_SHARE_WRITE);
  EXPECT_FALSE(Replace(file_, "longer than before"));
  EXPECT_EQ(ReadFile(file_), "longer than before");
  EXPECT_FALSE(Replace(file_, "s"));
  EXPECT_EQ(ReadFile(file_), "s");
  EXPECT_EQ(CountEntries(), 1);
}

TEST_F(WindowsFiles, DevicesAreRefused) {
  EXPECT_EQ(Read(folder_ / "NUL"), FileRefusal::NotOrdinary);
  EXPECT_EQ(Replace(folder_ / "NUL", "new"), FileRefusal::NotOrdinary);
}

}  // namespace
