#include "platform/find_name.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using platform::FindStep;

namespace {

TEST(FindName, GoesRoundThoseThatBeginWithWhatIsTypedAndThenTheOthers) {
  const std::vector<std::string> names = {"Big Armies", "Armour", "The ARMY", "\xD6sterreich", "armistice", ""};
  const struct {
    const char* typed;
    int from;
    FindStep step;
    int position;
  } rows[] = {
      {"arm", -1, FindStep::Typed, 1},    {"ARM", 1, FindStep::Typed, 1},    {"arm", 2, FindStep::Typed, 4},
      {"arm", 5, FindStep::Typed, 1},     {"armi", 1, FindStep::Typed, 4},   {"army", 1, FindStep::Typed, 2},
      {"y", 3, FindStep::Typed, 2},       {"\xF6S", 0, FindStep::Typed, 3},  {"arms", 1, FindStep::Typed, -1},
      {"", 1, FindStep::Typed, -1},       {"arm", 1, FindStep::Next, 4},     {"arm", 4, FindStep::Next, 0},
      {"arm", 0, FindStep::Next, 2},      {"arm", 2, FindStep::Next, 1},     {"arm", 3, FindStep::Next, 4},
      {"arm", 5, FindStep::Next, 0},      {"arm", -1, FindStep::Next, 1},    {"arm", 4, FindStep::Previous, 1},
      {"arm", 1, FindStep::Previous, 2},  {"arm", 0, FindStep::Previous, 4}, {"arm", 3, FindStep::Previous, 1},
      {"arm", -1, FindStep::Previous, 2}, {"y", 2, FindStep::Next, 2},       {"arms", 1, FindStep::Next, -1},
  };
  for (const auto& [typed, from, step, position] : rows)
    EXPECT_EQ(FindName(names, typed, from, step), position) << typed << " from " << from;
}

}  // namespace
