#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "settings/Module1.h"
#include "settings/whole_number.h"
#include "support/own_folder.h"

namespace fs = std::filesystem;
using Module1::GetSetting;
using Module1::PutSetting;
using support::ReadFile;
using support::SettingsFile;
using support::WriteFile;

namespace {

TEST(WholeNumber, IsDecimalDigitsWithinThirtyTwoBits) {
  struct Row {
    const char* text;
    std::optional<std::int32_t> number;
  };
  const Row rows[] = {
      {"0", 0},      {"03", 3},
      {" 12\t", 12}, {"-7", -7},
      {"+7", 7},     {"2147483647", 2147483647},
      {"", {}},      {"  ", {}},
      {"-", {}},     {"+", {}},
      {"+-1", {}},   {"2147483648", {}},
      {"1.0", {}},   {"1e3", {}},
      {"0x10", {}},  {"1 2", {}},
      {"- 1", {}},   {"-2147483648", -2147483647 - 1},
      {"ten", {}},   {"1x", {}},
      {"--1", {}},   {"99999999999999999999", {}},
  };
  for (const Row& row : rows) EXPECT_EQ(WholeNumber(row.text), row.number) << "'" << row.text << "'";
}

class Settings : public testing::Test {
 protected:
  void SetUp() override { support::Reset(); }
};

TEST_F(Settings, AMissingFileReadsAsTheDefaultAndStaysMissing) {
  EXPECT_EQ(GetSetting("Games", "Count", "-1"), "-1");
  EXPECT_FALSE(fs::exists(SettingsFile()));
  PutSetting("Games", "Count", "1");
  EXPECT_EQ(ReadFile(SettingsFile()), "[Games]\r\nCount=1\r\n");
}

TEST_F(Settings, AChangeFromOutsideIsSeenAtOnce) {
  PutSetting("A", "x", "1");
  WriteFile(SettingsFile(), "[A]\nx=2\n");
  EXPECT_EQ(GetSetting("A", "x", ""), "2");
}

TEST_F(Settings, ReadsGiveAtMost254Characters) {
  const std::string whole(254, 'a');
  WriteFile(SettingsFile(), "[A]\r\nfits=" + whole + "\r\ncut=" + whole + "bcd\r\n");
  EXPECT_EQ(GetSetting("A", "fits", ""), whole);
  EXPECT_EQ(GetSetting("A", "cut", ""), whole);
  EXPECT_EQ(GetSetting("A", "missing", whole + "bcd"), whole);
}

TEST_F(Settings, AFileOfAnySizeIsReadWhole) {
  for (const std::size_t size : {std::size_t{256} * 1024 - 10, std::size_t{256} * 1024 + 1, std::size_t{3'000'000}}) {
    WriteFile(SettingsFile(), "[A]\nlong=" + std::string(size, 'x') + "\nlast=1\n");
    EXPECT_EQ(GetSetting("A", "last", ""), "1") << size;
    PutSetting("A", "last", "2");
    EXPECT_EQ(ReadFile(SettingsFile()), "[A]\nlong=" + std::string(size, 'x') + "\nlast=2\n") << size;
  }
}

TEST_F(Settings, AFileThatDiffersInLetterCaseAloneIsTheSettingsFile) {
  const fs::path found = support::ExecutableFolder() / "ULVANE.INI";
  WriteFile(found, "[A]\nx=1\n");
  EXPECT_EQ(GetSetting("A", "x", ""), "1");
  PutSetting("A", "x", "2");
  EXPECT_EQ(ReadFile(found), "[A]\nx=2\n");
  EXPECT_FALSE(support::IsSpelledSo(SettingsFile()));
}

TEST_F(Settings, AFileThatCannotBeReadIsNeverReplaced) {
  fs::create_directory(SettingsFile());
  EXPECT_EQ(GetSetting("A", "x", "default"), "default");
  PutSetting("A", "x", "1");
  EXPECT_TRUE(fs::is_directory(SettingsFile()));
}

TEST_F(Settings, NumbersThatAreNoneReadAsTheDefault) {
  WriteFile(SettingsFile(), "[A]\nActive=many\n");
  EXPECT_EQ(Module1::GetNumber("A", "Active", 7), 7);
  EXPECT_EQ(Module1::ModCount("A"), 0);
  EXPECT_EQ(Module1::GameCount(), Module1::kNoGameCount);
}

TEST_F(Settings, ADamagedCountReadsAsTheNumberOfEntriesThatFollowEachOther) {
  struct Row {
    const char* count;
    std::int64_t read;
  };
  for (const Row& row : {Row{"2", 2}, Row{" 5 ", 5}, Row{"0", 0}, Row{"-7", -7}, Row{"32767", 32767}, Row{"32768", 3},
                         Row{"2147483647", 3}, Row{"four", 3}, Row{"4;", 3}, Row{"", 3}}) {
    const std::string count = row.count;
    WriteFile(SettingsFile(),
              "[Games]\nCount=" + count + "\nDoW1=G\nDoW2=\nDoW3=H\nDoW5=I\n[G]\nModCount=" + count +
                  "\n[G.1]\nName=A\nDirCount=" + count +
                  "\nDir1=a\nDir2=\nDir3=c\nDir5=e\n[G.2]\nActive=1\n[G.3]\nDirCount=0\n[G.5]\nName=E\n");
    EXPECT_EQ(Module1::GameCount(), row.read) << count;
    EXPECT_EQ(Module1::ModCount("G"), row.read) << count;
    EXPECT_EQ(Module1::DirCount("G.1"), row.read) << count;
  }
}

TEST_F(Settings, TextInUtf16IsNeitherReadNorWritten) {
  for (const std::string& text : {std::string("\xFF\xFE[\0A\0]\0", 8), std::string("\xFE\xFF\0[\0A\0]", 8)}) {
    WriteFile(SettingsFile(), text);
    PutSetting("A", "x", "1");
    EXPECT_EQ(ReadFile(SettingsFile()), text);
    EXPECT_TRUE(Module1::Unread());
  }
}

TEST_F(Settings, AReadingAnswersFromOneMoment) {
  WriteFile(SettingsFile(), "[A]\nx=1\n");
  {
    const Module1::Reading reading;
    WriteFile(SettingsFile(), "[A]\nx=2\n");
    {
      const Module1::Reading within;
      EXPECT_EQ(GetSetting("A", "x", ""), "1");
    }
    EXPECT_EQ(GetSetting("A", "x", ""), "1");
  }
  EXPECT_EQ(GetSetting("A", "x", ""), "2");
}

TEST_F(Settings, AChangeReachesTheFileWhenItIsSaved) {
  WriteFile(SettingsFile(), "[A]\nx=1\n");
  {
    const Module1::Change change;
    PutSetting("A", "x", "2");
    PutSetting("B", "y", std::string(300, 'y'));
    EXPECT_EQ(GetSetting("A", "x", ""), "2");
    EXPECT_EQ(GetSetting("B", "y", ""), std::string(254, 'y'));
    EXPECT_EQ(ReadFile(SettingsFile()), "[A]\nx=1\n");
    EXPECT_FALSE(Module1::Change::Save());
    EXPECT_EQ(GetSetting("A", "x", ""), "2");
  }
  const std::string changed = "[A]\nx=2\n[B]\ny=" + std::string(300, 'y') + "\n";
  EXPECT_EQ(ReadFile(SettingsFile()), changed);
  {
    const Module1::Change change;
    PutSetting("A", "x", "3");
  }
  EXPECT_EQ(ReadFile(SettingsFile()), changed) << "without a Save it is dropped";
}

TEST_F(Settings, WhatCouldNotBeSavedIsNotAnswered) {
  fs::create_directory(SettingsFile());
  const Module1::Change change;
  PutSetting("A", "x", "1");
  const auto failure = Module1::Change::Save();
  ASSERT_TRUE(failure);
  EXPECT_STREQ(failure->what, "read");
  EXPECT_TRUE(fs::is_directory(SettingsFile()));
}

TEST_F(Settings, FindModComparesEveryCharacter) {
  WriteFile(SettingsFile(), "[G]\nModCount=5\n[G.1]\nName=Foo\n[G.2]\nActive=1\n[G.3]\nName=Foo\n[G.4]\nName=" +
                                std::string(300, 'n') + "\n[G.5]\nName='Foo '\n[G.6]\nName=beyond\n");
  struct Row {
    std::string name;
    std::int64_t mod;
  };
  const Row rows[] = {
      {"Foo", 1},
      {"foo", Module1::kNoMod},
      {" Foo", Module1::kNoMod},
      {"Foo ", 5},
      {"Unknown", 2},
      {"", Module1::kNoMod},
      {"beyond", Module1::kNoMod},
      {std::string(254, 'n'), 4},
      {std::string(300, 'n'), Module1::kNoMod},
  };
  for (const Row& row : rows) EXPECT_EQ(Module1::FindMod("G", row.name), row.mod) << row.name;
  EXPECT_EQ(Module1::FindMod("no game", "Unknown"), Module1::kNoMod);
}

}  // namespace
