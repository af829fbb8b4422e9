#include "support/system.h"

#include <array>
#include <csignal>
#include <cstdio>
#include <ctime>

#include "platform/code_page.h"
#include "platform/paths.h"
#include "platform/registry.h"
#include "support/linux/prefix.h"
#include "support/own_folder.h"

namespace support {
namespace {

// A value's bytes as the prefix writes them; those of a text are in UTF-16.
std::string Bytes(std::uint32_t type, const std::string& data) {
  const bool isText = type != 3 && type != platform::kRegDword;
  std::string bytes;
  for (const char c : data) {
    const unsigned int unit = isText ? platform::ToUtf16({&c, 1}).front() : static_cast<unsigned char>(c);
    std::array<char, 8> digits = {};
    std::snprintf(digits.data(), digits.size(), isText ? "%02x,%02x," : "%02x,", unit & 0xFFU, unit >> 8U);
    bytes += digits.data();
  }
  return bytes.substr(0, bytes.size() - 1);
}

}  // namespace

void SetRegistry(const std::vector<Installation>& installations) {
  std::string text = "WINE REGISTRY Version 2\n\n#arch=win64\n\n";
  for (const auto& [edition, folder, view, givenType] : installations) {
    const std::uint32_t type = givenType == 0 ? platform::kRegSz : givenType;
    text += view == View::Bits32 ? "[Software\\\\Wow6432Node\\\\THQ\\\\" : "[Software\\\\THQ\\\\";
    text += edition + "] 1234567890\n#time=1d9\n\"InstallLocation\"=hex(" + std::to_string(type) + "):";
    text += Bytes(type, givenType == 0 ? folder + '\0' : folder) + "\n\n";
  }
  WriteFile(Prefix() / "system.reg", text);
}

std::vector<std::string> OtherNamesOfDriveC() {
  return {"c:\\", "C:/", "Z:" + platform::Shown({(DriveC() / "").native()})};
}

void AskToQuit() { std::raise(SIGTERM); }

double ProcessorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

}  // namespace support
