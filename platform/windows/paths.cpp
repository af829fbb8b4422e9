#include "platform/paths.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "platform/code_page.h"
#include "platform/folders.h"
#include "platform/windows/system.h"
#include "platform/windows/wide.h"

namespace fs = std::filesystem;

namespace platform {
namespace {

constexpr std::wstring_view kLiteral = LR"(\\?\)";
constexpr std::wstring_view kLiteralShare = LR"(\\?\UNC\)";
constexpr std::wstring_view kShare = LR"(\\)";
constexpr std::wstring_view kDevice = LR"(\\.\)";

// Calls a system function that returns text of any length. `ask` takes a buffer and its size; it returns the length, or
// the size it needs.
template <typename Ask>
std::wstring AskForText(Ask ask) {
  std::wstring text(MAX_PATH, L'\0');
  for (;;) {
    const std::size_t length = ask(text.data(), static_cast<DWORD>(text.size()));
    const bool fits = length < text.size();
    text.resize(fits ? length : std::max<std::size_t>(length, 2 * text.size()));
    if (fits) return text;
  }
}

struct CloseFind {
  using pointer = HANDLE;
  void operator()(HANDLE find) const { FindClose(find); }
};

// `folder`, ending in a separator, plus the name as spelled there; as given if it is missing or the system cannot tell.
// So drives, servers and shares stay as given.
std::wstring Spelling(std::wstring folder, const std::wstring& name) {
  const std::wstring path = folder + name;
  WIN32_FIND_DATAW entry = {};
  const bool isPattern = name.empty() || name.find_first_of(L":*?<>\"") != std::wstring::npos;
  HANDLE const find = isPattern
                          ? INVALID_HANDLE_VALUE
                          : FindFirstFileExW(path.c_str(), FindExInfoBasic, &entry, FindExSearchNameMatch, nullptr, 0);
  if (find == INVALID_HANDLE_VALUE) return path;
  FindClose(find);
  return folder += entry.cFileName;
}

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

bool IsDrive(char letter) {
  const auto number = static_cast<unsigned int>((letter | 0x20) - 'a');
  return (GetLogicalDrives() >> number & 1U) != 0;
}

}  // namespace

std::wstring ToSystem(const fs::path& path) {
  std::wstring whole =
      AskForText([&path](wchar_t* room, DWORD size) { return GetFullPathNameW(path.c_str(), size, room, nullptr); });
  if (whole.empty()) return path.native();
  constexpr std::size_t kShort = MAX_PATH - 12;  // the longest folder path that leaves room for a file name
  if (whole.size() < kShort || whole.starts_with(kLiteral) || IsDevice(whole)) return whole;
  if (!whole.starts_with(kShare)) return whole.insert(0, kLiteral);
  return whole.replace(0, kShare.size(), kLiteralShare);
}

bool IsDevice(std::wstring_view systemPath) { return systemPath.starts_with(kDevice); }

fs::path BesideExecutable(std::string_view name) {
  std::wstring path = AskForText([](wchar_t* room, DWORD size) { return GetModuleFileNameW(nullptr, room, size); });
  path.resize(path.rfind(L'\\') + 1);
  if (path.empty()) path = L".\\";
  path += ToWide(ToUtf16(name));
  std::ranges::replace(path, L'/', L'\\');
  return path;
}

// Drives and shares are the system's own.
std::optional<fs::path> ToHostPath(std::string_view windowsPath) {
  std::wstring path = ToWide(ToUtf16(windowsPath));
  std::ranges::replace(path, L'/', L'\\');
  if (path.starts_with(kShare)) return path;
  const bool hasDrive = windowsPath.size() >= 2 && IsLetter(windowsPath[0]) && windowsPath[1] == ':';
  if (!hasDrive || !IsDrive(windowsPath[0])) return std::nullopt;
  if (!path.substr(2).starts_with(L'\\')) path.insert(2, 1, L'\\');  // not relative to the drive's current folder
  return path;
}

// Windows finds files in any letter case, but a new file would be named as given.
fs::path AsSpelledOnDisk(const fs::path& path) {
  const std::wstring given = ToSystem(path);
  if (IsDevice(given)) return path;
  std::wstring spelled;
  for (std::size_t begin = 0; begin < given.size();) {
    const std::size_t end = std::min(given.find(L'\\', begin), given.size());
    spelled = Spelling(std::move(spelled), given.substr(begin, end - begin));
    begin = std::min(end + 1, given.size());
    if (end < given.size()) spelled += L'\\';
  }
  return spelled;
}

std::optional<std::string> ToWindowsPath(const fs::path& path) {
  std::wstring text = path.native();
  std::ranges::replace(text, L'/', L'\\');
  if (text.starts_with(kLiteralShare)) {
    text.replace(0, kLiteralShare.size(), kShare);
  } else if (text.starts_with(kLiteral)) {
    text.erase(0, kLiteral.size());
  }
  return FromUtf16Exactly(ToUnits(text));
}

std::string DisplayName(const fs::path& path) { return FromUtf16(ToUnits(path.native())); }

// Names with a leading dot are hidden, as on other systems: programs use such folders for their own records everywhere.
std::error_code ListFolder(const fs::path& path, std::vector<FolderEntry>& entries) {
  std::wstring folder = ToSystem(path);
  if (!folder.ends_with(L'\\')) folder += L'\\';
  WIN32_FIND_DATAW found = {};
  const std::unique_ptr<HANDLE, CloseFind> find(FindFirstFileExW(
      (folder + L'*').c_str(), FindExInfoBasic, &found, FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH));
  bool goesOn = find.get() != INVALID_HANDLE_VALUE;
  for (; goesOn; goesOn = FindNextFileW(find.get(), &found) != 0) {
    const std::wstring_view name = found.cFileName;
    auto text = FromUtf16Exactly(ToUnits(name));
    if (!text || name == L"." || name == L"..") continue;
    const auto has = [&found](DWORD attribute) { return (found.dwFileAttributes & attribute) != 0; };
    const bool isLink = has(FILE_ATTRIBUTE_REPARSE_POINT);
    const bool isFolder = has(FILE_ATTRIBUTE_DIRECTORY) && (!isLink || WithoutLinks(folder + found.cFileName));
    const bool isHidden = has(FILE_ATTRIBUTE_HIDDEN) || name.starts_with(L'.');
    entries.push_back({*std::move(text), isFolder, isLink, isHidden});
  }
  // The root of an empty drive has no entries, not even ".".
  const DWORD end = GetLastError();
  if (end == ERROR_NO_MORE_FILES || end == ERROR_FILE_NOT_FOUND) return {};
  return {static_cast<int>(end), std::system_category()};
}

// After a failure, GetLastError says why.
std::optional<fs::path> WithoutLinks(const fs::path& path) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  HANDLE const opened = CreateFileW(ToSystem(path).c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return std::nullopt;
  const std::wstring real = AskForText([opened](wchar_t* room, DWORD size) {
    return GetFinalPathNameByHandleW(opened, room, size, FILE_NAME_NORMALIZED);
  });
  CloseHandle(opened);
  return real.empty() ? std::nullopt : std::optional<fs::path>(real);
}

}  // namespace platform
