#include "platform/linux/utf8.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/code_page.h"

namespace platform {
namespace {

constexpr char16_t kNoCharacter = 0xFFFE;  // never a character, and in no code page

bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

// The character at the front of `utf8`, which is shortened by it: one UTF-16 unit, since no code page that the tool
// knows has a character beyond those. Anything else, a broken sequence included, gives kNoCharacter.
char16_t TakeCharacter(std::string_view& utf8) {
  const auto lead = static_cast<unsigned char>(utf8.front());
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  constexpr std::array<unsigned int, 5> kLeadBits = {0, 0x7F, 0x1F, 0x0F, 0x07};
  unsigned int code = lead & kLeadBits[length];
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned int next = i < utf8.size() ? static_cast<unsigned char>(utf8[i]) : 0U;
    if ((next & 0xC0U) != 0x80U) {
      utf8.remove_prefix(1);
      return kNoCharacter;
    }
    code = code << 6U | (next & 0x3FU);
  }
  utf8.remove_prefix(std::max<std::size_t>(length, 1));
  const bool isOverlong = length == 3 && code < 0x800;
  return length == 0 || length == 4 || isOverlong ? kNoCharacter : static_cast<char16_t>(code);
}

std::u16string Decoded(std::string_view utf8) {
  std::u16string wide;
  wide.reserve(utf8.size());
  while (!utf8.empty()) wide += TakeCharacter(utf8);
  return wide;
}

}  // namespace

std::string ToUtf8(std::string_view text) {
  if (std::ranges::all_of(text, IsAscii)) return std::string(text);
  std::string utf8;
  for (const char16_t unit : ToUtf16(text)) {
    const unsigned int code = unit;
    if (code < 0x80) {
      utf8 += static_cast<char>(code);
    } else if (code < 0x800) {
      utf8 += static_cast<char>(0xC0U | code >> 6U);
      utf8 += static_cast<char>(0x80U | (code & 0x3FU));
    } else {
      utf8 += static_cast<char>(0xE0U | code >> 12U);
      utf8 += static_cast<char>(0x80U | (code >> 6U & 0x3FU));
      utf8 += static_cast<char>(0x80U | (code & 0x3FU));
    }
  }
  return utf8;
}

std::optional<std::string> FromUtf8Exactly(std::string_view utf8) { return FromUtf16Exactly(Decoded(utf8)); }

std::string FromUtf8(std::string_view utf8) { return FromUtf16(Decoded(utf8)); }

}  // namespace platform
