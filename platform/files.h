#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <vector>

// Whole files. A name that is not there as spelled is looked for without regard to letter case, in every component of
// its path, as the game's own system does. No function here shows anything; all say why they failed.
namespace platform {

// Why a file is neither read nor replaced, where the system has no reason of its own, or none that says it.
enum class FileRefusal : std::uint8_t {
  FolderUnknown = 1,  // the path is not absolute: the system did not tell where the program is
  NotOrdinary,        // a device or a pipe
  TooLarge,           // to be read
  LinkOfAnother,      // in a folder that all may write to; followed only if it is the user's or the folder's owner's
  Busy,               // another Gantrel has held the lock, or another program the new file, for seconds
  Utf16,              // where text in the code page is wanted
  Program,            // in the place of a module file, as is the next one
  OwnFile,
};
std::error_code make_error_code(FileRefusal refusal);  // NOLINT(readability-identifier-naming): the library's name

// Why it happened, in English and in the code page, for a sentence that names the file.
std::string Reason(const std::error_code& failure);

// The tool's own folder, locked against other Gantrels of the same folder as long as `held` lives. Waits for seconds
// where another one has it, and then says that the folder is busy. Where the system cannot lock, nobody is kept out.
// Not for nesting: a second lock of the same program waits for the first.
struct ToolLock {
  std::shared_ptr<void> held;
  std::error_code failure;
};
ToolLock LockTool();

// Reads a file to its end, whatever size it is said to have. Only what is known not to be there is reported as missing
// (std::errc::no_such_file_or_directory). Of a file with more than `most` bytes, which is TooLarge, `bytes` are the
// first `most`; after any other failure they are empty.
constexpr std::size_t kMostBytes = std::size_t{16} * 1024 * 1024;
std::error_code ReadFile(const std::filesystem::path& path, std::string& bytes, std::size_t most = kMostBytes);

// Creates the file with these bytes, or replaces the one that is there, as a whole: whoever opens the name finds the
// old bytes or the new ones, and after a failure the old ones. On the disk when the function returns. Called under the
// tool's lock, so that only one program at a time has the new file, and takes over one that a killed program has left.
//
// Follows links, keeps the file's permissions and group, and refuses to replace a file that may not be written. Where
// the folder takes no new file but the file itself can be written, it is written in place, and the old bytes are put
// back when that fails.
//
// Where `old.keptAs` is given, the old file is still there under that name afterwards, as a whole; an empty one where
// there was none. Its folder is made; a file that has the name already is never replaced. That fails in silence, unless
// the old file must be kept: then nothing is replaced without. After a failure nothing is kept; a program that is
// killed may leave both.
struct OldFile {
  std::filesystem::path keptAs = {};
  bool mustBeKept = false;
};
std::error_code ReplaceFile(const std::filesystem::path& path, std::string_view bytes, const OldFile& old = {});

// On one disk; over another file of that name.
std::error_code RenameFile(const std::filesystem::path& from, const std::filesystem::path& to);
void RemoveFile(const std::filesystem::path& path);

// Whether the user may make files in the folder, as far as the system tells without making one.
bool TakesFiles(const std::filesystem::path& folder);

// Whether the system says that a Windows path leads to no folder. What it does not tell is not taken for missing.
bool IsMissingFolder(std::string_view windowsPath);

// The same of folders below a folder, which is looked into once, whatever number is asked for.
class FoldersBelow {
 public:
  explicit FoldersBelow(const std::string& windowsPath);
  bool IsMissing(std::string_view folder) const;

 private:
  std::string path_;
  bool isMissing_;
  std::optional<std::vector<std::string>> names_;  // of the folders immediately below, in one letter case, sorted
};

// Whether both paths lead to one file that is there.
bool IsSameFile(const std::filesystem::path& left, const std::filesystem::path& right);

}  // namespace platform

template <>
struct std::is_error_code_enum<platform::FileRefusal> : std::true_type {};
