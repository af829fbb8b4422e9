#include <gtest/gtest.h>

#include <thread>

#include "settings/Module1.h"
#include "settings/whole_number.h"
#include "support/own_folder.h"

using namespace support;
using Module1::GetSetting;
using Module1::PutSetting;

namespace {

TEST(WholeNumber, IsDecimalDigitsWithinThirtyTwoBits) {
  const std::pair<const char*, std::optional<std::int32_t>> rows[] = {
      {"03", 3},   {" 12\t", 12}, {"-7", -7},  {"+7", 7},   {"2147483647", 2147483647},
      {"", {}},    {"  ", {}},    {"-", {}},   {"+", {}},   {"-2147483648", -2147483647 - 1},
      {"+-1", {}}, {"1x", {}},    {"1 2", {}}, {"- 1", {}}, {"2147483648", {}}};
  for (const auto& [text, number] : rows) EXPECT_EQ(WholeNumber(text), number) << "'" << text << "'";
}

TEST(Settings, EachCallReadsOrReplacesAFileOfAnySizeAndReadsGiveAtMost254Characters) {
  Reset();
  const std::string whole(254, 'a');
  for (const std::size_t size : {std::size_t{255}, std::size_t{256} * 1024 - 10, std::size_t{3'000'000}}) {
    const std::string text = "[A]\nfits=" + whole + "\ncut=" + std::string(size, 'a') + "\nlast=";
    WriteFile(SettingsFile(), text + "1\n");
    for (const char* const key : {"fits", "cut"}) EXPECT_EQ(GetSetting("A", key, ""), whole);
    EXPECT_EQ(GetSetting("A", "missing", whole + "b"), whole);
    PutSetting("A", "last", "2");
    EXPECT_TRUE(ReadFile(SettingsFile()) == text + "2\n") << size;
  }
}

TEST(Settings, WhatCannotBeReadIsNeverReplacedNorAnswered) {
  Reset();
  for (const char* const markOfUtf16 : {"\xFF\xFE", "\xFE\xFF"}) {
    const std::string text = std::string(markOfUtf16) + "\n[A]\nx=1\n";
    WriteFile(SettingsFile(), text);
    EXPECT_EQ(GetSetting("A", "x", ""), "");
    PutSetting("A", "x", "2");
    EXPECT_EQ(ReadFile(SettingsFile()), text);
    EXPECT_TRUE(Module1::Settings().Unread());
  }
}

TEST(Settings, ADamagedCountReadsAsTheNumberOfEntriesThatFollowEachOther) {
  const std::pair<const char*, std::int64_t> rows[] = {{"0", 0},         {"2", 2},     {" 5 ", 5},  {"-7", 3},
                                                       {"32767", 32767}, {"32768", 3}, {"four", 3}, {"", 3}};
  for (const auto& [count, read] : rows) {
    const Module1::Settings settings(
        std::string("[Games]\nCount=") + count + "\nDoW1=G\nDoW2=\nDoW3=H\nDoW5=I\n[G]\nModCount=" + count +
        "\n[G.1]\nDirCount=" + count +
        "\nDir1=a\nDir2=\nDir3=c\nDir5=e\n[G.2]\nActive=1\n[G.3]\nName=C\n[G.5]\nName=E\n");
    EXPECT_EQ(settings.GameCount(), read) << count;
    EXPECT_EQ(settings.ModCount("G"), read) << count;
    EXPECT_EQ(std::ssize(settings.Folders("G.1")), read) << count;
  }
}

TEST(Settings, NoChangeIsLostToAnotherAtTheSameTimeAndNoReadingFindsHalfOfIt) {
  Reset();
  PutSetting("A", "x", "0");
  const auto addOne = [] {
    for (int i = 0; i < 50; ++i) {
      EXPECT_NE(GetSetting("A", "x", "missing"), "missing");
      Module1::Change change;
      change.PutNumber("A", "x", change.GetNumber("A", "x", 0) + 1);
      EXPECT_FALSE(change.Save());
    }
  };
  std::thread other(addOne);
  addOne();
  other.join();
  EXPECT_EQ(GetSetting("A", "x", ""), "100");
}

}  // namespace
