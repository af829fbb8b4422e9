#pragma once

#include <array>
#include <cstdint>
#include <string_view>

// Stands between the tool and the system's file functions: counts the tool's calls that are about the test's own
// folder, lets them fail, and ends the process at them. The linker puts it there (see tests/CMakeLists.txt), for the
// tool's own code alone; the toolkit and the tests' helpers call the system directly.
namespace faults {

enum class Operation : std::uint8_t {
  Open,
  Create,
  Look,
  Read,
  Write,
  Flush,
  Truncate,
  Change,
  Rename,
  Unlink,
  Close  // Look: stat and its kin
};
std::string_view Name(Operation operation);

enum class Effect : std::uint8_t { None, Kill, Fail, MoveFolderAway };

// What happens at one operation, counted from 0. A write may do half its work first.
struct Fault {
  Effect effect = Effect::None;
  int at = -1;
  int reason = 0;  // the error number of a failure
  bool isHalfway = false;
  std::uint32_t lasting = 0;  // a bit for each kind of operation that fails from then on as well
};

constexpr std::uint32_t Bit(Operation operation) { return 1U << static_cast<unsigned>(operation); }

// What was seen; shared with copies of the process.
struct Record {
  static constexpr int kRoom = 1 << 14;
  int count = 0;
  std::array<Operation, kRoom> operations;
  int unflushedRenames = 0;  // of a file whose bytes may not have reached the disk
};

// Call Prepare once, before the process is copied. Start forgets what was seen, and Stop ends the counting and the
// faults. `from` is what Effect::MoveFolderAway moves to `to`. `afterRename` is called with the new name.
const Record& Prepare();
void Start(const Fault& fault, bool foldersTakeNoFiles, const char* from, const char* to,
           void (*afterRename)(const char* path));
void Stop();

}  // namespace faults
