#include "settings/whole_number.h"

#include <algorithm>
#include <charconv>
#include <system_error>

std::optional<std::int32_t> WholeNumber(std::string_view text) {
  constexpr std::string_view kBlanks = " \t";
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  text.remove_suffix(text.size() - (text.find_last_not_of(kBlanks) + 1));
  if (text.starts_with('+') && !text.substr(1).starts_with('-')) text.remove_prefix(1);
  std::int32_t number = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (failure != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}
