#include "support/system.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <stdexcept>

#include "platform/code_page.h"
#include "platform/paths.h"
#include "platform/registry.h"
#include "support/linux/prefix.h"
#include "support/own_folder.h"

namespace support {
namespace {

std::string Formatted(const char* format, unsigned int number) {
  std::array<char, 16> text = {};
  std::snprintf(text.data(), text.size(), format, number);
  return text.data();
}

// As the prefix writes it.
std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char16_t unit : platform::ToUtf16(text)) {
    const bool isPlain = unit < 0x80 && unit != '\\' && unit != '"';
    escaped += isPlain ? std::string(1, static_cast<char>(unit)) : Formatted("\\x%04x", unit);
  }
  return escaped;
}

// A value's bytes. Those of a text are in UTF-16.
std::string Bytes(std::uint32_t type, const std::string& data) {
  const bool isText = type != 3 && type != platform::kRegDword;
  std::string bytes;
  for (const char c : data) {
    const unsigned int unit = isText ? platform::ToUtf16({&c, 1}).front() : static_cast<unsigned char>(c);
    bytes += (bytes.empty() ? "" : ",") + Formatted("%02x", unit & 0xFFU);
    if (isText) bytes += Formatted(",%02x", unit >> 8U);
  }
  return bytes;
}

}  // namespace

void SetRegistry(const std::vector<Installation>& installations) {
  std::string text = "WINE REGISTRY Version 2\n\n#arch=win64\n\n";
  for (const auto& [edition, folder, view, type] : installations) {
    text += view == View::Bits32 ? "[Software\\\\Wow6432Node\\\\THQ\\\\" : "[Software\\\\THQ\\\\";
    text += Escaped(edition) + "] 1234567890\n#time=1d9\n\"InstallLocation\"=";
    text += (type == 0 ? "\"" + Escaped(folder) + "\"" : Formatted("hex(%x):", type) + Bytes(type, folder)) + "\n\n";
  }
  WriteFile(Prefix() / "system.reg", text);
}

std::vector<std::string> OtherNamesOfDriveC() {
  return {"c:\\", "C:/", "Z:" + platform::Shown({(DriveC() / "").native()})};
}

void AskToQuit() { std::raise(SIGTERM); }

std::optional<int> CopyProcess() {
  constexpr unsigned int kPatience = 60;  // seconds
  const pid_t copy = fork();
  if (copy < 0) throw std::runtime_error("cannot copy the process");
  if (copy == 0) {
    alarm(kPatience);
    return std::nullopt;
  }
  int status = 0;
  waitpid(copy, &status, 0);
  return status;
}

double ProcessorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

}  // namespace support
