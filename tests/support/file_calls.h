#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Counts what the program's own code asks of the file system, in programs that are linked for it: the system's
// functions are wrapped when the program is linked, those that libraries call are not seen.
namespace support {

struct FileCalls {
  struct File {
    std::string path;
    std::size_t opensToRead = 0;
    std::size_t opensToWrite = 0;
    std::size_t bytesWritten = 0;
  };
  std::vector<File> files;  // in the order of their first opening, whether it succeeded or not
  std::size_t flushes = 0;
  std::size_t renames = 0;

  // Of the files of that name, in any folder; an empty name stands for every file.
  std::size_t OpensToRead(std::string_view name) const;
  std::size_t OpensToWrite(std::string_view name) const;
};

// From here on, until the end of the counting.
void StartCounting();
FileCalls EndCounting();

}  // namespace support
