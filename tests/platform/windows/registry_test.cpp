#include "platform/registry.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string>

#include "mods/frmMain.h"
#include "platform/windows/system.h"
#include "support/system.h"

using support::SetRegistry;
using support::View;

namespace {

constexpr const char* kKey = "Software\\THQ\\Dawn of War";

std::string Folder() { return frmMain::GetKeyValue(platform::kHkeyLocalMachine, kKey, "InstallLocation"); }

class Registry : public testing::Test {
 protected:
  void TearDown() override { SetRegistry({}); }

  // Puts a value into the key of the 32-bit view, as another program would.
  static void Put(DWORD type, const std::string& data) {
    SetRegistry({{"Dawn of War", "x"}});
    HKEY key = nullptr;
    ASSERT_EQ(::RegOpenKeyExA(HKEY_LOCAL_MACHINE, kKey, 0, KEY_SET_VALUE | KEY_WOW64_32KEY, &key), ERROR_SUCCESS);
    EXPECT_EQ(::RegSetValueExA(key, "InstallLocation", 0, type, reinterpret_cast<const BYTE*>(data.data()),
                               static_cast<DWORD>(data.size())),
              ERROR_SUCCESS);
    ::RegCloseKey(key);
  }
};

TEST_F(Registry, IsReadInThe32BitView) {
  SetRegistry({});
  EXPECT_EQ(Folder(), "");
  SetRegistry({{"Dawn of War", "C:\\64", View::Bits64}});
  EXPECT_EQ(Folder(), "");
  SetRegistry({{"Dawn of War", "C:\\32"}, {"Dawn of War", "C:\\64", View::Bits64}});
  EXPECT_EQ(Folder(), "C:\\32");
}

TEST_F(Registry, GivesTextAndNumbersAsTheyAre) {
  struct Row {
    const char* rule;
    DWORD type;
    std::string data;
    std::string text;
  };
  const std::string nul(1, '\0');
  const Row rows[] = {
      {"text in the code page", REG_SZ, "C:\\D\xF6W \x80" + nul, "C:\\D\xF6W \x80"},
      {"not expanded", REG_EXPAND_SZ, "%ProgramFiles%\\Game" + nul, "%ProgramFiles%\\Game"},
      {"up to a zero byte", REG_SZ, "a" + nul + "b" + nul, "a"},
      {"empty", REG_SZ, nul, ""},
      {"1023 characters fit", REG_SZ, std::string(1023, 'x') + nul, std::string(1023, 'x')},
      {"1024 do not", REG_SZ, std::string(1024, 'x') + nul, ""},
      {"a number", REG_DWORD, std::string("\x04\x03\x02\x01"), "16909060"},
      {"a negative number", REG_DWORD, std::string(4, '\xFF'), "-1"},
      {"bytes", REG_BINARY, "abc" + nul, ""},
      {"a list of texts", REG_MULTI_SZ, "a" + nul + nul, ""},
  };
  for (const Row& row : rows) {
    Put(row.type, row.data);
    EXPECT_EQ(Folder(), row.text) << row.rule;
  }
}

TEST_F(Registry, SaysWhatIsWrong) {
  using platform::kHkeyLocalMachine;
  using platform::kKeyQueryValue;
  SetRegistry({{"Dawn of War", std::string(20, 'x')}});
  platform::RegistryKey key = nullptr;
  EXPECT_EQ(platform::RegOpenKeyExA(kHkeyLocalMachine, "Software\\THQ\\None", 0, kKeyQueryValue, &key),
            platform::kErrorFileNotFound);
  EXPECT_EQ(key, nullptr);
  ASSERT_EQ(platform::RegOpenKeyExA(kHkeyLocalMachine, kKey, 0, kKeyQueryValue, &key), platform::kErrorSuccess);
  std::array<std::byte, 20> data = {};
  std::uint32_t type = 0;
  std::uint32_t size = data.size();
  EXPECT_EQ(platform::RegQueryValueExA(key, "InstallLocation", nullptr, &type, data.data(), &size),
            platform::kErrorMoreData);
  EXPECT_EQ(size, 21U);
  size = data.size();
  EXPECT_EQ(platform::RegQueryValueExA(key, "None", nullptr, &type, data.data(), &size), platform::kErrorFileNotFound);
  EXPECT_EQ(platform::RegCloseKey(key), platform::kErrorSuccess);
}

}  // namespace
