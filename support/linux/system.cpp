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
#include "support/linux/prefix.h"
#include "support/own_folder.h"

namespace support {
namespace {

// As the prefix writes it.
std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char16_t unit : platform::ToUtf16(text)) {
    std::array<char, 8> code = {};
    const bool isPlain = unit < 0x80 && unit != '\\' && unit != '"';
    std::snprintf(code.data(), code.size(), "\\x%04x", static_cast<unsigned int>(unit));
    escaped += isPlain ? std::string(1, static_cast<char>(unit)) : std::string(code.data());
  }
  return escaped;
}

}  // namespace

void SetRegistry(const std::vector<Installation>& installations) {
  std::string text = "WINE REGISTRY Version 2\n\n#arch=win64\n\n";
  for (const auto& [edition, folder, view] : installations) {
    text += view == View::Bits32 ? "[Software\\\\Wow6432Node\\\\THQ\\\\" : "[Software\\\\THQ\\\\";
    text += Escaped(edition) + "] 1234567890\n#time=1d9\n\"InstallLocation\"=\"" + Escaped(folder) + "\"\n\n";
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
