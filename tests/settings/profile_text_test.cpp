#include "settings/profile_text.h"

#include <gtest/gtest.h>

TEST(ProfileText, FindsTheFirstMatchInAnyLetterCase) {
  const std::pair<const char*, std::optional<std::string_view>> rows[] = {
      {"[My Section]\nKey=1\nKey=2\n", "1"},
      {"[ my SECTION\t]\r\n\t kEY \t= 1 \t\r\n", "1"},
      {"\xEF\xBB\xBF[My Section]\rKey=1\r", "1"},
      {"Key=0\n[Other]\nKey=0\n[My Section]\nKey=1", "1"},
      {"[My Section]\nOther=0\n[My Section]\nKey=1\n", {}},
      {"[My Section]\n;Key=1\n[Key=1\nKey\n=1\nKey 2=1", {}},
      {"x[My Section]\nKey=1\n", {}},
      {"[My Section\nKey=1\n", {}},
      {"[[My Section]]\nKey=0\n[My Section] ; x]\nKey=0\n[My Section] x\nKey=1", "1"},
      {"[My Section]\nKey=\n", ""},
      {"[My Section]\nKey= \"a=b' \" \n", "a=b' "},
      {"[My Section]\nKey=''\n", ""},
      {"[My Section]\nKey=\"\"\n", ""},
      {"[My Section]\nKey=\"\"x\"\"\n", "\"x\""},
      {"[My Section]\nKey=\"x'\n", "\"x'"},
      {"[My Section]\nKey='\n", "'"},
      {"[My Section]\nKey=a;b [c]\n", "a;b [c]"},
      {"", {}},
  };
  for (const auto& [text, found] : rows) EXPECT_EQ(ProfileText(text).Find("My Section", " Key\t"), found) << text;
  EXPECT_EQ(ProfileText("[\xE4]\n\x9A=1\n").Find("\xC4", "\x8A"), "1");
}

TEST(ProfileText, ChangesNoByteThatIsNotConcerned) {
  const std::array<std::string, 3> rows[] = {
      {"a new file", "", "[A]\r\nKey=new\r\n"},
      {"in place, keeping its spelling", "[a]\n kEY = old \n;x\n", "[a]\n kEY = new \n;x\n"},
      {"with its quotes", "[A]\nKey='old'\nKey=2\n", "[A]\nKey=new\nKey=2\n"},
      {"an empty value", "[A]\nKey=\n", "[A]\nKey=new\n"},
      {"after the last non-blank line", "x\r\n[A]\n1=\t\n \n\n[B]\nKey=2\n",
       "x\r\n[A]\n1=\t\nKey=new\r\n \n\n[B]\nKey=2\n"},
      {"after a lone header at the end", "\xEF\xBB\xBFx\r[A] x", "\xEF\xBB\xBFx\r[A] x\rKey=new\r"},
      {"in a new section", "[B]\nKey=2", "[B]\nKey=2\n[A]\nKey=new\n"},
      {"after lines without a header", "x", "x\r\n[A]\r\nKey=new\r\n"},
  };
  for (const auto& [rule, before, after] : rows) {
    ProfileText text(before);
    EXPECT_EQ(text.Text(), before);
    text.Set("A", " Key ", "new");
    EXPECT_EQ(text.Text(), after) << rule;
  }
  ProfileText text("[A]\n");
  text.Set("A", "a\r\nb", std::string("1\n\0 2", 5));
  EXPECT_EQ(text.Text(), "[A]\na  b=1   2\n");
  text.Set("A", "[B", "x]");
  text.Set("B=x", "y", "2");
  EXPECT_EQ(text.Text(), "[A]\na  b=1   2\n[B=x]\ny=2\n") << "a key that looks like a header becomes one";
}

// Linear time: quadratic in a megabyte would not finish.
TEST(ProfileText, IsParsedWhateverItHolds) {
  for (const char* const filler : {"[", " [", "\r", "[x]\n"}) {
    std::string text;
    while (text.size() < 1'000'000) text += filler;
    text += "\n[A]\nx=1\n";
    EXPECT_EQ(ProfileText(text).Find("A", "x"), "1") << filler;
  }
}
