#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <vector>

// Stands between the tool's own code and the system's file functions: notes the calls, and lets them go wrong.
namespace faults {

struct Fault {
  int at = INT_MAX;        // the call that fails, counted from 0
  int reason = 0;          // the system's number
  bool isForGood = false;  // all later calls fail as well: what is on the disk then is what a killed program leaves
};

struct Calls {
  bool areWatched = false;
  Fault fault;
  bool areHalf = false;  // the first read and the first write do half of what they are asked to
  bool takeNewFiles = true;
  std::vector<std::string_view> names = {};
  bool areUnflushed = false;  // bytes may not have reached the disk
};
inline Calls calls;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): the calls have no argument for it

// What each system has of its own: why a call fails there, and whether it is then tried again; a link to a file, or
// what the tool takes for one, where the system makes none.
struct Reason {
  int number;
  bool passes = false;
};
std::vector<Reason> Reasons(std::string_view call);
void MakeLink(const std::filesystem::path& link, const std::filesystem::path& target);
void SetReason(int reason);

// What becomes of a call.
enum class Verdict : std::uint8_t { Go, Half, Fail };
inline Verdict Meet(std::string_view name) {
  if (!calls.areWatched) return Verdict::Go;
  const int number = static_cast<int>(calls.names.size());
  const bool isFirst = std::ranges::find(calls.names, name) == calls.names.end();
  calls.names.push_back(name);
  const bool fails = number == calls.fault.at || (number > calls.fault.at && calls.fault.isForGood);
  EXPECT_FALSE(name == "rename" && calls.areUnflushed) << "takes the name before it is on the disk";
  if (name == "write" || name == "WriteFile") calls.areUnflushed = calls.areUnflushed || !fails;
  if (name == "fsync" || name == "FlushFileBuffers") calls.areUnflushed = calls.areUnflushed && fails;
  if (fails) SetReason(calls.fault.reason);
  return fails ? Verdict::Fail : calls.areHalf && isFirst ? Verdict::Half : Verdict::Go;
}

}  // namespace faults
