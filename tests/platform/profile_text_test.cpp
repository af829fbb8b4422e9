#include "platform/profile_text.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>

using platform::ProfileText;

namespace {

struct Get {
  std::string_view section;
  std::string_view key;
};

struct ReadRow {
  const char* name;
  std::string text;
  Get get;
  std::optional<std::string> value;
};

void PrintTo(const ReadRow& row, std::ostream* out) { *out << row.name; }

// What a test is called: the rule that its row states.
template <typename Row>
std::string RowName(const testing::TestParamInfo<Row>& row) {
  return row.param.name;
}

class Reading : public testing::TestWithParam<ReadRow> {};

TEST_P(Reading, GivesTheValue) {
  const auto& [name, text, get, value] = GetParam();
  EXPECT_EQ(ProfileText(text).Find(get.section, get.key), value);
}

constexpr std::optional<std::string> kNothing;

INSTANTIATE_TEST_SUITE_P(
    Rules, Reading,
    testing::Values(
        ReadRow{"TheFirstMatchingSectionCounts", "[A]\r\nx=1\r\n[A]\r\nx=2\r\ny=3\r\n", {"A", "y"}, kNothing},
        ReadRow{"TheFirstMatchingKeyCounts", "[A]\r\nx=1\r\nx=2\r\n", {"A", "x"}, "1"},
        ReadRow{"AKeyOfAnotherSectionIsNotFound", "[A]\r\nx=1\r\n[B]\r\ny=2\r\n", {"A", "y"}, kNothing},
        ReadRow{"AKeyBeforeAnySectionIsNotFound", "x=1\r\n[A]\r\n", {"", "x"}, kNothing},
        ReadRow{"NamesMatchWithoutRegardToCase", "[Dawn of War]\r\nName=x\r\n", {"dAWN OF wAR", "NAME"}, "x"},
        ReadRow{"CaseIsDisregardedBeyondAscii", "[\xC4\x9F\xD8]\r\nx=1\r\n", {"\xE4\xFF\xF8", "x"}, "1"},
        ReadRow{"SignsAreNotLetters", "[\xD7]\r\nx=1\r\n", {"\xF7", "x"}, kNothing},
        ReadRow{"BlanksAroundAKeyDoNotCount", "[A]\r\n \tx\t = 1\r\n", {"A", "x"}, "1"},
        ReadRow{"BlanksAroundAHeaderDoNotCount", "\t [A] \r\nx=1\r\n", {"A", "x"}, "1"},
        ReadRow{"BlanksInsideAHeaderDoNotCount", "[ A\t]\r\nx=1\r\n", {"A ", "x"}, "1"},
        ReadRow{"ANameOfBlanksIsAName", "[  ]\r\nx=1\r\n", {" ", "x"}, "1"},
        ReadRow{"ANameMayHoldBrackets", "[A [1]]\r\nx=1\r\n", {"A [1]", "x"}, "1"},
        ReadRow{"WhatFollowsAHeaderDoesNotCount", "[A] ; first\r\nx=1\r\n", {"A", "x"}, "1"},
        ReadRow{"ABracketInALineIsNoHeader", "[A]\r\ny=[A\r\nz [B]\r\nx=1\r\n", {"A", "x"}, "1"},
        ReadRow{"AnOpenHeaderIsPassedOver", "[A]\r\n[B\r\n[x=2\r\nx=1\r\n", {"A", "x"}, "1"},
        ReadRow{"TheValueFollowsTheFirstEqualsSign", "[A]\r\nx=a=b\r\n", {"A", "x"}, "a=b"},
        ReadRow{"BlanksAroundAValueDoNotCount", "[A]\r\nx= \t a b\t \r\n", {"A", "x"}, "a b"},
        ReadRow{"ACommentIsNoKey", "[A]\r\n;x=1\r\n ; x=2\r\n", {"A", "; x"}, kNothing},
        ReadRow{"ALineWithoutEqualsSignIsNoKey", "[A]\r\nx\r\nx=1\r\n", {"A", "x"}, "1"},
        ReadRow{"AnEmptyValueIsAValue", "[A]\r\nx=\r\n", {"A", "x"}, ""},
        ReadRow{"OnePairOfDoubleQuotesGoes", "[A]\r\nx= \"\" a\"\" \r\n", {"A", "x"}, "\" a\""},
        ReadRow{"OnePairOfSingleQuotesGoes", "[A]\r\nx=' a '\r\n", {"A", "x"}, " a "},
        ReadRow{"UnlikeQuotesStay", "[A]\r\nx='a\"\r\n", {"A", "x"}, "'a\""},
        ReadRow{"ALoneQuoteStays", "[A]\r\nx=\"\r\n", {"A", "x"}, "\""},
        ReadRow{"LinesEndInLfToo", "[A]\nx=1\n[B]\ny=2\n", {"B", "y"}, "2"},
        ReadRow{"LinesEndInCrToo", "[A]\rx=1\r[B]\ry=2\r", {"B", "y"}, "2"},
        ReadRow{"DoubledLineEndsAreBlankLines", "[A]\r\r\nx=1\r\r\n", {"A", "x"}, "1"},
        ReadRow{"TheLastLineNeedsNoEnd", "[A]\r\nx=1", {"A", "x"}, "1"},
        ReadRow{"AnEmptySectionAtTheEndHasNoKeys", "[A]", {"A", "x"}, kNothing},
        ReadRow{"AByteOrderMarkIsSkipped", "\xEF\xBB\xBF[A]\r\nx=1\r\n", {"A", "x"}, "1"},
        ReadRow{"ZeroBytesAreBytes", std::string("[A]\r\n\0=2\r\nx=a\0b\r\n", 17), {"A", "x"}, std::string("a\0b", 3)}),
    RowName<ReadRow>);

struct Set {
  std::string_view section;
  std::string_view key;
  std::string_view value;
};

struct WriteRow {
  const char* name;
  std::string before;
  Set set;
  std::string after;
};

void PrintTo(const WriteRow& row, std::ostream* out) { *out << row.name; }

class Writing : public testing::TestWithParam<WriteRow> {};

TEST_P(Writing, ChangesOneValueAlone) {
  const auto& [name, before, set, after] = GetParam();
  ProfileText text(before);
  text.Set(set.section, set.key, set.value);
  EXPECT_EQ(text.Text(), after);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, Writing,
    testing::Values(
        WriteRow{"ANewFileEndsItsLinesInCrLf", "", {"A", "x", "1"}, "[A]\r\nx=1\r\n"},
        WriteRow{"AMissingSectionGoesToTheEnd", "[A]\r\nx=1\r\n", {"B", "y", "2"}, "[A]\r\nx=1\r\n[B]\r\ny=2\r\n"},
        WriteRow{
            "AValueIsReplacedInItsPlace", "[A]\r\nx=1\r\ny=2\r\n", {"A", "x", "longer"}, "[A]\r\nx=longer\r\ny=2\r\n"},
        WriteRow{"AMatchedNameKeepsItsCase", "[aB]\r\nXy=1\r\n", {"Ab", "xY", "2"}, "[aB]\r\nXy=2\r\n"},
        WriteRow{"OnlyTheValueItselfIsReplaced", "[A]\r\n\tx = 'old' \r\n", {"A", "x", "new"}, "[A]\r\n\tx = new \r\n"},
        WriteRow{"ABlankValueTakesANewOne", "[A]\r\nx=\r\n[B]\r\n", {"A", "x", "1"}, "[A]\r\nx=1\r\n[B]\r\n"},
        WriteRow{"AnEmptyValueLeavesTheKey", "[A]\r\nx=1\r\n", {"A", "x", ""}, "[A]\r\nx=\r\n"},
        WriteRow{"BlanksOfAValueAreKept", "[A]\r\n", {"A", "x", " a "}, "[A]\r\nx= a \r\n"},
        WriteRow{"ANewKeyGoesLastInItsSection",
                 "[A]\r\nx=1\r\n; note\r\n[B]\r\n",
                 {"A", "y", "2"},
                 "[A]\r\nx=1\r\n; note\r\ny=2\r\n[B]\r\n"},
        WriteRow{"ANewKeyGoesBeforeTheBlankLineThatEndsItsSection",
                 "[A]\r\nx=1\r\n \r\n\r\n[B]\r\n",
                 {"A", "y", "2"},
                 "[A]\r\nx=1\r\ny=2\r\n \r\n\r\n[B]\r\n"},
        WriteRow{"ANewKeyOfAnEmptySectionFollowsItsHeader",
                 "[A]\r\n\r\n[B]\r\n",
                 {"A", "x", "1"},
                 "[A]\r\nx=1\r\n\r\n[B]\r\n"},
        WriteRow{
            "TheFirstOfTwoSectionsIsWritten", "[A]\r\n[A]\r\nx=1\r\n", {"A", "x", "2"}, "[A]\r\nx=2\r\n[A]\r\nx=1\r\n"},
        WriteRow{"AKeyInACommentIsLeftAlone", "[A]\r\n;x=1\r\n", {"A", "x", "2"}, "[A]\r\n;x=1\r\nx=2\r\n"},
        WriteRow{"LfIsKept", "[A]\nx=1\n", {"B", "y", "2"}, "[A]\nx=1\n[B]\ny=2\n"},
        WriteRow{"CrIsKept", "[A]\rx=1\r", {"A", "y", "2"}, "[A]\rx=1\ry=2\r"},
        WriteRow{"MixedLineEndsAreLeftAlone", "[A]\nx=1\r\ny=2\n", {"A", "x", "3"}, "[A]\nx=3\r\ny=2\n"},
        WriteRow{"AnOpenLastLineIsClosedFirst", "[A]\nx=1", {"A", "y", "2"}, "[A]\nx=1\ny=2\n"},
        WriteRow{"AnOpenHeaderLineIsClosedFirst", "[A]", {"A", "x", "1"}, "[A]\r\nx=1\r\n"},
        WriteRow{"AnOpenLastLineKeepsItsOpenEndWhenReplaced", "[A]\nx=1", {"A", "x", "2"}, "[A]\nx=2"},
        WriteRow{"AByteOrderMarkIsKept", "\xEF\xBB\xBF", {"A", "x", "1"}, "\xEF\xBB\xBF[A]\r\nx=1\r\n"},
        WriteRow{"NothingBreaksOutOfItsLine",
                 "",
                 {"A\n[B]", "x\ry", std::string_view("1\r\n[C]\0", 7)},
                 "[A [B]]\r\nx y=1  [C] \r\n"},
        WriteRow{"WhatWasMadeOneLineIsFoundAgain", "[A B]\r\nx y=1\r\n", {"A\nB", "x\ny", "2"}, "[A B]\r\nx y=2\r\n"}),
    RowName<WriteRow>);

// What was set is found again, in the order in which a command sets; some thousand keys as quickly as a few.
TEST(ProfileText, HoldsManyChanges) {
  constexpr int kMany = 20'000;
  ProfileText text("[A]\r\nx=1");
  std::string expected = "[A]\r\nx=1\r\n";
  for (int i = 0; i < kMany; ++i) {
    const std::string number = std::to_string(i);
    EXPECT_FALSE(text.Find("A", "Dir" + number));
    text.Set("A", "Dir" + number, "old");
    text.Set("a", "DIR" + number, number);
    EXPECT_EQ(text.Find("A", "Dir" + number), number);
    expected += "Dir" + number + "=" + number + "\r\n";
  }
  for (int i = 0; i < kMany; ++i) {
    const std::string number = std::to_string(i);
    text.Set("Game." + number, "Name", number);
    EXPECT_EQ(text.Find("GAME." + number, "Name"), number);
    expected += "[Game." + number + "]\r\nName=" + number + "\r\n";
  }
  EXPECT_TRUE(text.Text() == expected);
}

// Time grows with the text, not with its square.
TEST(ProfileText, IsTakenApartInOnePassWhateverItHolds) {
  constexpr std::size_t kMegabyte = 1'000'000;
  for (const char* const filler : {"[", " [", "=", ";", "\r", "x", "[x]\n", "[]"}) {
    std::string text;
    while (text.size() < kMegabyte) text += filler;
    text += "\n[A]\nx=1\n";
    EXPECT_EQ(ProfileText(text).Find("A", "x"), "1") << filler;
    EXPECT_TRUE(ProfileText(text).Text() == text) << filler;
  }
}

}  // namespace
