#pragma once

#include <cstddef>

namespace support {

// How often this thread has asked the standard library for memory, in programs that allocations.cpp is part of.
std::size_t Allocations();

}  // namespace support
