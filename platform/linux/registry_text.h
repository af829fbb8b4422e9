#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/registry.h"

// The rules of a compatibility prefix's `system.reg`, which holds the registry below HKEY_LOCAL_MACHINE as text.
// Nothing here opens a file; registry.cpp does.
//
// A line that begins with "[" starts a key; what stands below it, up to the next such line, is the key's. There, a line
// that begins with a quote or "@" is a value, whose bytes may go on in the lines below it; all other lines are passed
// over. Lines end at CR LF or LF. Names match without regard to letter case. The prefix writes each key and each value
// once; should one appear again, the first that has the value counts. A value that is not written as it should be reads
// as a missing one and spoils no other line.
//
// A key's link to another key is not followed. A key that has nothing but keys below it is in the file only as a part
// of their names, and is not found.
namespace platform {

// The value of this name in each of the keys, in their order; nothing where the key or the value is missing, or the
// value cannot be read. Names are in the code page; the empty value name is the key's default value. Key names mean the
// 32-bit view: in a 64-bit prefix, what is asked for below `Software` is looked for below `Software\Wow6432Node`. The
// data of the text types is in the code page, with the zero bytes that the registry has.
std::vector<std::optional<RegistryValue>> FindRegistryValues(std::string_view text,
                                                             std::span<const std::string> keyNames,
                                                             std::string_view valueName);

}  // namespace platform
