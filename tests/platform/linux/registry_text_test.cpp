#include "platform/linux/registry_text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

namespace {

// A literal with its zero bytes.
template <std::size_t kSize>
std::string Bytes(const char (&literal)[kSize]) {
  return {literal, kSize - 1};
}

// What a look-up gives: "<type>:<data>", as this function has it for a plain text, or one of the two below.
std::string Text(const std::string& text) { return "1:" + text + '\0'; }
constexpr const char* kNoKey = "no such key";
constexpr const char* kNoValue = "no such value";

std::string LookUp(std::string_view text, std::string_view key, std::string_view value) {
  const auto lines = platform::FindRegistryKey(text, key);
  if (!lines) return kNoKey;
  const auto found = platform::FindRegistryValue(*lines, value);
  return found ? std::to_string(found->type) + ":" + found->data : kNoValue;
}

struct Row {
  const char* name;
  std::string text;
  std::string key;
  std::string value;
  std::string expected;
};

// Not the text: the tests are listed by what this prints, and a text with brackets breaks the list.
void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

class RegistryText : public testing::TestWithParam<Row> {};

TEST_P(RegistryText, IsLookedUp) {
  EXPECT_EQ(LookUp(GetParam().text, GetParam().key, GetParam().value), GetParam().expected) << GetParam().text;
}

std::string NameOf(const testing::TestParamInfo<Row>& info) { return info.param.name; }

constexpr const char* kPrefix64 =
    "WINE REGISTRY Version 2\n;; All keys relative to \\\\Machine\n\n#arch=win64\n\n"
    "[Software\\\\A] 1\n@=\"64\"\n\n[Software\\\\Wow6432Node\\\\A] 1\n@=\"32\"\n\n"
    "[Software\\\\Wow6432NodeB] 1\n@=\"64\"\n\n[Software\\\\Wow6432Node\\\\Wow6432NodeB] 1\n@=\"32\"\n\n"
    "[System\\\\A] 1\n@=\"shared\"\n";

INSTANTIATE_TEST_SUITE_P(
    Key, RegistryText,
    testing::Values(
        Row{"BelowSoftwareIsThe32BitView", kPrefix64, "software\\a", "", Text("32")},
        Row{"TheNodeOfThe32BitViewIsNotEnteredTwice", kPrefix64, "Software\\WOW6432NODE\\A", "", Text("32")},
        Row{"ANameThatBeginsLikeTheNodeIsAnotherKey", kPrefix64, "Software\\Wow6432NodeB", "", Text("32")},
        Row{"BesideSoftwareThereIsOneView", kPrefix64, "System\\A", "", Text("shared")},
        Row{"A32BitPrefixHasOneView", "#arch=win32\r\n[Software\\\\A] 1\r\n@=\"x\"\r\n", "Software\\A", "", Text("x")},
        Row{"TheViewIsSaidBeforeTheFirstKey", "[Software\\\\A]\n@=\"x\"\n#arch=win64\n", "Software\\A", "", Text("x")},
        Row{"ASeparatorAtTheEndDoesNotCount", "[A\\\\B]\n@=\"x\"\n", "A\\B\\", "", Text("x")},
        Row{"BracketsInNamesAreEscaped", "[A\\[1\\]] 5\n@=\"x\"\n", "A[1]", "", Text("x")},
        Row{"ALongerNameIsAnotherKey", "[AB]\n@=\"x\"\n", "A", "", kNoKey},
        Row{"AShorterNameIsAnotherKey", "[A]\n@=\"x\"\n", "AB", "", kNoKey},
        Row{"LettersWithMarksHaveCasesToo", "[\\xe9\\x161\xEF]\n@=\"x\"\n", "\xC9\x8A\xCF", "", Text("x")},
        Row{"ACharacterOutsideTheCodePageIsNoQuestionMark", "[\\x4e00]\n@=\"x\"\n", "?", "", kNoKey},
        Row{"TheFirstOfTwoCounts", "[A]\n\"v\"=\"1\"\n[a]\n\"v\"=\"2\"\n", "A", "v", Text("1")},
        Row{"ValuesOfTheNextKeyAreNotIts", "[A]\n\"v\"=\"1\"\n[B]\n\"w\"=\"2\"\n", "A", "w", kNoValue},
        Row{"AnUnendedHeaderEndsTheKeyAbove", "[A]\n[B\n\"w\"=\"2\"\n", "A", "w", kNoValue},
        Row{"AnUnendedHeaderIsNoKey", "[B\n\"w\"=\"2\"\n", "B", "w", kNoKey},
        Row{"ANameEndsAtABracketThatIsNotEscaped", "[A]B]\n@=\"x\"\n", "A]B", "", kNoKey},
        Row{"ANameEndsWithItsLine", "[A\nB]\n@=\"x\"\n", "A\nB", "", kNoKey},
        Row{"ABracketInsideALineStartsNoKey", "[A]\n\"v\"=\"[B]\"\n \n[B]\n@=\"x\"\n", "B", "", Text("x")},
        Row{"AnEmptyTextHasNoKey", "", "A", "", kNoKey}),
    NameOf);

// A key's lines, after others that may confuse the reader and before one that it may run into.
std::string Lines(const std::string& lines) {
  return "[A] 1234567890\n#time=1d9\n#class=\"v\"\n#link\ngarbage\n\"\n\"v\"\n" + lines + "\n\"after\"=\"y\"\n";
}

Row Reads(const char* name, const std::string& line, const std::string& expected) {
  return {name, Lines("\"v\"=" + line), "A", "v", expected};
}

INSTANTIATE_TEST_SUITE_P(
    Value, RegistryText,
    testing::Values(
        Reads("Text", R"("C:\\Games\\\"DoW\"\\")", Text("C:\\Games\\\"DoW\"\\")), Reads("EmptyText", R"("")", Text("")),
        Reads("TextToExpand", R"(str(2):"%ProgramFiles%\\Game")", Bytes("2:%ProgramFiles%\\Game\0")),
        Reads("ListOfTexts", R"(str(7):"a\0b\0")", Bytes("7:a\0b\0\0")),
        Reads("AZeroByteInsideStays", R"("a\0b")", Bytes("1:a\0b\0")),
        Reads("ControlCharacters", R"("\a\b\t\n\v\f\r\e")", Text("\a\b\t\n\v\f\r\x1B")),
        Reads("OctalNumbersEndAfterThreeDigits", R"("\1013\78")", Text("A3\a8")),
        Reads("HexNumbersEndAfterFourDigits", R"("\x00e9e\xe9g\x20ac\x")",
              Text("\xE9"
                   "e\xE9g\x80x")),
        Reads("AByteAboveAsciiIsTheCharacterOfItsNumber", "\"\xE9\x80\"", Text("\xE9?")),
        Reads("ASurrogatePairIsOneCharacter", R"("\xd83d\xde00.")", Text("?.")),
        Reads("Number", "dword:0102ff2a\r", Bytes("4:\x2A\xFF\x02\x01")),
        Reads("Bytes", "hex:00,fF", Bytes("3:\0\xFF")), Reads("NoBytes", "hex:", "3:"),
        Reads("BytesOfAnotherType", "hex(1000a):01", Bytes("65546:\x01")),
        Reads("BytesGoOnInTheNextLine", "hex:01,\\\r\n  02,\\\n  03", Bytes("3:\x01\x02\x03")),
        Reads("TextInBytesIsConverted", "hex(1):e9,00,ac,20,00,00", Text("\xE9\x80")),
        Reads("TextInBytesGetsNoZeroByteAdded", "hex(2):41,00,42", "2:A"),
        Reads("AQuoteThatIsNotClosedEndsWithItsLine", R"("C:\\Games)", kNoValue),
        Reads("ABackslashEscapesNoLineEnd", R"("C:\)", kNoValue), Reads("NothingFollowsAText", R"("a"b")", kNoValue),
        Reads("ANumberHasEightDigits", "dword:0102ff2", kNoValue),
        Reads("ANumberHasNoNinthDigit", "dword:0102ff2ab", kNoValue), Reads("AByteHasTwoDigits", "hex:01,2", kNoValue),
        Reads("AByteFollowsAComma", "hex:01,", kNoValue), Reads("ACommaFollowsAByte", "hex:01 02", kNoValue),
        Reads("BytesDoNotGoOnInAValue", "hex:01,\\", kNoValue),
        Reads("OnlyTextTypesAreQuoted", R"(str(4):"abc")", kNoValue), Reads("ATypeIsANumber", "hex():01", kNoValue),
        Reads("AnUnknownKindCannotBeRead", "3):01", kNoValue), Reads("NothingIsNoValue", "", kNoValue),
        Row{"NamesAreEscapedAndOfAnyCase", Lines(R"("\"\xC9\\"="x")"), "A", "\"\xE9\\", Text("x")},
        Row{"AnAtSignInQuotesIsAName", Lines("@=\"default\"\n\"@\"=\"x\""), "A", "@", Text("x")},
        Row{"TheFirstOfTwoOfOneNameCounts", Lines("\"v\"=\"1\"\n\"V\"=\"2\""), "A", "v", Text("1")},
        Row{"AContinuedLineIsNoValue", Lines("\"w\"=hex:01,\\\n  \"v\"=\"x\""), "A", "v", kNoValue},
        Row{"AnUnclosedQuoteSpoilsNoOtherLine", Lines("\"v\"=\"x\\"), "A", "after", Text("y")},
        Row{"BytesThatBreakOffSpoilNoOtherLine", Lines("\"v\"=hex:01,\\"), "A", "after", Text("y")},
        Row{"ATextMayEndInsideAnEscape", "[A]\n\"v\"=\"x\\x", "A", "v", kNoValue},
        Row{"ATextMayEndInsideAName", "[A]\n\"v\\", "A", "v", kNoValue},
        Row{"ATextMayEndWithoutALineEnd", "[A]\n\"v\"=\"x\"", "A", "v", Text("x")}),
    NameOf);

TEST(RegistryTextOf15Megabytes, HidesNoKeyBehindIt) {
  constexpr std::size_t kLines = 100'000;
  std::string text = "[A]\n\"v\"=hex(1):41,00";
  for (std::size_t i = 0; i < kLines; ++i) {
    text += ",\\\n  ";
    for (int k = 0; k < 24; ++k) text += "42,00,";
    text += "43,00";
  }
  text += "\n[B]\n@=\"x\"\n";
  EXPECT_EQ(LookUp(text, "B", ""), Text("x"));
  EXPECT_EQ(LookUp(text, "A", "v").size(), 2 + 1 + kLines * 25);
}

}  // namespace
