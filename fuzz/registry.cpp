#include <string>
#include <string_view>

#include "fuzz/targets.h"
#include "platform/linux/registry_text.h"

void fuzz::TryRegistry(std::string_view input) {
  const std::string keys[] = {std::string(TakeField(input)), "KEY\\"};
  const std::string_view name = TakeField(input);
  const std::string text(input);
  for (const auto& found : platform::FindRegistryValues(text, keys, name)) {
    Require(!found || found->data.size() <= text.size() + 2, "a value takes no more room than what is written");
  }
  // What is written first is found, whatever stands below it.
  const auto found = platform::FindRegistryValues("[Key] 1\n\"v\"=hex:01,\\\n  02\n" + text, keys, "V").back();
  Require(found && found->data == "\x01\x02", "a value is read as it was written");
}
