#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The value `SubKeyRef` of the key `KeyName` below the root key, as text: text up to its first zero byte, not expanded,
// or a number as signed decimal. Empty if the key or value is missing, unreadable, of another type, or larger than 1024
// bytes including a terminating zero byte. Failures are silent.
std::string GetKeyValue(std::int32_t KeyRoot, std::string_view KeyName, std::string_view SubKeyRef);

// The same for several keys, in their order, in a single pass.
std::vector<std::string> GetKeyValues(std::int32_t root, std::span<const std::string> keyNames,
                                      std::string_view valueName);
