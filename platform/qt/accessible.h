#pragma once

namespace platform {

// Gives screen readers what Qt keeps from them: that a window is one, and the name of a drop-down list. Once
// for each application object.
void TellScreenReaders();

}  // namespace platform
