#include <gtest/gtest.h>

#include <filesystem>

#include "fuzz/targets.h"
#include "support/own_folder.h"

namespace {

// The inputs that are kept, once more; a rule that does not hold ends the program.
TEST(Fuzz, TheKeptInputsKeepTheRules) {
  for (const fuzz::Target& target : fuzz::kTargets) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(GANTREL_CORPUS) / target.name)) {
      SCOPED_TRACE(entry.path());
      target.tryInput(support::ReadFile(entry.path()));
      ++count;
    }
    EXPECT_GT(count, 4) << target.name;
  }
}

}  // namespace
