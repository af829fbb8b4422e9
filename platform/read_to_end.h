#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <system_error>

#include "platform/files.h"

namespace platform {

// ReadFile on an open file that is said to have `size` bytes; some files of the system have more. `read` fills a room
// up to its size or the file's end, and tells how many bytes there were.
template <typename Read>
std::error_code ReadToEnd(std::size_t size, std::size_t most, std::string& bytes, Read read) {
  constexpr std::size_t kLeast = 4096;
  std::size_t count = 0;
  for (std::size_t room = std::max(size + 1, kLeast); count == bytes.size(); room *= 2) {
    bytes.resize(std::min(room, most + 1));
    std::size_t more = 0;
    const std::error_code failure = read(bytes.data() + count, bytes.size() - count, more);
    count += more;
    if (failure || count > most) {
      bytes.resize(failure ? 0 : most);
      return failure ? failure : make_error_code(FileRefusal::TooLarge);
    }
  }
  bytes.resize(count);
  return {};
}

}  // namespace platform
