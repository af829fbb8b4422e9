#include "platform/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>

// Windows-1252: the code page of the game's builds and of compatibility prefixes in Western locales.
namespace platform {
namespace {

// The characters of 0x80 to 0x9F. The five undefined codes map to the control characters of the same number.
constexpr std::array<char16_t, 32> kUpperControls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                     0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                     0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                     0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr bool IsUpperControl(unsigned int code) { return code >= 0x80 && code < 0xA0; }

std::optional<char> FromUnit(char16_t unit) {
  if (unit < 0x100 && !IsUpperControl(unit)) return static_cast<char>(unit);
  const auto* const found = std::ranges::find(kUpperControls, unit);
  if (found == kUpperControls.end()) return std::nullopt;
  return static_cast<char>(0x80 + (found - kUpperControls.begin()));
}

}  // namespace

std::u16string ToUtf16(std::string_view text) {
  std::u16string wide(text.size(), u'\0');
  std::ranges::transform(text, wide.begin(), [](char c) {
    const auto code = static_cast<unsigned char>(c);
    return IsUpperControl(code) ? kUpperControls[code - 0x80U] : static_cast<char16_t>(code);
  });
  return wide;
}

std::optional<std::string> FromUtf16Exactly(std::u16string_view wide) {
  std::string text;
  text.reserve(wide.size());
  for (const char16_t unit : wide) {
    const auto character = FromUnit(unit);
    if (!character) return std::nullopt;
    text += *character;
  }
  return text;
}

char FoldCaseBeyondAscii(char character) {
  const auto code = static_cast<unsigned char>(character);
  const bool isSmall = code >= 0xE0 && code <= 0xFE && code != 0xF7;
  if (isSmall) return static_cast<char>(code - 0x20);
  switch (code) {
    case 0x9A:  // š, œ, ž and ÿ are not at a fixed distance from their capitals
    case 0x9C:
    case 0x9E:
      return static_cast<char>(code - 0x10);
    case 0xFF:
      return static_cast<char>(0x9F);
    default:
      return character;
  }
}

}  // namespace platform
