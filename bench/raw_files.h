#pragma once

#include <string>
#include <string_view>

// What the system itself charges for a file: the calls that no program can do without, and nothing around them. The
// limits that the tables compare with. Failures end the program.
namespace raw {

// Opens, reads and closes the file. Returns the number of bytes.
std::size_t Read(const std::string& path);

// Writes the bytes to a new file beside `path`, flushes it, and renames it to `path`.
void Replace(const std::string& path, std::string_view bytes);

}  // namespace raw
