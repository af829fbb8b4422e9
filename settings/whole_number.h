#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// Numbers in the settings are 32-bit signed decimals: an optional sign and digits, surrounded by blanks if any. Nothing
// for any other text, including an empty one and numbers out of range.
std::optional<std::int32_t> WholeNumber(std::string_view text);
