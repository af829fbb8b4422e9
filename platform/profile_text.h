#pragma once

#include <optional>
#include <string>
#include <string_view>

// The rules of a profile (INI) file's text. Nothing here opens a file; profile.h does.
//
// A line ends at CR LF, LF or CR. A section's header is "[", its name and "]", the last one on the line, so that a
// name may contain brackets; a key's line is what stands before its first "=". Any other line, and one that begins
// with ";", is passed over. Names match without regard to letter case and the first match counts. Blanks around a
// key's name do not count; those inside a header's brackets do. A UTF-8 byte-order mark at the start is no part of
// the first line.
namespace platform {

// The value of `key` in `section`, without the blanks around it and then without one pair of quotes; nothing when the
// section or the key is missing. Points into `text`. One pass, which ends at the value.
std::optional<std::string_view> FindValue(std::string_view text, std::string_view section, std::string_view key);

// `text` with the value of `key` in `section` set. Every byte that this does not concern stays as it is: line ends,
// blank lines, comments, the letter case of names. A new key follows the section's last line that is not blank, a new
// section the end of the text. New lines end as the text's first line does, or in CR LF. Line breaks and NUL in the
// arguments are written as blanks, so that nothing breaks out of its line.
std::string SetValue(std::string_view text, std::string_view section, std::string_view key, std::string_view value);

}  // namespace platform
