#include "support/own_folder.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

namespace support {

fs::path ExecutableFolder() { return DriveC() / u8"My T\u00F6\u00F6ls" / "Gantrel"; }
fs::path SettingsFile() { return ExecutableFolder() / "Ulvane.ini"; }

void WriteFile(const fs::path& file, std::string_view bytes) {
  fs::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary);
  stream << bytes;
  if (!stream.flush()) throw std::runtime_error("cannot write " + file.string());
}

std::string ReadFile(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

bool IsSpelledSo(const fs::path& file) {
  return std::ranges::any_of(fs::directory_iterator(file.parent_path()),
                             [&](const fs::directory_entry& entry) { return entry.path() == file; });
}

}  // namespace support
