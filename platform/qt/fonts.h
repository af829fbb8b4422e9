#pragma once

#include <QFont>

#include "platform/layout.h"

namespace platform {

// Finds which of the layouts' fonts are installed, and loads the bundled one if needed. Call once per application
// object, before any window.
void ChooseFonts();

// The layout's font or its substitute. Does not use the system's own substitutions: some are calligraphic scripts.
QFont ToQFont(const FontLayout& layout);

}  // namespace platform
