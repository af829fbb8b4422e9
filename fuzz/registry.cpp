#include <string>
#include <string_view>

#include "fuzz/targets.h"
#include "platform/linux/registry_text.h"

void fuzz::TryRegistry(std::string_view input) {
  const std::string_view key = TakeField(input);
  const std::string_view name = TakeField(input);
  const std::string text(input);
  if (const auto lines = platform::FindRegistryKey(text, key)) {
    Require(lines->data() >= text.data() && lines->data() + lines->size() <= text.data() + text.size(),
            "a key's lines are a part of the text");
    const auto found = platform::FindRegistryValue(*lines, name);
    Require(!found || found->data.size() <= lines->size() + 2, "a value takes no more room than what is written");
  }
  // What is written first is found, whatever stands below it.
  const std::string whole = "[Key] 1\n\"v\"=hex:01,\\\n  02\n" + text;
  const auto found = platform::FindRegistryValue(platform::FindRegistryKey(whole, "KEY\\").value_or(""), "V");
  Require(found && found->data == "\x01\x02", "a value is read as it was written");
}
