#pragma once

#include <algorithm>
#include <stdexcept>
#include <string_view>

// What is tried with any bytes whatever, by libFuzzer and, with the committed ones, by the tests. Each throws when a
// rule does not hold; libFuzzer ends with that. An input is one or more fields, ended by "|"; the last goes to the
// input's end.
namespace fuzz {

void TryProfile(std::string_view input);   // text|section|key|value|section|..., held against a plain model
void TryRegistry(std::string_view input);  // key|value's name|text

inline void Require(bool holds, const char* rule) {
  if (!holds) throw std::logic_error(rule);
}

inline std::string_view TakeField(std::string_view& input) {
  const std::size_t length = std::min(input.find('|'), input.size());
  const std::string_view field = input.substr(0, length);
  input.remove_prefix(std::min(length + 1, input.size()));
  return field;
}

}  // namespace fuzz
