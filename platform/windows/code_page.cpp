#include "platform/code_page.h"

#include <array>
#include <cstddef>

#include "platform/windows/system.h"
#include "platform/windows/wide.h"

// The system's code page, whichever it is. Multi-byte code pages convert correctly, but only single bytes have letter
// case.
namespace platform {
namespace {

char FoldByConversion(char character) {
  const std::wstring wide = ToWide(ToUtf16({&character, 1}));
  if (wide.size() != 1) return character;
  wchar_t folded = wide.front();
  CharUpperBuffW(&folded, 1);
  const auto narrow = FromUtf16Exactly(ToUnits({&folded, 1}));
  return narrow && narrow->size() == 1 ? narrow->front() : character;
}

std::array<char, 256> MakeFoldedCases() {
  std::array<char, 256> table = {};
  for (std::size_t i = 0; i < table.size(); ++i) table[i] = FoldByConversion(static_cast<char>(i));
  return table;
}

}  // namespace

std::u16string ToUtf16(std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');  // no code page has characters of more units than bytes
  const int units = size == 0 ? 0 : MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), size);
  wide.resize(static_cast<std::size_t>(units));
  return ToUnits(wide);
}

// Converts back to compare: the system replaces missing characters by similar ones, such as a letter without its
// accent, which would be another name.
std::optional<std::string> FromUtf16Exactly(std::u16string_view wide) {
  constexpr std::size_t kMostBytesPerUnit = 4;
  const std::wstring units = ToWide(wide);
  std::string text(units.size() * kMostBytesPerUnit, '\0');
  const int bytes = units.empty() ? 0
                                  : WideCharToMultiByte(CP_ACP, 0, units.data(), static_cast<int>(units.size()),
                                                        text.data(), static_cast<int>(text.size()), nullptr, nullptr);
  text.resize(static_cast<std::size_t>(bytes));
  if (ToUtf16(text) != wide) return std::nullopt;
  return text;
}

char FoldCaseBeyondAscii(char character) {
  static const std::array<char, 256> kFolded = MakeFoldedCases();
  return kFolded[static_cast<unsigned char>(character)];
}

}  // namespace platform
