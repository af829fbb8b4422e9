#pragma once

#include <cstdint>
#include <string_view>

// Copies what is stored of mod `from` of the game to the number `to`, one setting after the other. What is missing is
// written with its default. Folders of `to` beyond the new count stay, unread.
void CopyMod(std::string_view game, std::int64_t from, std::int64_t to);
