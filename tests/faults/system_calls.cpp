#include "tests/faults/system_calls.h"

#include <optional>
#include <system_error>
#include <utility>

namespace faults {
namespace {

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): the intercepted functions have no other state
std::optional<Fault> now;
World world;
Calls calls;
bool isUnflushed = false;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

}  // namespace

void Start(const Fault& fault, const World& inWorld) {
  now = fault;
  world = inWorld;
  calls = {};
  isUnflushed = false;
}

Calls Stop() {
  now.reset();
  return std::move(calls);
}

Verdict Meet(std::string_view name) {
  if (!now) return Verdict::Go;
  const int number = static_cast<int>(calls.names.size());
  calls.names.push_back(name);
  if (now->isHalf && number == now->at) return Verdict::Half;
  const int first = now->isHalf ? now->at + 1 : now->at;
  const bool isLater = number > first && now->effect == Effect::FailFromThenOn;
  if (number != first && !isLater) return Verdict::Go;
  if (now->effect == Effect::Kill) Die();
  std::error_code stays;
  if (now->effect == Effect::MoveFolder) std::filesystem::rename(world.folder, world.away, stays);
  if (now->effect != Effect::Fail && now->effect != Effect::FailFromThenOn) return Verdict::Go;
  SetReason(now->reason);
  return Verdict::Fail;
}

bool TakesNewFiles() { return !now || world.takesNewFiles; }
void NoteWrite() { isUnflushed = true; }
void NoteFlush() { isUnflushed = false; }
void NoteRename() { calls.hasRenamedUnflushed |= isUnflushed; }

}  // namespace faults
