#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The value `SubKeyRef` of the key `KeyName` below the root key, as text: a text up to its first zero byte, not
// expanded, or a number as a signed decimal. Empty when the key or the value is missing, cannot be read, is of another
// type, or takes more than 1024 bytes, a text's terminating zero byte included. No failure is shown.
std::string GetKeyValue(std::int32_t KeyRoot, std::string_view KeyName, std::string_view SubKeyRef);

// The same for several keys, in their order, at the price of one.
std::vector<std::string> GetKeyValues(std::int32_t root, std::span<const std::string> keyNames,
                                      std::string_view valueName);
