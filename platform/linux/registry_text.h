#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The rules of a compatibility prefix's `system.reg`, which holds the registry below HKEY_LOCAL_MACHINE as text.
// Nothing here opens a file; registry.cpp does.
//
// A line that begins with "[" starts a key; what stands below it, up to the next such line, is the key's. There, a line
// that begins with a quote or "@" is a value, whose bytes may go on in the lines below it; all other lines are passed
// over. Lines end at CR LF or LF. Names match without regard to letter case. The prefix writes each key and each value
// once; should one appear again, the first counts, so that the search can end at it. A value that is not written as it
// should be reads as a missing one and spoils no other line.
//
// A key's link to another key is not followed. A key that has nothing but keys below it is in the file only as a part
// of their names, and is not found.
namespace platform {

// The lines below the key of this name; nothing when it is missing. They point into `text`. `keyName` is in the code
// page and means the 32-bit view: in a 64-bit prefix, what is asked for below `Software` is looked for below
// `Software\Wow6432Node`.
std::optional<std::string_view> FindRegistryKey(std::string_view text, std::string_view keyName);

struct RegistryValue {
  std::uint32_t type;
  std::string data;  // bytes; those of the text types in the code page, with the zero bytes that the registry has
};

// A value from a key's lines; nothing when it is missing or cannot be read. `valueName` is in the code page; the empty
// name is the key's default value.
std::optional<RegistryValue> FindRegistryValue(std::string_view keyLines, std::string_view valueName);

}  // namespace platform
