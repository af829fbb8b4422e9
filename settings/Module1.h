#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The accessors of the two profile files beside the executable: the settings file Ulvane.ini (settings/schema.h says
// what it holds), and Make.ini, which is only read. Nothing is cached: every call reads the file as it is, or replaces
// it, once, but within a WholeChange. None reports a failure.
namespace Module1 {

std::string GetSetting(std::string_view section, std::string_view key, std::string_view fallback);
void PutSetting(std::string_view section, std::string_view key, std::string_view value);
std::string GetMakeSetting(std::string_view section, std::string_view key, std::string_view fallback);

// While one lives, GetSetting and PutSetting, and all that stands on them, work on the settings file's text in memory;
// at its end the file is replaced once. So all settings of a change reach the disk, or none. There is one at a time.
class WholeChange {
 public:
  WholeChange();
  ~WholeChange();
  WholeChange(const WholeChange&) = delete;
  WholeChange& operator=(const WholeChange&) = delete;
  WholeChange(WholeChange&&) = delete;
  WholeChange& operator=(WholeChange&&) = delete;
};

// The stored number; `fallback` where it is missing or not a whole number of 32 bits. Returned in 64 bits, so that
// counting up to the largest one ends.
std::int64_t GetNumber(std::string_view section, std::string_view key, std::int32_t fallback);
std::int64_t GetMakeNumber(std::string_view section, std::string_view key, std::int32_t fallback);
void PutNumber(std::string_view section, std::string_view key, std::int64_t number);

// The number of registered games: kNoGameCount where none was stored yet, 0 where what is stored is not a whole number,
// so that a damaged count is never taken for a first start.
constexpr std::int64_t kNoGameCount = -1;
std::int64_t GameCount();

std::string GameName(std::int64_t game);
std::string GamePath(std::string_view game);  // a Windows path
std::int64_t ModCount(std::string_view game);

// The number of the first mod of `game` that is called `name`, every character compared; kNoMod when there is none.
// Reads one setting per mod.
constexpr std::int64_t kNoMod = -1;
std::int64_t FindMod(std::string_view game, std::string_view name);

}  // namespace Module1
