#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/paths.h"

// The accessors of the two profile files beside the executable: the settings file Ulvane.ini (settings/schema.h says
// what it holds), and Make.ini, which is only read. Nothing is cached: every call reads the file as it is, or replaces
// it, once, but within a WholeChange. None reports a failure.
namespace Module1 {

std::string GetSetting(std::string_view section, std::string_view key, std::string_view fallback);
void PutSetting(std::string_view section, std::string_view key, std::string_view value);
std::string GetMakeSetting(std::string_view section, std::string_view key, std::string_view fallback);

// A command writes what follows from what it has read, and each of its steps stands on the last. Where a read or a
// write fails, the rest has lost its ground: a count that could not be read is not 0, and a list must not move up over
// an entry that did not. So while one lives, the first failure ends the writing, and the file stays as the last step
// that succeeded left it. They may nest; the innermost counts.
class Command {
 public:
  Command();
  ~Command();
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;
  Command(Command&&) = delete;
  Command& operator=(Command&&) = delete;

  struct Unread {
    platform::HostPath file;
    std::error_code reason;
  };
  // The first of the two files that was there and could not be read; nothing when all went well.
  const std::optional<Unread>& FirstUnread() const { return state_.unread; }

  struct State {
    std::optional<Unread> unread;
    bool mayWrite = true;
  };

 private:
  State state_;
  State* outer_;
};

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
