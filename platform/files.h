#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>

// Whole files. If a path does not exist as spelled, each component is looked up ignoring letter case, as the game does.
// No function here shows anything; failures are returned.
namespace platform {

// Our own errors, for cases without a fitting errno.
enum class FileRefusal : std::uint8_t {
  FolderUnknown = 1,  // the path is not absolute: the program's folder is unknown
  NotOrdinary,        // a device or a pipe
  TooLarge,           // to read
  LinkOfAnother,      // a link in a world-writable folder, owned neither by the user nor the folder's owner
  Busy,               // for seconds: another Gantrel has the lock, or another program has the new file open
  Utf16,              // text in the code page is expected
  Program,            // refused as a module file, like OwnFile
  OwnFile,
};
std::error_code make_error_code(FileRefusal refusal);  // NOLINT(readability-identifier-naming): the library's name

// The reason, in English and in the code page, for a message that names the file.
std::string Reason(const std::error_code& failure);

// Locks the tool's folder against other Gantrels of the same folder while `held` lives. Waits some seconds for another
// one's lock, then fails with Busy. Without lock support in the system, locks nobody out. Does not nest: a second lock
// in the same program waits for the first.
struct ToolLock {
  std::shared_ptr<void> held;
  std::error_code failure;
};
ToolLock LockTool();

// Reads a file to its end, regardless of its reported size. Returns std::errc::no_such_file_or_directory only if the
// file is known to be missing. For a file of more than `most` bytes, returns TooLarge, and `bytes` are the first
// `most`; after any other failure they are empty.
constexpr std::size_t kMostBytes = std::size_t{16} * 1024 * 1024;
std::error_code ReadFile(const std::filesystem::path& path, std::string& bytes, std::size_t most = kMostBytes);

// Creates or atomically replaces the file: whoever opens it finds the old bytes or the new ones; after a failure, the
// old ones. The bytes are flushed to disk on return. Call it under the tool's lock: the new file has a fixed name, and
// one left by a killed program is reused.
//
// Follows links, keeps permissions and group, and refuses to replace a read-only file. If the folder takes no new file
// but the file is writable, writes in place and restores the old bytes on failure.
//
// With `old.keptAs`, the complete old file is kept under that name, or an empty file if there was none. Creates its
// folder, never replaces an existing file. Failure to keep it is silent, unless `mustBeKept`: then nothing is replaced.
// After a failure nothing is kept; a killed program may leave both.
struct OldFile {
  std::filesystem::path keptAs = {};
  bool mustBeKept = false;
};
std::error_code ReplaceFile(const std::filesystem::path& path, std::string_view bytes, const OldFile& old = {});

// Within one file system; replaces an existing file of that name.
std::error_code RenameFile(const std::filesystem::path& from, const std::filesystem::path& to);
void RemoveFile(const std::filesystem::path& path);

// Whether the user can probably create files in the folder; does not try.
bool TakesFiles(const std::filesystem::path& folder);

// Whether both paths lead to the same existing file.
bool IsSameFile(const std::filesystem::path& left, const std::filesystem::path& right);

}  // namespace platform

template <>
struct std::is_error_code_enum<platform::FileRefusal> : std::true_type {};
