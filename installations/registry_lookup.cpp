#include "installations/registry_lookup.h"

#include <cstddef>

#include "platform/registry.h"

namespace {

// Text that fills the buffer without a zero byte may be truncated.
std::string ValueText(const platform::RegistryValue& value) {
  if (value.type == platform::kRegSz || value.type == platform::kRegExpandSz) {
    const std::size_t end = value.data.find('\0');
    return end == std::string::npos ? "" : value.data.substr(0, end);
  }
  if (value.type == platform::kRegDword) {
    std::uint32_t number = 0;
    for (std::size_t i = sizeof number; i-- > 0;) number = number << 8U | static_cast<unsigned char>(value.data[i]);
    return std::to_string(static_cast<std::int32_t>(number));
  }
  return "";
}

}  // namespace

std::string GetKeyValue(std::int32_t KeyRoot, std::string_view KeyName, std::string_view SubKeyRef) {
  const std::string name(KeyName);
  return GetKeyValues(KeyRoot, {&name, 1}, SubKeyRef).front();
}

std::vector<std::string> GetKeyValues(std::int32_t root, std::span<const std::string> keyNames,
                                      std::string_view valueName) {
  std::vector<std::string> texts;
  for (const auto& value : platform::ReadRegistry(root, keyNames, valueName)) {
    texts.push_back(value ? ValueText(*value) : "");
  }
  return texts;
}
