#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>
#include <system_error>

#include "platform/paths.h"

// Whole files. A name that is not there as spelled is looked for without regard to letter case, in every component of
// its path, as the game's own system does. No function here shows anything; all say why they failed.
namespace platform {

// A file's bytes, read in one go. Holds a settings file of some thousand mods in itself, so keep it on the stack; what
// is larger costs one allocation.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): clearing the room would cost more than the reading
class FileBytes {
 public:
  // Only regular files are read: a folder or a device is an error.
  std::error_code Read(const HostPath& path);

  std::string_view View() const { return bytes_; }

 private:
  static constexpr std::size_t kOwnRoom = std::size_t{256} * 1024;
  std::array<char, kOwnRoom> room_;
  std::unique_ptr<char[]> largeRoom_;
  std::string_view bytes_;
};

// Creates the file with these bytes, or replaces the one that is there, as a whole: whoever opens the name finds the
// old bytes or the new ones, and after a failure the old ones. On the disk when the function returns.
//
// Follows links, keeps the file's permissions, and refuses to replace a file that may not be written. Where the folder
// takes no new file but the file itself can be written, it is written in place, and the old bytes are put back when
// that fails.
std::error_code ReplaceFile(const HostPath& path, std::string_view bytes);

}  // namespace platform
