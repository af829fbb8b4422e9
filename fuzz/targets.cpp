#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/linux/registry_text.h"
#include "settings/profile_text.h"

// Accepts any bytes: libFuzzer generates them, the tests replay the committed ones. Each target throws when a rule is
// broken, which stops libFuzzer. An input is one or more fields, each ended by "|" except the last.
namespace {

void Require(bool holds, const char* rule) {
  if (!holds) throw std::logic_error(rule);
}

std::string_view TakeField(std::string_view& input) {
  const std::size_t length = std::min(input.find('|'), input.size());
  const std::string_view field = input.substr(0, length);
  input.remove_prefix(std::min(length + 1, input.size()));
  return field;
}

// text|section|key|value|section|...: a text and changes to it. Tables in the tests cover what is found.
[[maybe_unused]] void TryProfile(std::string_view input) {
  const std::string_view before = TakeField(input);
  ProfileText text(before);
  Require(text.Text() == before, "the text is kept");
  while (!input.empty()) {
    const std::string_view section = TakeField(input);
    const std::string_view key = TakeField(input);
    const std::string_view value = TakeField(input);
    const std::string old = text.Text();
    constexpr std::string_view kNotOnOneLine("\r\n\0", 3);  // these become blanks, so the key may differ
    const bool isPlain = (std::string(section) + std::string(key)).find_first_of(kNotOnOneLine) == std::string::npos;
    const bool mayBeThere = !isPlain || text.Find(section, key).has_value();
    text.Set(section, key, value);
    const std::string changed = text.Text();
    Require(ProfileText(changed).Text() == changed, "and so is the changed one");
    Require(ProfileText(changed).Find(section, key) == text.Find(section, key), "read again, it is the same");
    Require(mayBeThere || changed.size() > old.size(), "what is added takes nothing away");
    const bool isFound = text.Find(section, key) == value;
    text.Set(section, key, value);
    Require(!isFound || text.Text() == changed, "a second time changes nothing");
  }
}

// key|value's name|text
[[maybe_unused]] void TryRegistry(std::string_view input) {
  const std::string keys[] = {std::string(TakeField(input)), "KEY\\"};
  const std::string_view name = TakeField(input);
  const std::string text(input);
  for (const auto& found : platform::FindRegistryValues(text, keys, name)) {
    Require(!found || found->data.size() <= text.size() + 2, "a value takes no more room than what is written");
  }
  // The first key is found whatever follows it.
  const auto found = platform::FindRegistryValues("[Key] 1\n\"v\"=hex:01,\\\n  02\n" + text, keys, "V").back();
  Require(found && found->data == "\x01\x02", "a value is read as it was written");
}

}  // namespace

#ifdef GANTREL_REPLAY

// Entry point for the tests: tries the named files, at least four.
// NOLINTNEXTLINE(bugprone-exception-escape): a rule that does not hold ends it
int main(int argumentCount, char** arguments) {
  for (int i = 1; i < argumentCount; ++i) {
    std::ifstream file(arguments[i], std::ios::binary);
    GANTREL_FUZZ_TARGET(std::string(std::istreambuf_iterator<char>(file), {}));
  }
  return argumentCount > 4 ? 0 : 1;
}

#else

// libFuzzer's entry point; the build selects the target.
// NOLINTNEXTLINE(readability-identifier-naming): libFuzzer's name
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): all targets take text
  GANTREL_FUZZ_TARGET({reinterpret_cast<const char*>(bytes), size});
  return 0;
}

#endif
