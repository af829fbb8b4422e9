#pragma once

namespace platform {

// While one lives, the pointer says that the program is busy. For commands that may take longer than a moment; it must
// not live while the user is asked something.
class BusyPointer {
 public:
  BusyPointer();
  ~BusyPointer();
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;
  BusyPointer(BusyPointer&&) = delete;
  BusyPointer& operator=(BusyPointer&&) = delete;
};

}  // namespace platform
