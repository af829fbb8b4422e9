#include "platform/profile_text.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

using platform::ProfileText;

namespace {

// What the kept inputs of fuzz/ say, which are held against a model of the same rules, is not said here again.
TEST(ProfileText, Finds) {
  const std::optional<std::string> none;
  const struct {
    const char* rule;
    std::string text;
    std::string_view section;
    std::string_view key;
    std::optional<std::string> value;
  } rows[] = {
      {"the first matching section counts", "[A]\r\nx=1\r\n[A]\r\nx=2\r\ny=3\r\n", "A", "y", none},
      {"the first matching key counts", "[A]\r\nx=1\r\nx=2\r\n", "A", "x", "1"},
      {"a key of another section is not found", "[A]\r\nx=1\r\n[B]\r\ny=2\r\n", "A", "y", none},
      {"nor one before any section", "x=1\r\n[A]\r\n", "", "x", none},
      {"names match in any letter case, beyond ASCII as well", "[\xC4\x9F\xD8]\r\nx=1\r\n", "\xE4\xFF\xF8", "X", "1"},
      {"signs are not letters", "[\xD7]\r\nx=1\r\n", "\xF7", "x", none},
      {"blanks around a key and a header do not count", "\t [A] \r\n \tx\t = 1\r\n", "A", "x", "1"},
      {"nor those inside a header", "[ A\t]\r\nx=1\r\n", "A ", "x", "1"},
      {"a name of blanks is a name", "[  ]\r\nx=1\r\n", " ", "x", "1"},
      {"a bracket in a line is no header", "[A]\r\ny=[A\r\nz [B]\r\nx=1\r\n", "A", "x", "1"},
      {"the value follows the first equals sign", "[A]\r\nx=a=b\r\n", "A", "x", "a=b"},
      {"blanks around a value do not count", "[A]\r\nx= \t a b\t \r\n", "A", "x", "a b"},
      {"a comment is no key", "[A]\r\n;x=1\r\n ; x=2\r\n", "A", "; x", none},
      {"nor is a line without equals sign", "[A]\r\nx\r\nx=1\r\n", "A", "x", "1"},
      {"an empty value is a value", "[A]\r\nx=\r\n", "A", "x", ""},
      {"one pair of double quotes goes", "[A]\r\nx= \"\" a\"\" \r\n", "A", "x", "\" a\""},
      {"unlike quotes stay", "[A]\r\nx='a\"\r\n", "A", "x", "'a\""},
      {"a lone quote stays", "[A]\r\nx=\"\r\n", "A", "x", "\""},
      {"lines end in LF and in CR, too", "[A]\nx=1\r\r\n[B]\ry=2", "B", "y", "2"},
      {"an empty section at the end has no keys", "[A]", "A", "x", none},
      {"zero bytes are bytes", std::string("[A]\r\n\0=2\r\nx=a\0b\r\n", 17), "A", "x", std::string("a\0b", 3)},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ProfileText(row.text).Find(row.section, row.key), row.value) << row.rule;
    EXPECT_EQ(ProfileText::FindIn(row.text, row.section, row.key), row.value) << row.rule;
  }
}

TEST(ProfileText, SetsOneValueAlone) {
  const struct {
    const char* rule;
    std::string before;
    std::string_view section;
    std::string_view key;
    std::string_view value;
    std::string after;
  } rows[] = {
      {"blanks around the value stay", "[A]\r\n\tx = 'old' \r\n", "A", "x", "new", "[A]\r\n\tx = new \r\n"},
      {"an empty value leaves the key", "[A]\r\nx=1\r\n", "A", "x", "", "[A]\r\nx=\r\n"},
      {"blanks of a new value are kept", "[A]\r\n", "A", "x", " a ", "[A]\r\nx= a \r\n"},
      {"a new key goes before blank lines", "[A]\r\nx=1\r\n \r\n\r\n[B]", "A", "y", "2",
       "[A]\r\nx=1\r\ny=2\r\n \r\n\r\n[B]"},
      {"without the blanks around it", "[A]\r\n", "A", " x\t", "1", "[A]\r\nx=1\r\n"},
      {"and behind the header", "[A]\r\n\r\n[B]\r\n", "A", "x", "1", "[A]\r\nx=1\r\n\r\n[B]\r\n"},
      {"the first of two sections counts", "[A]\n[A]\nx=1\n", "A", "x", "2", "[A]\nx=2\n[A]\nx=1\n"},
      {"CR is kept", "[A]\rx=1\r", "A", "y", "2", "[A]\rx=1\ry=2\r"},
      {"mixed line ends are left alone", "[A]\nx=1\r\ny=2\n", "A", "x", "3", "[A]\nx=3\r\ny=2\n"},
      {"an open last line stays open", "[A]\nx=1", "A", "x", "2", "[A]\nx=2"},
      {"nothing breaks out", "", "A\n[B]", "x\ry", {"1\r\n[C]\0", 7}, "[A [B]]\r\nx y=1  [C] \r\n"},
  };
  for (const auto& row : rows) {
    ProfileText text(row.before);
    text.Set(row.section, row.key, row.value);
    EXPECT_EQ(text.Text(), row.after) << row.rule;
  }
}

// What was set is found again, in the order in which a command sets, and in a long section and among many.
TEST(ProfileText, HoldsManyChanges) {
  constexpr int kMany = 2'000;
  ProfileText text("[A]\r\nx=1");
  std::string expected = "[A]\r\nx=1\r\n";
  for (int i = 0; i < 2 * kMany; ++i) {
    const std::string section = i < kMany ? "A" : "Game." + std::to_string(i);
    const std::string number = std::to_string(i);
    EXPECT_FALSE(text.Find(section, "Dir" + number));
    text.Set(section, "Dir" + number, "old");
    text.Set(section == "A" ? "a" : section, "DIR" + number, number);
    EXPECT_EQ(text.Find(section, "Dir" + number), number);
    if (i >= kMany) expected.append("[").append(section).append("]\r\n");
    expected.append("Dir").append(number).append("=").append(number).append("\r\n");
  }
  EXPECT_EQ(text.Text(), expected);
}

// In one pass: with the square of a megabyte, this would not come to an end.
TEST(ProfileText, IsTakenApartWhateverItHolds) {
  for (const char* const filler : {"[", " [", "\r", "[x]\n"}) {
    std::string text;
    while (text.size() < 1'000'000) text += filler;
    text += "\n[A]\nx=1\n";
    EXPECT_EQ(ProfileText(text).Find("A", "x"), "1") << filler;
  }
}

}  // namespace
