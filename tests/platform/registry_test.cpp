#include "platform/registry.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "installations/registry_lookup.h"
#include "support/own_folder.h"
#include "support/system.h"

using platform::kHkeyLocalMachine;
using support::SetRegistry;
using support::View;

namespace {

std::string Folder(std::int32_t root = kHkeyLocalMachine) {
  return GetKeyValue(root, "Software\\THQ\\Dawn of War", "InstallLocation");
}

TEST(Registry, IsReadInThe32BitViewOfTheLocalMachine) {
  support::Reset();
  SetRegistry({{"Dawn of War", "C:\\64", View::Bits64}});
  EXPECT_EQ(Folder(), "");
  SetRegistry({{"Dawn of War", "C:\\32"}, {"Dawn of War", "C:\\64", View::Bits64}});
  EXPECT_EQ(Folder(), "C:\\32");
  EXPECT_EQ(Folder(kHkeyLocalMachine - 1), "");
}

TEST(Registry, GivesTextAndNumbersAsTheyAre) {
  support::Reset();
  constexpr std::uint32_t kBytes = 3;
  const std::string nul(1, '\0');
  const struct {
    const char* rule;
    std::uint32_t type;
    std::string data;
    std::string text;
  } rows[] = {
      {"text in the code page", platform::kRegSz, "C:\\D\xF6W \x80" + nul, "C:\\D\xF6W \x80"},
      {"not expanded", platform::kRegExpandSz, "%ProgramFiles%\\Game" + nul, "%ProgramFiles%\\Game"},
      {"up to a zero byte", platform::kRegSz, "a" + nul + "b" + nul, "a"},
      {"1023 characters fit", platform::kRegSz, std::string(1023, 'x') + nul, std::string(1023, 'x')},
      {"1024 do not", platform::kRegSz, std::string(1024, 'x') + nul, ""},
      {"nor without their end", platform::kRegSz, std::string(1024, 'x'), ""},
      {"nor what ends within more", platform::kRegSz, "a" + nul + std::string(200'000, 'x'), ""},
      {"a number", platform::kRegDword, "\x04\x03\x02\x01", "16909060"},
      {"a negative number", platform::kRegDword, "\xFE\xFF\xFF\xFF", "-2"},
      {"bytes", kBytes, "abc" + nul, ""},
  };
  for (const auto& row : rows) {
    SetRegistry({{"Dawn of War", row.data, View::Bits32, row.type}});
    EXPECT_EQ(Folder(), row.text) << row.rule;
  }
}

}  // namespace
