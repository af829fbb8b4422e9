#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Finding in a list by typing.
namespace platform {

enum class FindStep : std::uint8_t {
  Typed,  // what was typed has changed; the present entry stays where it is a match of the best kind
  Next,
  Previous,
};

// The position of the match; -1 when there is none. Those that begin with what is typed come before those that have it
// elsewhere, each in the list's order, and the end is followed by the beginning. Letter case does not count. `from` is
// the present position, or -1.
int FindName(const std::vector<std::string>& names, std::string_view typed, int from, FindStep step);

}  // namespace platform
