#pragma once

#include <string>
#include <string_view>

// The system's own cost of a file: only the unavoidable calls. The baseline that the tables compare with. Failures end
// the program.
namespace raw {

// Opens, reads and closes the file. Returns its size in bytes.
std::size_t Read(const std::string& path);

// Reads the names of the folder's entries. Returns how many there are.
std::size_t List(const std::string& path);

// Writes the bytes to a new file beside `path`, flushes it, and renames it to `path`.
void Replace(const std::string& path, std::string_view bytes);

}  // namespace raw
