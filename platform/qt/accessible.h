#pragma once

namespace platform {

// Fixes what Qt does not expose to screen readers: the window role and the name of a drop-down list. Call once per
// application object.
void TellScreenReaders();

}  // namespace platform
