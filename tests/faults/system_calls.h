#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>
#include <vector>

// Stands between the tool's own code and the system's file functions: notes the calls, and lets them go wrong.
namespace faults {

enum class Effect : std::uint8_t { None, Fail, FailFromThenOn, Kill, MoveFolder };

// What happens at one call, counted from 0.
struct Fault {
  Effect effect = Effect::None;
  int at = -1;
  int reason = 0;       // of a failure; the system's number
  bool isHalf = false;  // the call, a read or a write, does half its work, and the effect meets the next one
};

struct World {
  bool takesNewFiles = true;
  std::filesystem::path folder, away;  // what Effect::MoveFolder moves, and to where
};

struct Calls {
  std::vector<std::string_view> names;
  bool hasRenamedUnflushed = false;  // a file whose bytes may not have reached the disk
};

void Start(const Fault& fault, const World& world = {});
Calls Stop();

// What each system has of its own: why a call fails there, and whether it is then tried again; reads and writes that
// may do less than they are asked to; a link to a file, or what the tool takes for one, where the system makes none.
struct Reason {
  const char* name;
  int number;
  bool passes = false;
};
std::vector<Reason> Reasons(std::string_view call);
bool CanBeHalf(std::string_view call);
void MakeLink(const std::filesystem::path& link, const std::filesystem::path& target);
void SetReason(int reason);

// Whether `act` is killed in a copy of the process, where one can be made.
#ifdef _WIN32
constexpr bool kCanKill = false;
#else
constexpr bool kCanKill = true;
#endif
bool IsKilled(const std::function<void()>& act);
[[noreturn]] void Die();

// For each system's calls: what becomes of one.
enum class Verdict : std::uint8_t { Go, Half, Fail };
Verdict Meet(std::string_view name);
inline bool Fails(std::string_view name) { return Meet(name) == Verdict::Fail; }
bool TakesNewFiles();
void NoteWrite();
void NoteFlush();
void NoteRename();

}  // namespace faults
