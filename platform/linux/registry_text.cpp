#include "platform/linux/registry_text.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <system_error>

#include "platform/code_page.h"

namespace platform {
namespace {

constexpr std::uint32_t kRegBinary = 3;
constexpr std::uint32_t kRegMultiSz = 7;

constexpr bool IsText(std::uint32_t type) { return type == kRegSz || type == kRegExpandSz || type == kRegMultiSz; }

// Functions named Take... remove what they read from the front of their text.

// One line, without its line end and leading blanks.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t lineEnd = text.find('\n');
  const std::string_view line = text.substr(0, lineEnd);
  text.remove_prefix(lineEnd == std::string_view::npos ? text.size() : lineEnd + 1);
  return line.substr(0, line.find_last_not_of(" \t\r") + 1);
}

// Whether the line begins with `word`; only then removes it.
bool Take(std::string_view& line, std::string_view word) {
  if (!line.starts_with(word)) return false;
  line.remove_prefix(word.size());
  return true;
}

// An unsigned number of at most `maxDigits` digits (8 or less). Nothing, with nothing removed, if there are fewer than
// `minDigits`.
std::optional<std::uint32_t> TakeNumber(std::string_view& line, int base, std::size_t minDigits,
                                        std::size_t maxDigits) {
  std::uint32_t number = 0;
  const std::string_view room = line.substr(0, maxDigits);
  const auto [end, error] = std::from_chars(room.data(), room.data() + room.size(), number, base);
  const auto digits = static_cast<std::size_t>(end - room.data());
  if (error != std::errc() || digits < minDigits) return std::nullopt;
  line.remove_prefix(digits);
  return number;
}

char TakeChar(std::string_view& line) {
  const char c = line.front();
  line.remove_prefix(1);
  return c;
}

constexpr char16_t ToUnit(char c) { return static_cast<unsigned char>(c); }

// The character after a backslash. The line is not empty.
char16_t TakeEscaped(std::string_view& line) {
  if (const auto octal = TakeNumber(line, 8, 1, 3)) return static_cast<char16_t>(*octal);

  const char escaped = TakeChar(line);
  if (escaped == 'x') return static_cast<char16_t>(TakeNumber(line, 16, 1, 4).value_or(ToUnit(escaped)));
  if (escaped == 'e') return 0x1B;
  constexpr std::string_view kFromBellOn = "abtnvfr";  // the control characters 7 to 13
  const std::size_t control = kFromBellOn.find(escaped);
  return control == std::string_view::npos ? ToUnit(escaped) : static_cast<char16_t>(7 + control);
}

// The next UTF-16 unit of a name or quoted text. The line is not empty.
char16_t TakeUnit(std::string_view& line) {
  const char first = TakeChar(line);
  return first != '\\' || line.empty() ? ToUnit(first) : TakeEscaped(line);
}

// Characters outside the code page need no folding: requested names are in the code page.
char16_t Folded(char16_t unit) {
  if (unit < 0x80) return ToUnit(FoldCase(static_cast<char>(unit)));  // the same in all code pages
  const auto character = FromUtf16Exactly({&unit, 1});
  if (!character) return unit;
  const char folded = FoldCase(character->front());
  return ToUtf16({&folded, 1}).front();
}

// Whether the line begins with `name`; an unescaped `end` ends the comparison. Compares UTF-16: in the code page, all
// missing characters would be the same "?".
bool TakeName(std::string_view& line, std::u16string_view name, char end) {
  for (const char16_t wanted : name) {
    if (line.empty() || line.front() == end) return false;
    const char16_t unit = TakeUnit(line);
    if (unit != wanted && Folded(unit) != Folded(wanted)) return false;
  }
  return true;
}

bool TakeValueName(std::string_view& line, std::u16string_view name) {
  if (Take(line, "@")) return name.empty();
  return Take(line, "\"") && TakeName(line, name, '"') && Take(line, "\"");
}

std::string FromUtf16Bytes(std::string_view bytes) {
  std::u16string wide;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    wide += static_cast<char16_t>(ToUnit(bytes[i]) | ToUnit(bytes[i + 1]) << 8U);
  }
  return FromUtf16(wide);
}

