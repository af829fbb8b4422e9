#include "platform/application.h"

namespace platform {

// The system sends messages to the windows, at the end of its session for one.
int QuitRequestDescriptor() { return -1; }

}  // namespace platform
