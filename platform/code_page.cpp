#include "platform/code_page.h"

#include <algorithm>

namespace platform {

std::string FromUtf16(std::u16string_view wide) {
  std::string text;
  text.reserve(wide.size());
  for (std::size_t i = 0; i < wide.size(); ++i) {
    const auto character = FromUtf16Exactly(wide.substr(i, 1));
    text += character ? *character : "?";
    const bool isSurrogatePair =
        (wide[i] & 0xFC00) == 0xD800 && i + 1 < wide.size() && (wide[i + 1] & 0xFC00) == 0xDC00;
    if (isSurrogatePair) ++i;  // one character, one question mark
  }
  return text;
}

// From the end: sections and keys that are numbered differ there.
bool SameName(std::string_view left, std::string_view right) {
  return std::equal(left.rbegin(), left.rend(), right.rbegin(), right.rend(),
                    [](char a, char b) { return a == b || FoldCase(a) == FoldCase(b); });
}

}  // namespace platform
