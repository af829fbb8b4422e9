#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// The numbers in the settings are decimal text of 32-bit signed whole numbers.
//
// An optional sign and decimal digits, with blanks around them; nothing for any other text, the empty one and numbers
// outside 32 bits included.
std::optional<std::int32_t> WholeNumber(std::string_view text);
