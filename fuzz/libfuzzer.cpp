#include <cstddef>
#include <cstdint>

#include "fuzz/targets.h"

// libFuzzer's way in; the build says which target it is.
// NOLINTNEXTLINE(readability-identifier-naming): libFuzzer's name
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): text is what all of them take
  fuzz::GANTREL_FUZZ_TARGET({reinterpret_cast<const char*>(bytes), size});
  return 0;
}
