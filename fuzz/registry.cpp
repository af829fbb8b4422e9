#include <array>
#include <cstdio>
#include <string>
#include <string_view>

#include "fuzz/targets.h"
#include "platform/code_page.h"
#include "platform/linux/registry_text.h"
#include "platform/registry.h"

namespace {

// A text as the file has it: `form` gives the two bytes of each of its characters, in this order or the other.
std::string Written(std::string_view text, const char* form, bool isLowFirst) {
  std::string written;
  for (const unsigned int unit : platform::ToUtf16(text)) {
    std::array<char, 32> room = {};
    const unsigned int low = unit & 0xFFU;
    const unsigned int high = unit >> 8U;
    std::snprintf(room.data(), room.size(), form, isLowFirst ? low : high, isLowFirst ? high : low);
    written += room.data();
  }
  return written;
}

std::string Escaped(std::string_view text) { return Written(text, "\\x%02x%02x", false); }
std::string Bytes(std::string_view text) { return Written(text, ",\\\n  %02x,\\\r\n%02x", true).substr(5); }

void RequireFound(const std::string& text, std::string_view key, std::string_view name, std::string_view data,
                  const char* rule) {
  const auto lines = platform::FindRegistryKey(text, key);
  fuzz::Require(lines.has_value(), "a key that was written is found");
  const auto value = platform::FindRegistryValue(*lines, name);
  fuzz::Require(value && value->data == data, rule);
}

}  // namespace

void fuzz::TryRegistry(std::string_view input) {
  std::string_view key = TakeField(input);
  const std::string_view name = TakeField(input);
  const std::string_view value = TakeField(input);
  const std::string text(input);

  if (const auto lines = platform::FindRegistryKey(text, key)) {
    Require(lines->data() >= text.data() && lines->data() + lines->size() <= text.data() + text.size(),
            "a key's lines are a part of the text");
    const auto found = platform::FindRegistryValue(*lines, name);
    Require(!found || found->data.size() <= lines->size() + 2, "a value takes no more room than what is written");
  }

  // What is written first is found, whatever stands below it.
  key.remove_suffix(key.size() - (key.find_last_not_of('\\') + 1));
  const std::string above = "[" + Escaped(key) + "] 1\n\"" + Escaped(name) + "\"=";
  const std::string below = "\n" + text;
  const std::string data = std::string(value) + '\0';
  RequireFound(above + "\"" + Escaped(value) + "\"" + below, key, name, data, "a text is read as it was written");
  RequireFound(above + "hex(1):" + Bytes(data) + below, key, name, data, "a text is read from its bytes");
  RequireFound(above + "dword:00abcdef" + below, key, name, std::string("\xEF\xCD\xAB\0", 4), "a number is read");
}
