#include "platform/paths.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/code_page.h"
#include "platform/files.h"
#include "platform/windows/system.h"
#include "support/own_folder.h"

namespace fs = std::filesystem;
using platform::ToHostPath;
using platform::ToWindowsPath;

namespace {

class WindowsPaths : public testing::Test {
 protected:
  void SetUp() override {
    support::Reset();
    ASSERT_EQ(GetACP(), 1252U) << "the tests' text is in this code page";
  }
};

TEST_F(WindowsPaths, AWindowsPathIsTheSystemsOwn) {
  struct Row {
    std::string windows;
    std::optional<std::wstring> host;
  };
  const Row rows[] = {
      {"C:\\Games\\DoW\\", L"C:\\Games\\DoW\\"},
      {"c:/Games/DoW/x.module", L"c:\\Games\\DoW\\x.module"},
      {"C:\\Spi\xE9le \x80\\", L"C:\\Spi\u00E9le \u20AC\\"},
      {"C:", L"C:\\"},
      {"C:x", L"C:\\x"},
      {"\\\\server\\share\\x", L"\\\\server\\share\\x"},
      {"Q:\\x", {}},
      {"Games\\DoW", {}},
      {"\\Games", {}},
      {"1:\\x", {}},
      {"", {}},
  };
  for (const Row& row : rows) {
    const auto path = ToHostPath(row.windows);
    EXPECT_EQ(path ? std::optional(path->text) : std::nullopt, row.host) << row.windows;
  }
}

TEST_F(WindowsPaths, AHostPathIsAWindowsPathWhereTheCodePageSpellsIt) {
  struct Row {
    std::wstring host;
    std::optional<std::string> windows;
  };
  const Row rows[] = {
      {L"C:/Games/D\u00F6W/W40k.exe", "C:\\Games\\D\xF6W\\W40k.exe"},
      {L"//server/share/x", "\\\\server\\share\\x"},
      {L"\\\\?\\C:\\x", "C:\\x"},
      {L"\\\\?\\UNC\\server\\share\\x", "\\\\server\\share\\x"},
      {L"C:\\\u017Bycie", {}},  // not the Z that looks like it
      {L"C:\\\u4E2D\u6587", {}},
  };
  for (const Row& row : rows) EXPECT_EQ(ToWindowsPath({row.host}), row.windows) << platform::Shown({row.host});
  EXPECT_EQ(platform::Shown({L"C:\\\u017B \xD83D\xDE00"}), "C:\\? ?");
}

TEST_F(WindowsPaths, SpellingIsLookedForBehindTheRoot) {
  fs::create_directories("C:\\Games");
  const std::array<std::array<std::wstring, 2>, 4> rows = {{
      {L"c:/gAMES", L"c:\\Games"},
      {L"C:\\", L"C:\\"},
      {L"\\\\?\\C:\\gAMES", L"\\\\?\\C:\\Games"},
      {L"\\\\server.invalid\\Share\\x", L"\\\\server.invalid\\Share\\x"},
  }};
  for (const auto& [given, spelled] : rows) {
    EXPECT_EQ(platform::AsSpelledOnDisk({given}).text, spelled) << platform::Shown({given});
  }
}

TEST_F(WindowsPaths, HiddenFoldersAreNotOffered) {
  for (const char* const name : {"a", "hidden"}) fs::create_directories(support::DriveC() / "Games" / name);
  SetFileAttributesW(L"C:\\Games\\hidden", FILE_ATTRIBUTE_HIDDEN);
  EXPECT_EQ(platform::ListSubfolders("C:\\Games"), std::vector<std::string>{"a"});
}

// A chain of folders whose path is three times as long as paths usually may be. Removed with it, since the standard
// library cannot do that.
class DeepFolder {
 public:
  DeepFolder() {
    for (path_ = "C:\\Games"; path_.size() < 3 * MAX_PATH; path_ += "\\" + Name()) Create();
    Create();
  }
  ~DeepFolder() {
    DeleteFileW(Literal("\\File.txt").c_str());
    for (; path_.size() > 2; path_.resize(path_.rfind('\\'))) RemoveDirectoryW(Literal("").c_str());
  }
  DeepFolder(const DeepFolder&) = delete;
  DeepFolder& operator=(const DeepFolder&) = delete;

  static std::string Name() { return std::string(50, 'x'); }
  std::string Path() const { return path_; }
  std::string PathOfParent() const { return path_.substr(0, path_.rfind('\\')); }

 private:
  std::wstring Literal(const std::string& below) const { return L"\\\\?\\" + fs::path(path_ + below).native(); }
  void Create() const { EXPECT_NE(CreateDirectoryW(Literal("").c_str(), nullptr), 0); }

  std::string path_;
};

// WINE_DIFFERS: it takes long paths in any form, the system only in the literal one or when it is set up for them, so
// there this test passes whatever form the tool gives them.
TEST_F(WindowsPaths, MayBeLongerThanTheSystemsUsualLimit) {
  const DeepFolder deep;
  const auto file = *ToHostPath(deep.Path() + "\\y\\..\\File.txt");
  for (const char* const text : {"first", "second"}) {
    platform::FileBytes bytes;
    EXPECT_FALSE(platform::ReplaceFile(file, text));
    EXPECT_FALSE(bytes.Read(file));
    EXPECT_EQ(bytes.View(), text);
  }
  EXPECT_EQ(platform::ListSubfolders(deep.Path()), std::vector<std::string>());
  EXPECT_EQ(platform::ListSubfolders(deep.PathOfParent()), std::vector<std::string>{DeepFolder::Name()});
}

TEST_F(WindowsPaths, LetterCaseIsTheCodePages) {
  for (int i = 0; i < 256; ++i) {
    const auto c = static_cast<char>(i);
    const bool isSmall = (c >= 'a' && c <= 'z') || (i >= 0xE0 && i <= 0xFE && i != 0xF7);
    const int step = isSmall ? 0x20 : i == 0x9A || i == 0x9C || i == 0x9E ? 0x10 : i == 0xFF ? 0x60 : 0;
    EXPECT_EQ(platform::FoldCase(c), static_cast<char>(i - step)) << i;
  }
}

}  // namespace
