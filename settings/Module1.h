#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "settings/file_failure.h"

// The accessors of the two profile files beside the executable: the settings file Ulvane.ini (settings/schema.h says
// what it holds), and Make.ini, which is only read. Each call is complete in itself: it reads the file as it is, or
// replaces it, once, and reports no failure. A Reading or a Change only says where they look meanwhile.
namespace Module1 {

std::string GetSetting(std::string_view section, std::string_view key, std::string_view fallback);
void PutSetting(std::string_view section, std::string_view key, std::string_view value);
std::string GetMakeSetting(std::string_view section, std::string_view key, std::string_view fallback);

// While one lives, the accessors answer from one reading of each file, made when it begins (of Make.ini, when it is
// first asked for) and forgotten when it ends. For an operation that needs several values. One within another, or
// within a Change, is the same reading. Settings are not written in a reading.
class Reading {
 public:
  Reading();
  ~Reading();
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;
  Reading(Reading&&) = delete;
  Reading& operator=(Reading&&) = delete;

 private:
  bool isOutermost_;
};

// What keeps the settings file, or Make.ini where the reading has asked for it, from being read although it is there;
// nothing when all is well.
std::optional<FileFailure> Unread();

// A reading whose settings may be written to. What was written reaches the file in one replacement, or not at all: for
// every command that writes. Begins outside of any other reading.
class Change {
 public:
  Change();
  ~Change();
  Change(const Change&) = delete;
  Change& operator=(const Change&) = delete;
  Change(Change&&) = delete;
  Change& operator=(Change&&) = delete;

  // Replaces the settings file where something was written, and says what kept it from that, or from being read; then
  // the file is as it was. From here on the accessors answer from what the file now holds. Without it, what was written
  // is dropped.
  [[nodiscard]] static std::optional<FileFailure> Save();
};

// The stored number; `fallback` where it is missing or not a whole number of 32 bits.
std::int64_t GetNumber(std::string_view section, std::string_view key, std::int32_t fallback);
std::int64_t GetMakeNumber(std::string_view section, std::string_view key, std::int32_t fallback);
void PutNumber(std::string_view section, std::string_view key, std::int64_t number);

// How many games, mods of a game, and folders of a mod there are. A count that is there but is no whole number, or
// above 32,767, is damaged: it reads as the number of entries that follow each other from 1, so that nothing new is
// written over one of them.
constexpr std::int64_t kNoGameCount = -1;  // none was stored yet
std::int64_t GameCount();
std::int64_t ModCount(std::string_view game);
std::int64_t DirCount(std::string_view modSection);

std::string GameName(std::int64_t game);
std::string GamePath(std::string_view game);  // a Windows path

// The number of the first mod of `game` that is called `name`, every character compared; kNoMod when there is none.
constexpr std::int64_t kNoMod = -1;
std::int64_t FindMod(std::string_view game, std::string_view name);

}  // namespace Module1
