#include "platform/linux/file_names.h"

#include <cwchar>
#include <locale>

#include "platform/code_page.h"

namespace fs = std::filesystem;

namespace platform {
namespace {

constexpr char16_t kNoCharacter = 0xFFFE;  // never a character, in no code page

// Decodes each invalid byte as kNoCharacter.
std::u16string Decoded(std::string_view utf8) {
  const auto& utf8ToUtf16 = std::use_facet<std::codecvt<char16_t, char8_t, std::mbstate_t>>(std::locale::classic());
  const std::u8string bytes(utf8.begin(), utf8.end());
  std::u16string wide(bytes.size(), kNoCharacter);  // no character takes more UTF-16 units than bytes
  const char8_t* from = bytes.data();
  char16_t* to = wide.data();
  while (from != bytes.data() + bytes.size()) {
    std::mbstate_t state = {};
    if (utf8ToUtf16.in(state, from, bytes.data() + bytes.size(), from, to, wide.data() + wide.size(), to) !=
        std::codecvt_base::ok) {
      ++from;
      *to++ = kNoCharacter;
    }
  }
  wide.resize(static_cast<std::size_t>(to - wide.data()));
  return wide;
}

// Changes `name` to its spelling in the folder: its own if that exists, else the first, by bytes, that differs only in
// letter case.
std::error_code SpellIn(const fs::path& folder, fs::path& name) {
  std::error_code result = Look(folder / name);
  const auto wanted = FromUtf8Exactly(name.native());
  if (!IsMissing(result) || !wanted) return result;
  std::error_code failure;
  for (fs::directory_iterator entry(folder, failure), end; entry != end; entry.increment(failure)) {
    const fs::path spelling = entry->path().filename();
    if (!result && name < spelling) continue;
    const auto text = FromUtf8Exactly(spelling.native());
    if (!text || !SameName(*text, *wanted)) continue;
    name = spelling;
    result.clear();
  }
  return failure ? failure : result;
}

}  // namespace

std::optional<std::string> FromUtf8Exactly(std::string_view utf8) { return FromUtf16Exactly(Decoded(utf8)); }

std::string FromUtf8(std::string_view utf8) { return FromUtf16(Decoded(utf8)); }

std::error_code SpellAsOnDisk(fs::path& path) {
  std::error_code result = Look(path);
  if (!IsMissing(result)) return result;
  result.clear();
  fs::path spelled;
  for (fs::path name : path) {
    if (!result && !name.empty()) result = SpellIn(spelled, name);
    if (result && !IsMissing(result)) return result;
    spelled /= name;
  }
  path = spelled;
  return {};
}

std::error_code Look(const fs::path& path) {
  std::error_code failure;
  [[maybe_unused]] const fs::file_status status = fs::symlink_status(path, failure);
  return failure;
}

bool IsMissing(const std::error_code& failure) {
  return failure == std::errc::no_such_file_or_directory || failure == std::errc::not_a_directory;
}

}  // namespace platform
