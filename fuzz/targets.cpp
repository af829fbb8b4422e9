#include "fuzz/targets.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace fuzz {

void Require(bool holds, const char* rule) {
  if (holds) return;
  std::fprintf(stderr, "This does not hold: %s\n", rule);
  std::abort();
}

std::string_view TakeField(std::string_view& input) {
  const std::size_t length = std::min(input.find('|'), input.size());
  const std::string_view field = input.substr(0, length);
  input.remove_prefix(std::min(length + 1, input.size()));
  return field;
}

}  // namespace fuzz
