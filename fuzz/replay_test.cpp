#include <gtest/gtest.h>

#include <filesystem>
#include <utility>

#include "fuzz/targets.h"
#include "support/own_folder.h"

namespace {

// The inputs that are kept, once more; a rule that does not hold ends the program.
TEST(Fuzz, TheKeptInputsKeepTheRules) {
  for (const auto& [name, tryInput] : {std::pair("profile", &fuzz::TryProfile), {"registry", &fuzz::TryRegistry}}) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(GANTREL_CORPUS) / name)) {
      SCOPED_TRACE(entry.path());
      tryInput(support::ReadFile(entry.path()));
      ++count;
    }
    EXPECT_GT(count, 4) << name;
  }
}

}  // namespace