std::optional<RegistryValue> ReadText(std::uint32_t type, std::string_view line) {
  if (!IsText(type) || !Take(line, "\"")) return std::nullopt;
  std::u16string wide;
  while (!line.empty() && line.front() != '"') wide += TakeUnit(line);
  if (line != "\"") return std::nullopt;
  return RegistryValue{type, FromUtf16(wide) + '\0'};
}

std::optional<RegistryValue> ReadDword(std::string_view line) {
  const auto number = TakeNumber(line, 16, 8, 8);
  if (!number || !line.empty()) return std::nullopt;
  std::string data;
  for (unsigned int shift = 0; shift < 32; shift += 8) data += static_cast<char>(*number >> shift & 0xFFU);
  return RegistryValue{kRegDword, data};
}

// The bytes may continue on the lines below.
std::optional<RegistryValue> ReadBytes(std::uint32_t type, std::string_view line, std::string_view linesBelow) {
  std::string bytes;
  bool goesOn = !line.empty();
  while (goesOn) {
    if (line == "\\") line = TakeLine(linesBelow);
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    const auto byte = TakeNumber(line, 16, 2, 2);
    if (!byte) return std::nullopt;
    bytes += static_cast<char>(*byte);
    goesOn = Take(line, ",");
  }
  if (!line.empty()) return std::nullopt;
  return RegistryValue{type, IsText(type) ? FromUtf16Bytes(bytes) : bytes};
}

// The text after a value's name.
std::optional<RegistryValue> ReadValue(std::string_view line, std::string_view linesBelow) {
  if (line.starts_with('"')) return ReadText(kRegSz, line);
  if (Take(line, "dword:")) return ReadDword(line);
  if (Take(line, "hex:")) return ReadBytes(kRegBinary, line, linesBelow);

  const bool isText = Take(line, "str(");
  if (!isText && !Take(line, "hex(")) return std::nullopt;
  const auto type = TakeNumber(line, 16, 1, 8);
  if (!type || !Take(line, "):")) return std::nullopt;
  return isText ? ReadText(*type, line) : ReadBytes(*type, line, linesBelow);
}

// The name of a 32-bit view key in the prefix's file.
std::string In32BitView(std::string_view keyName, bool is64Bit) {
  constexpr std::string_view kSoftware = R"(Software\)";
  constexpr std::string_view kNode = "Wow6432Node";
  keyName = keyName.substr(0, keyName.find_last_not_of('\\') + 1);  // ignores trailing separators
  if (!is64Bit || !SameName(keyName.substr(0, kSoftware.size()), kSoftware)) return std::string(keyName);
  const std::string_view below = keyName.substr(kSoftware.size());
  if (SameName(below.substr(0, below.find('\\')), kNode)) return std::string(keyName);
  return std::string(kSoftware).append(kNode).append("\\").append(below);
}

}  // namespace

std::vector<std::optional<RegistryValue>> FindRegistryValues(std::string_view text,
                                                             std::span<const std::string> keyNames,
                                                             std::string_view valueName) {
  bool is64Bit = false;
  while (!text.empty() && !text.starts_with('[')) {
    if (TakeLine(text) == "#arch=win64") is64Bit = true;
  }
  std::vector<std::u16string> names;
  for (const std::string& name : keyNames) names.push_back(ToUtf16(In32BitView(name, is64Bit)));

  std::vector<std::optional<RegistryValue>> values(names.size());
  std::vector<bool> isBelow(names.size());  // whether the line is below the key
  const std::u16string wantedValue = ToUtf16(valueName);
  while (!text.empty()) {
    const std::string_view line = TakeLine(text);
    for (std::size_t i = 0; i < names.size(); ++i) {
      std::string_view rest = line;
      if (Take(rest, "[")) {
        isBelow[i] = TakeName(rest, names[i], ']') && Take(rest, "]");
      } else if (isBelow[i] && !values[i] && TakeValueName(rest, wantedValue) && Take(rest, "=")) {
        values[i] = ReadValue(rest, text);
      }
    }
  }
  return values;
}

}  // namespace platform
