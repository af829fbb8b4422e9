#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <vector>

// Intercepts the file system calls of the tool's own code: records them and makes them fail.
namespace faults {

struct Fault {
  int at = INT_MAX;        // the call that fails, counted from 0
  int reason = 0;          // the system's error number
  bool isForGood = false;  // all later calls fail as well, as if the program were killed
};

struct Calls {
  bool areWatched = false;
  Fault fault;
  bool areHalf = false;  // the first read and the first write process only half
  bool takeNewFiles = true;
  std::vector<std::string_view> names = {};
  bool areUnflushed = false;  // written bytes may not be on the disk yet
};
inline Calls calls;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): the calls have no argument for it

// Implemented per system: why a call fails there, and whether it is then retried; and a link to a file, or its
// substitute where the system has no links.
struct Reason {
  int number;
  bool passes = false;
};
std::vector<Reason> Reasons(std::string_view call);
void MakeLink(const std::filesystem::path& link, const std::filesystem::path& target);
void SetReason(int reason);

// What happens to a call.
enum class Verdict : std::uint8_t { Go, Half, Fail };
inline Verdict Meet(std::string_view name) {
  if (!calls.areWatched) return Verdict::Go;
  const int number = static_cast<int>(calls.names.size());
  const bool isFirst = std::ranges::find(calls.names, name) == calls.names.end();
  calls.names.push_back(name);
  const bool fails = number == calls.fault.at || (number > calls.fault.at && calls.fault.isForGood);
  EXPECT_FALSE(name == "rename" && calls.areUnflushed) << "renamed before it is flushed";
  if (name == "write" || name == "WriteFile") calls.areUnflushed = calls.areUnflushed || !fails;
  if (name == "fsync" || name == "FlushFileBuffers") calls.areUnflushed = calls.areUnflushed && fails;
  if (fails) SetReason(calls.fault.reason);
  return fails ? Verdict::Fail : calls.areHalf && isFirst ? Verdict::Half : Verdict::Go;
}

}  // namespace faults
