#include "platform/registry.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "mods/frmMain.h"
#include "support/own_folder.h"
#include "support/system.h"

using platform::kHkeyLocalMachine;
using support::SetRegistry;
using support::View;

namespace {

constexpr const char* kKey = "Software\\THQ\\Dawn of War";

std::string Folder(std::int32_t root = kHkeyLocalMachine) {
  return frmMain::GetKeyValue(root, kKey, "InstallLocation");
}

class Registry : public testing::Test {
 protected:
  void SetUp() override { support::Reset(); }
  void TearDown() override { SetRegistry({}); }
};

TEST_F(Registry, IsReadInThe32BitViewOfTheLocalMachine) {
  SetRegistry({{"Dawn of War", "C:\\64", View::Bits64}});
  EXPECT_EQ(Folder(), "");
  SetRegistry({{"Dawn of War", "C:\\32"}, {"Dawn of War", "C:\\64", View::Bits64}});
  EXPECT_EQ(Folder(), "C:\\32");
  EXPECT_EQ(Folder(kHkeyLocalMachine - 1), "");
}

TEST_F(Registry, GivesTextAndNumbersAsTheyAre) {
  constexpr std::uint32_t kBytes = 3;
  constexpr std::uint32_t kTexts = 7;
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
      {"empty", platform::kRegSz, nul, ""},
      {"1023 characters fit", platform::kRegSz, std::string(1023, 'x') + nul, std::string(1023, 'x')},
      {"1024 do not", platform::kRegSz, std::string(1024, 'x') + nul, ""},
      {"nor without their end", platform::kRegSz, std::string(1024, 'x'), ""},
      {"a number", platform::kRegDword, "\x04\x03\x02\x01", "16909060"},
      {"a negative number", platform::kRegDword, "\xFE\xFF\xFF\xFF", "-2"},
      {"bytes", kBytes, "abc" + nul, ""},
      {"a list of texts", kTexts, "a" + nul + nul, ""},
  };
  for (const auto& row : rows) {
    SetRegistry({{"Dawn of War", row.data, View::Bits32, row.type}});
    EXPECT_EQ(Folder(), row.text) << row.rule;
  }
}

TEST_F(Registry, CopiesNothingWhereThereIsTooLittleRoom) {
  SetRegistry({{"Dawn of War", std::string(20, 'x')}});
  platform::RegistryKey key = nullptr;
  ASSERT_EQ(platform::RegOpenKeyExA(kHkeyLocalMachine, kKey, 0, platform::kKeyQueryValue, &key), 0);
  std::array<std::byte, 21> data = {};
  std::uint32_t type = 0;
  std::uint32_t size = 20;
  EXPECT_EQ(platform::RegQueryValueExA(key, "InstallLocation", nullptr, &type, data.data(), &size),
            platform::kErrorMoreData);
  EXPECT_EQ(size, 21U);
  EXPECT_EQ(data.front(), std::byte{0});
  EXPECT_EQ(platform::RegCloseKey(key), 0);
}

}  // namespace
