#include "platform/find_name.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using platform::Find;

namespace {

TEST(FindName, GoesRoundThoseThatBeginWithWhatIsTypedAndThenTheOthers) {
  const std::vector<std::string> names = {"Big Armies", "Armour", "The ARMY", "\xD6sterreich", "armistice", ""};
  const struct {
    const char* typed;
    int from;
    Find find;
    int position;
  } rows[] = {
      {"arm", -1, Find::Typed, 1},    {"ARM", 1, Find::Typed, 1},    {"arm", 2, Find::Typed, 4},
      {"arm", 5, Find::Typed, 1},     {"armi", 1, Find::Typed, 4},   {"army", 1, Find::Typed, 2},
      {"y", 3, Find::Typed, 2},       {"\xF6S", 0, Find::Typed, 3},  {"arms", 1, Find::Typed, -1},
      {"", 1, Find::Typed, -1},       {"arm", 1, Find::Next, 4},     {"arm", 4, Find::Next, 0},
      {"arm", 0, Find::Next, 2},      {"arm", 2, Find::Next, 1},     {"arm", 3, Find::Next, 4},
      {"arm", 5, Find::Next, 0},      {"arm", -1, Find::Next, 1},    {"arm", 4, Find::Previous, 1},
      {"arm", 1, Find::Previous, 2},  {"arm", 0, Find::Previous, 4}, {"arm", 3, Find::Previous, 1},
      {"arm", -1, Find::Previous, 2}, {"y", 2, Find::Next, 2},       {"arms", 1, Find::Next, -1},
  };
  for (const auto& row : rows)
    EXPECT_EQ(FindName(names, row.typed, row.from, row.find), row.position)
        << row.typed << " from " << row.from << ", " << static_cast<int>(row.find);
}

}  // namespace
