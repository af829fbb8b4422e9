#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Finding in a list by typing.
namespace platform {

enum class FindStep : std::uint8_t {
  Typed,  // the typed text has changed; the selection stays if it is a match of the best kind
  Next,
  Previous,
};

// The position of the match; -1 if none. Names that begin with the typed text come before names that contain it, each
// in list order, wrapping around. Ignores letter case. `from` is the current position, or -1.
int FindName(const std::vector<std::string>& names, std::string_view typed, int from, FindStep step);

}  // namespace platform
