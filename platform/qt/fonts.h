#pragma once

#include <QFont>

#include "platform/layout.h"

namespace platform {

// Finds out which of the layouts' fonts the system has, and loads the one that comes with the tool where it is needed.
// Once for each application object, before any window.
void ChooseFonts();

// The font that a layout names, or what stands for it. The system is not asked for its own likenesses, of which some
// are calligraphic scripts.
QFont ToQFont(const FontLayout& layout);

}  // namespace platform
