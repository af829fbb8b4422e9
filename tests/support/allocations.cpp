#include "tests/support/allocations.h"

#include <cstdlib>
#include <new>

namespace {

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
thread_local std::size_t allocations = 0;

}  // namespace

std::size_t support::Allocations() { return allocations; }

// NOLINTBEGIN(cppcoreguidelines-no-malloc): this is what stands below the standard library's own allocations
void* operator new(std::size_t size) {
  ++allocations;
  if (void* const room = std::malloc(size)) return room;
  throw std::bad_alloc();
}
void operator delete(void* room) noexcept { std::free(room); }
void operator delete(void* room, std::size_t /*size*/) noexcept { std::free(room); }
// NOLINTEND(cppcoreguidelines-no-malloc)
