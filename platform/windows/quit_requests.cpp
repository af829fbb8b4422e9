#include "platform/application.h"

namespace platform {

// Windows sends messages to the windows instead.
int QuitRequestDescriptor() { return -1; }

}  // namespace platform
