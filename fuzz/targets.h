#pragma once

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

// What is tried with any bytes whatever, by libFuzzer and, with the committed ones, by the tests. Each stops the
// program when a rule does not hold. An input is one or more fields, ended by "|"; the last goes to the input's end.
namespace fuzz {

void TryProfile(std::string_view input);   // text|section|key|value|section|..., held against a plain model
void TryRegistry(std::string_view input);  // key|value's name|text

// Ends the program unless the rule holds.
inline void Require(bool holds, const char* rule) {
  if (holds) return;
  std::fprintf(stderr, "This does not hold: %s\n", rule);
  std::abort();
}

inline std::string_view TakeField(std::string_view& input) {
  const std::size_t length = std::min(input.find('|'), input.size());
  const std::string_view field = input.substr(0, length);
  input.remove_prefix(std::min(length + 1, input.size()));
  return field;
}

}  // namespace fuzz
