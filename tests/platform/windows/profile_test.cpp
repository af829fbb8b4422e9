#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/windows/system.h"
#include "settings/EZINILib.h"
#include "support/own_folder.h"

// Ours against the system's functions, wherever both are meant to agree.
namespace fs = std::filesystem;
using support::ReadFile;
using support::WriteFile;

namespace {

// The system's function writes the whole file anew in its own way: without the blanks around names and values, without
// blank lines, each line with CR LF. Ours leaves the bytes that a change does not concern as they are, and so is not
// meant to write the same then.
enum class Written : std::uint8_t { Alike, OursKeepsMore };

struct Text {
  const char* name;
  std::string text;
  Written written = Written::Alike;
};

const Text kTexts[] = {
    {"none", ""},
    {"one section", "[A]\r\nx=1\r\n"},
    {"two of one name", "[A]\r\nx=1\r\nx=2\r\n[A]\r\ny=3\r\n"},
    {"two sections", "[A]\r\nx=1\r\n[B]\r\ny=2\r\n"},
    {"letter case", "[a]\r\nX=1\r\n"},
    {"letter case beyond ASCII", "[\xC4]\r\n\xD6=1\r\n"},
    {"blanks around a section's name", "[ A\t]\r\nx=1\r\n", Written::OursKeepsMore},
    {"blanks", "[A]\r\n \tx\t = \t1 2\t \r\n", Written::OursKeepsMore},
    {"quotes", "[A]\r\nx=\" 1 \"\r\ny=' 2 '\r\n"},
    {"unlike quotes", "[A]\r\nx=\"1'\r\ny=\"\r\n"},
    {"two pairs of quotes", "[A]\r\nx=\"\"1\"\"\r\n"},
    {"equals signs", "[A]\r\nx=a=b\r\n"},
    {"an empty value", "[A]\r\nx=\r\n"},
    {"a comment", "[A]\r\n;x=1\r\n; y=2\r\n"},
    {"a line that is none", "[A]\r\nnonsense\r\nx=1\r\n"},
    {"blank lines", "[A]\r\n\r\nx=1\r\n\r\n[B]\r\ny=2\r\n", Written::OursKeepsMore},
    {"LF", "[A]\nx=1\n[B]\ny=2\n", Written::OursKeepsMore},
    {"no last line end", "[A]\r\nx=1", Written::OursKeepsMore},
    {"before any section", "x=1\r\n[A]\r\ny=2\r\n"},
    {"a name with blanks and a dot", "[Dawn of War.1]\r\nx=1\r\n"},
    {"more than 254 characters", "[A]\r\nx=" + std::string(300, 'x') + "\r\n"},
};

struct Name {
  const char* section;
  const char* key;
};

constexpr Name kNames[] = {
    {"A", "x"}, {"A", "y"}, {"A", "z"}, {"B", "y"}, {"a", "X"}, {"\xE4", "\xF6"}, {"Dawn of War.1", "x"}, {"C", "x"}};

// WINE_DIFFERS: its functions know letter case in ASCII alone, the system's and ours in the code page.
bool IsTakenForAnotherName(const Text& text, const Name& name) {
  return std::string_view(text.name) == "letter case beyond ASCII" && std::string_view(name.section) == "\xE4";
}

class AgainstTheSystem : public testing::Test {
 protected:
  void SetUp() override { support::Reset(); }

  // The system keeps the file in mind, and must be told to look again.
  void Put(const std::string& text) const {
    WriteFile(file_, text);
    ::WritePrivateProfileStringA(nullptr, nullptr, nullptr, Path().c_str());
  }

  std::string Path() const { return *platform::ToWindowsPath(Host()); }
  platform::HostPath Host() const { return {file_.native()}; }

  const fs::path file_ = support::Root() / "test.ini";
};

TEST_F(AgainstTheSystem, ReadingGivesTheSame) {
  for (const Text& text : kTexts) {
    Put(text.text);
    for (const Name& name : kNames) {
      if (IsTakenForAnotherName(text, name)) continue;
      std::array<char, 255> theirs = {};
      const DWORD count = ::GetPrivateProfileStringA(name.section, name.key, "default", theirs.data(),
                                                     static_cast<DWORD>(theirs.size()), Path().c_str());
      EXPECT_EQ(EZINILib::ReadINI(Host(), name.section, name.key, "default"), std::string(theirs.data(), count))
          << text.name << ": " << name.section << ", " << name.key;
    }
  }
}

TEST_F(AgainstTheSystem, WritingGivesTheSameBytes) {
  for (const Text& text : kTexts) {
    if (text.written == Written::OursKeepsMore) continue;
    for (const Name& name : kNames) {
      if (IsTakenForAnotherName(text, name)) continue;
      Put(text.text);
      ::WritePrivateProfileStringA(name.section, name.key, "new value", Path().c_str());
      ::WritePrivateProfileStringA(nullptr, nullptr, nullptr, Path().c_str());
      const std::string theirs = ReadFile(file_);
      WriteFile(file_, text.text);
      EZINILib::WriteINI(Host(), name.section, name.key, "new value");
      EXPECT_EQ(ReadFile(file_), theirs) << text.name << ": " << name.section << ", " << name.key;
    }
  }
}

TEST_F(AgainstTheSystem, EachReadsWhatTheOtherWrote) {
  const std::string value = "C:\\Games\\D\xF6W \x80\\";
  EZINILib::WriteINI(Host(), "Dawn of War", "Path", value);
  ::WritePrivateProfileStringA("Dawn of War", "AutoPath", "1", Path().c_str());
  EZINILib::WriteINI(Host(), "Dawn of War", "ModCount", "2");
  std::array<char, 255> text = {};
  ::GetPrivateProfileStringA("Dawn of War", "Path", "", text.data(), static_cast<DWORD>(text.size()), Path().c_str());
  EXPECT_EQ(text.data(), value);
  EXPECT_EQ(EZINILib::ReadINI(Host(), "Dawn of War", "AutoPath", ""), "1");
  EXPECT_EQ(ReadFile(file_), "[Dawn of War]\r\nPath=" + value + "\r\nAutoPath=1\r\nModCount=2\r\n");
}

}  // namespace
