#include "settings/profile_text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// In one pass: with the square of a megabyte, this would not come to an end. The rules are tried by the kept inputs of
// fuzz/, which are held against a plain model of them.
TEST(ProfileText, IsTakenApartWhateverItHolds) {
  for (const char* const filler : {"[", " [", "\r", "[x]\n"}) {
    std::string text;
    while (text.size() < 1'000'000) text += filler;
    text += "\n[A]\nx=1\n";
    EXPECT_EQ(ProfileText(text).Find("A", "x"), "1") << filler;
  }
}

}  // namespace
