#include <array>
#include <cstdio>
#include <string>
#include <string_view>

#include "fuzz/targets.h"
#include "platform/code_page.h"
#include "platform/linux/registry_text.h"
#include "platform/registry.h"

namespace {

template <typename Number>
std::string Hex(const char* format, Number number) {
  std::array<char, 16> digits = {};
  return {digits.data(), static_cast<std::size_t>(std::snprintf(digits.data(), digits.size(), format, number))};
}

// As the file has it, with all that is not a plain letter or digit escaped.
std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char16_t unit : platform::ToUtf16(text)) {
    const bool isPlain = (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'z') || unit == u' ';
    escaped += isPlain ? std::string(1, static_cast<char>(unit)) : Hex("\\x%04x", unsigned{unit});
  }
  return escaped;
}

// The text's bytes in two lines for each of its characters.
std::string Bytes(std::string_view text) {
  std::string bytes;
  for (const char16_t unit : platform::ToUtf16(text)) {
    if (!bytes.empty()) bytes += ",\\\n  ";
    bytes += Hex("%02x", unit & 0xFFU) + ",\\\r\n" + Hex("%02x", unsigned{unit} >> 8U);
  }
  return bytes;
}

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
