#pragma once

#include <optional>
#include <string>
#include <string_view>

// The system's single-byte (ANSI) code page. All text inside the tool is in it; other encodings exist only at the
// platform's edges (Qt, the host's file names, the registry), which convert with these functions.
namespace platform {

std::u16string ToUtf16(std::string_view text);

// Characters that the code page lacks become "?".
std::string FromUtf16(std::u16string_view wide);

// Nothing when the code page lacks one of the characters.
std::optional<std::string> FromUtf16Exactly(std::u16string_view wide);

// The same result for all letter cases of a character.
char FoldCaseBeyondAscii(char character);
inline char FoldCase(char character) {
  if (character >= 'a' && character <= 'z') return static_cast<char>(character - 0x20);
  return static_cast<unsigned char>(character) < 0x80 ? character : FoldCaseBeyondAscii(character);
}

std::string Folded(std::string_view name);

// Whether two names are equal, ignoring letter case.
bool SameName(std::string_view left, std::string_view right);

// The sort order of names in lists: ignores letter case; names that differ only in case are ordered by bytes.
bool ComesBefore(std::string_view left, std::string_view right);

}  // namespace platform
