#include "platform/registry.h"

#include <gtest/gtest.h>

#include "installations/registry_lookup.h"
#include "support/own_folder.h"

using namespace support;
using platform::kHkeyLocalMachine;

namespace {

std::string Folder(std::int32_t root = kHkeyLocalMachine) {
  return GetKeyValue(root, "Software\\THQ\\Dawn of War", "InstallLocation");
}

TEST(Registry, IsReadInThe32BitViewOfTheLocalMachine) {
  Reset();
  SetRegistry({{"Dawn of War", "C:\\64", true}});
  EXPECT_EQ(Folder(), "");
  SetRegistry({{"Dawn of War", "C:\\32"}, {"Dawn of War", "C:\\64", true}});
  EXPECT_EQ(Folder(), "C:\\32");
  EXPECT_EQ(Folder(kHkeyLocalMachine - 1), "");
}

TEST(Registry, GivesTextAndNumbersAsTheyAre) {
  Reset();
  constexpr std::uint32_t kBytes = 3;
  const std::string nul(1, '\0');
  const std::tuple<const char*, std::uint32_t, std::string, std::string> rows[] = {
      {"text in the code page", platform::kRegSz, "C:\\D\xF6W \x80" + nul, "C:\\D\xF6W \x80"},
      {"not expanded, up to a zero byte", platform::kRegExpandSz, "%a%" + nul + "b" + nul, "%a%"},
      {"1023 characters fit", platform::kRegSz, std::string(1023, 'x') + nul, std::string(1023, 'x')},
      {"1024 do not without their end", platform::kRegSz, std::string(1024, 'x'), ""},
      {"longer data with an early end", platform::kRegSz, "a" + nul + std::string(1023, 'x'), ""},
      {"a number", platform::kRegDword, "\xFE\xFD\xFF\xFF", "-514"},
      {"bytes", kBytes, "abc" + nul, ""},
  };
  for (const auto& [rule, type, data, text] : rows) {
    SetRegistry({{"Dawn of War", data, false, type}});
    EXPECT_EQ(Folder(), text) << rule;
  }
}

}  // namespace
