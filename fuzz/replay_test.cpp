#include <gtest/gtest.h>

#include <filesystem>
#include <utility>

#include "fuzz/targets.h"
#include "support/own_folder.h"

namespace {

// The inputs that are kept, once more.
TEST(Fuzz, TheKeptInputsKeepTheRules) {
  for (const auto& [name, tryInput] : {std::pair("profile", &fuzz::TryProfile), {"registry", &fuzz::TryRegistry}}) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(GANTREL_CORPUS) / name)) {
      EXPECT_NO_THROW(tryInput(support::ReadFile(entry.path()))) << entry.path();
      ++count;
    }
    EXPECT_GT(count, 4) << name;
  }
}

}  // namespace
