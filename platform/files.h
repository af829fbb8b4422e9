#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <system_error>
#include <type_traits>

#include "platform/paths.h"

// Whole files. A name that is not there as spelled is looked for without regard to letter case, in every component of
// its path, as the game's own system does. No function here shows anything; all say why they failed.
namespace platform {

// Why a file is neither read nor replaced, where the system has no reason of its own, or none that says it.
enum class FileRefusal : std::uint8_t {
  FolderUnknown = 1,  // the path is not absolute: the system did not tell where the program is
  NotOrdinary,        // a device or a pipe
  TooLarge,           // to be read
  LinkOfAnother,      // in a folder that all may write to; followed only if it is the user's or the folder's owner's
  Busy,               // another program has been writing a file in the folder for seconds
  Utf16,              // where text in the code page is wanted
  Program,            // in the place of a module file, as is the next one
  OwnFile,
};
std::error_code make_error_code(FileRefusal refusal);  // NOLINT(readability-identifier-naming): the library's name

// A file's bytes, read in one go, to its end whatever size it is said to have. Holds a settings file of some thousand
// mods in itself, so keep it on the stack; what is larger costs one allocation, and more than `most` bytes are refused.
class FileBytes {
 public:
  static constexpr std::size_t kMost = std::size_t{16} * 1024 * 1024;
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): clearing the room would cost more than the reading
  explicit FileBytes(std::size_t most = kMost) : most_(most) {}

  // Only what is known not to be there is reported as missing (std::errc::no_such_file_or_directory).
  std::error_code Read(const HostPath& path);

  std::string_view View() const { return bytes_; }

 private:
  std::size_t most_;
  static constexpr std::size_t kOwnRoom = std::size_t{256} * 1024;
  std::array<char, kOwnRoom> room_;
  std::unique_ptr<char[]> largeRoom_;
  std::string_view bytes_;
};

// Creates the file with these bytes, or replaces the one that is there, as a whole: whoever opens the name finds the
// old bytes or the new ones, and after a failure the old ones. On the disk when the function returns. However many
// programs do so at once, each gives the name to none but its own bytes.
//
// Follows links, keeps the file's permissions, and refuses to replace a file that may not be written. Where the folder
// takes no new file but the file itself can be written, it is written in place, and the old bytes are put back when
// that fails.
std::error_code ReplaceFile(const HostPath& path, std::string_view bytes);

// Whether the system says that a Windows path leads to no folder. What it does not tell is not taken for missing.
bool IsMissingFolder(std::string_view windowsPath);

// Whether both paths lead to one file that is there.
bool IsSameFile(const HostPath& left, const HostPath& right);

}  // namespace platform

template <>
struct std::is_error_code_enum<platform::FileRefusal> : std::true_type {};
