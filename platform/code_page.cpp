#include "platform/code_page.h"

#include <algorithm>
#include <compare>
#include <cstddef>
#include <utility>

namespace platform {

std::string FromUtf16(std::u16string_view wide) {
  if (auto text = FromUtf16Exactly(wide)) return *std::move(text);
  std::string text;
  text.reserve(wide.size());
  while (!wide.empty()) {
    const bool isSurrogatePair = wide.size() > 1 && (wide[0] & 0xFC00) == 0xD800 && (wide[1] & 0xFC00) == 0xDC00;
    const std::size_t units = isSurrogatePair ? 2 : 1;  // one "?" per character
    text += FromUtf16Exactly(wide.substr(0, units)).value_or("?");
    wide.remove_prefix(units);
  }
  return text;
}

std::string Folded(std::string_view name) {
  std::string folded(name);
  std::ranges::transform(folded, folded.begin(), FoldCase);
  return folded;
}

// Backwards: numbered sections and keys differ at the end.
bool SameName(std::string_view left, std::string_view right) {
  if (left.size() != right.size()) return false;
  for (std::size_t i = left.size(); i-- > 0;) {
    if (left[i] != right[i] && FoldCase(left[i]) != FoldCase(right[i])) return false;
  }
  return true;
}

bool ComesBefore(std::string_view left, std::string_view right) {
  const auto byFolded = [](char a, char b) {
    return static_cast<unsigned char>(FoldCase(a)) <=> static_cast<unsigned char>(FoldCase(b));
  };
  const auto order =
      std::lexicographical_compare_three_way(left.begin(), left.end(), right.begin(), right.end(), byFolded);
  return std::is_eq(order) ? left < right : std::is_lt(order);
}

}  // namespace platform
