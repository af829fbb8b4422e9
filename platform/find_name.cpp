#include "platform/find_name.h"

#include <algorithm>
#include <iterator>

#include "platform/code_page.h"

namespace platform {

// Next and Previous from an entry that is no match continue among the names that begin with the text.
int FindName(const std::vector<std::string>& names, std::string_view typed, int from, FindStep step) {
  if (typed.empty()) return -1;
  std::vector<int> matches;
  std::vector<int> inside;
  for (int i = 0; i < std::ssize(names); ++i) {
    const std::string& name = names[static_cast<std::size_t>(i)];
    const auto found = std::search(name.begin(), name.end(), typed.begin(), typed.end(),
                                   [](char one, char other) { return FoldCase(one) == FoldCase(other); });
    if (found != name.end()) (found == name.begin() ? matches : inside).push_back(i);
  }
  if (step == FindStep::Typed) {
    const auto& best = matches.empty() ? inside : matches;
    const auto at = std::ranges::lower_bound(best, from);
    return best.empty() ? -1 : at == best.end() ? best.front() : *at;
  }
  auto before = std::ranges::lower_bound(matches, from) - matches.begin();  // matches before the current entry
  matches.insert(matches.end(), inside.begin(), inside.end());
  if (matches.empty()) return -1;
  const auto present = std::ranges::find(matches, from);
  if (present != matches.end()) before = present - matches.begin();
  const auto next = before + (present != matches.end() ? 1 : 0);
  const auto count = std::ssize(matches);
  return matches[static_cast<std::size_t>((step == FindStep::Next ? next : before - 1 + count) % count)];
}

}  // namespace platform
