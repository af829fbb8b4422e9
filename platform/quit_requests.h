#pragma once

namespace platform {

// A descriptor that becomes readable when the system asks the program to end, by a signal for one; -1 where it tells
// the windows instead. Call once.
int QuitRequestDescriptor();

}  // namespace platform
