#include "platform/linux/registry_text.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

namespace {

// A look-up's result as "<type>:<data>", or "none"; this one for plain text.
std::string Text(const std::string& text) { return "1:" + text + '\0'; }
constexpr const char* kNone = "none";

std::string LookUp(std::string_view text, const std::string& key, std::string_view value) {
  const auto found = platform::FindRegistryValues(text, {&key, 1}, value).front();
  return found ? std::to_string(found->type) + ":" + found->data : kNone;
}

TEST(RegistryText, KeysAreFound) {
  constexpr const char* kPrefix64 =
      "WINE REGISTRY Version 2\n;; All keys relative to \\\\Machine\n\n#arch=win64\n\n"
      "[Software\\\\A] 1\n@=\"64\"\n\n[Software\\\\Wow6432Node\\\\A] 1\n@=\"32\"\n\n"
      "[Software\\\\Wow6432NodeB] 1\n@=\"64\"\n\n[Software\\\\Wow6432Node\\\\Wow6432NodeB] 1\n@=\"32\"\n\n"
      "[System\\\\A] 1\n@=\"shared\"\n";
  const std::array<std::string, 5> rows[] = {
      {"below Software, the 32-bit view is used", kPrefix64, "software\\a", Text("32")},
      {"Wow6432Node is not added twice", kPrefix64, "Software\\WOW6432NODE\\A", Text("32")},
      {"a key name may begin like the node", kPrefix64, "Software\\Wow6432NodeB", Text("32")},
      {"outside Software there is one view", kPrefix64, "System\\A", Text("shared")},
      {"the architecture line precedes the first key", "[Software\\\\A]\n@=\"x\"\n#arch=win64\n", "Software\\A",
       Text("x")},
      {"the first key that has the value counts", "[A]\n[a]\n@=\"x\"\n[A]\n@=\"y\"\n[A]\n", "A", Text("x")},
      {"brackets in names are escaped", "[A\\[1\\]] 5\n@=\"x\"\n", "A[1]", Text("x")},
      {"accented letters fold, too", "[\\xe9\\x161\xEF]\n@=\"x\"\n", "\xC9\x8A\xCF", Text("x")},
      {"a character outside the code page does not match ?", "[\\x4e00]\n@=\"x\"\n", "?", kNone},
      {"values of the next key do not count", "[A]\n\"v\"=\"1\"\n[B]\n\"w\"=\"2\"\n", "A", kNone, "w"},
      {"an unterminated header ends the key above", "[A]\n[B\n\"w\"=\"2\"\n", "A", kNone, "w"},
      {"a name ends at an unescaped bracket", "[A]B]\n@=\"x\"\n", "A]B", kNone},
      {"a bracket inside a line starts no key", "[A]\n\"v\"=\"[B]\"\n \n[B]\n@=\"x\"\n", "B", Text("x")},
  };
  for (const auto& [rule, text, key, found, value] : rows) EXPECT_EQ(LookUp(text, key, value), found) << rule;

  const std::string several[] = {"System\\A", "Software\\B", "Software\\A", "system\\a"};
  std::string all;
  for (const auto& value : platform::FindRegistryValues(kPrefix64, several, "")) all += value ? value->data : kNone;
  EXPECT_EQ(all, "shared\0none32\0shared\0"s) << "of several keys, in their order";
}

TEST(RegistryText, ValuesAreReadAndDamagedOnesSpoilNoOther) {
  const std::array<std::string, 3> rows[] = {
      {"a text", R"("C:\\Games\\\"DoW\"\\")", Text("C:\\Games\\\"DoW\"\\")},
      {"expandable text", R"(str(2):"%ProgramFiles%\\Game")", "2:%ProgramFiles%\\Game\0"s},
      {"a zero byte inside stays", R"(str(7):"a\0b\0")", "7:a\0b\0\0"s},
      {"control characters", R"("\a\b\t\n\v\f\r\e")", Text("\a\b\t\n\v\f\r\x1B")},
      {"octal numbers end after three digits", R"("\1013\78")", Text("A3\a8")},
      {"hex numbers end after four", R"("\x00e9e\xe9g\x20ac\x")", Text("\351e\351g\x80x")},
      {"a byte above ASCII is the character of its number", "\"\xE9\x80\"", Text("\xE9?")},
      {"a surrogate pair is one character", R"("\xd83d\xde00.")", Text("?.")},
      {"a number", "dword:0102ff2a\r", "4:\x2A\xFF\x02\x01"s},
      {"bytes of another type", "hex(1000a):01", "65546:\x01"s},
      {"bytes continue on the next line", "hex:00,\\\r\n  02,\\\n  fF", "3:\0\x02\xFF"s},
      {"text in bytes gets no zero byte added", "hex(2):e9,00,ac,20,42", "2:\xE9\x80"},
      {"an open quote ends with its line", R"("C:\\Games)", kNone},
      {"a backslash does not escape a line end", R"("C:\)", kNone},
      {"a number has eight digits", "dword:0102ff2", kNone},
      {"a ninth digit is malformed", "dword:0102ff2ab", kNone},
      {"a byte has two digits", "hex:01,2", kNone},
      {"a byte follows a comma", "hex:01,", kNone},
      {"a comma follows a byte", "hex:01 02", kNone},
      {"bytes do not continue in a value", "hex:01,\\", kNone},
      {"only text types are quoted", R"(str(4):"abc")", kNone},
  };
  // Surrounds the value with lines that may confuse the parser.
  const std::string above =
      "[A] 1234567890\n#time=1d9\n#link\ngarbage\n\"\n\"v\"\n\"w\"=hex:01,\\\n  \"v\"=\"x\"\n@=\"d\"\n\"v\"=";
  for (const auto& [rule, written, read] : rows) {
    const std::string text = std::string(above).append(written).append("\n\"\\\"\xC9@\"=\"y\"\n");
    EXPECT_EQ(LookUp(text, "A", "v"), read) << rule;
    EXPECT_EQ(LookUp(text, "a", "\"\xE9@"), Text("y")) << rule << ", and the next value";
    EXPECT_EQ(LookUp(text, "A", ""), Text("d"));
  }
}

// Time grows linearly, and values have no length limit.
TEST(RegistryText, OfSeveralMegabytesHidesNothing) {
  constexpr std::size_t kLines = 20'000;
  std::string text = "[A]\n\"v\"=hex(1):41,00";
  for (std::size_t i = 0; i < kLines; ++i) text += ",\\\n  42,00,42,00,42,00,42,00,42,00,42,00,42,00,42,00,42,00,42,00";
  text += "\n[B]\n@=\"x\"\n";
  EXPECT_EQ(LookUp(text, "B", ""), Text("x"));
  EXPECT_EQ(LookUp(text, "A", "v").size(), 2 + 1 + kLines * 10);
}

}  // namespace
