#pragma once

#include <span>

#include "platform/layout.h"

// The layouts of the tool's windows.
std::span<const platform::WindowLayout> Layouts();
