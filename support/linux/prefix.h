#pragma once

#include <filesystem>

namespace support {

// The compatibility prefix that holds the program's own folder. The home folder is beside it, in Root().
std::filesystem::path Prefix();

}  // namespace support
