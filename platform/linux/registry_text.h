#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/registry.h"

// The format of a compatibility prefix's `system.reg`, which holds the registry below HKEY_LOCAL_MACHINE as text. Opens
// no file; registry.cpp does.
//
// A line that begins with "[" starts a key. Below it, a line that begins with a quote or "@" is a value, whose bytes
// may continue on the next lines; other lines are ignored. Lines end with CR LF or LF. Names match ignoring letter
// case. The prefix writes each key and value once; of duplicates, the first that has the value counts. A malformed
// value reads as missing and affects no other line.
//
// Key links are not followed. A key that has only subkeys is in the file only as part of their names, and is not found.
namespace platform {

// The value of this name in each of the keys, in order; nothing if the key or value is missing or the value is
// malformed. Names are in the code page; the empty value name is the key's default value. Uses the 32-bit view: in a
// 64-bit prefix, keys below `Software` are searched below `Software\Wow6432Node`. Text data is in the code page and
// keeps the registry's zero bytes.
std::vector<std::optional<RegistryValue>> FindRegistryValues(std::string_view text,
                                                             std::span<const std::string> keyNames,
                                                             std::string_view valueName);

}  // namespace platform
