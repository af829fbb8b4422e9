#include "support/own_folder.h"

#include <QByteArray>
#include <QStringEncoder>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include "platform/qt/text.h"
#include "platform/registry.h"

namespace support {
namespace {

constexpr const char* kRootVariable = "GANTREL_TEST_ROOT";

fs::path Prefix() { return Root() / "Pr\u00E9fix of \u00C4nn"; }

// A value's bytes as the prefix stores them; text is UTF-16.
std::string Bytes(std::uint32_t type, const std::string& data) {
  const bool isText = type != 3 && type != platform::kRegDword;
  const QByteArray bytes = isText ? QByteArray(QStringEncoder(QStringConverter::Utf16LE)(platform::ToQt(data)))
                                  : QByteArray::fromStdString(data);
  return bytes.toHex(',').toStdString();
}

}  // namespace

void SetRegistry(const std::vector<Installation>& installations) {
  std::string text = "WINE REGISTRY Version 2\n\n#arch=win64\n\n";
  for (const auto& [edition, folder, isIn64BitView, givenType] : installations) {
    const std::uint32_t type = givenType == 0 ? platform::kRegSz : givenType;
    text += isIn64BitView ? "[Software\\\\THQ\\\\" : "[Software\\\\Wow6432Node\\\\THQ\\\\";
    text += edition + "] 1234567890\n#time=1d9\n\"InstallLocation\"=hex(" + std::to_string(type) + "):";
    text += Bytes(type, givenType == 0 ? folder + '\0' : folder) + "\n\n";
  }
  WriteFile(Prefix() / "system.reg", text);
}

fs::path Root() {
  const char* const root = std::getenv(kRootVariable);
  if (root == nullptr) throw std::logic_error("not started by RunInOwnFolder");
  return root;
}

fs::path DriveC() { return Prefix() / "drive_c"; }

void MakeRoot() {
  // Not named after the process id: a killed program may have left that folder.
  std::string root = fs::temp_directory_path() / "gantrel \u00FCber all XXXXXX";
  if (mkdtemp(root.data()) == nullptr) throw std::runtime_error("cannot make a folder like " + root);
  setenv(kRootVariable, root.c_str(), 1);
  setenv("HOME", (root + "/home").c_str(), 1);
}

void MakeDrives() {
  fs::create_directories(Root() / "home");
  fs::create_directories(Prefix() / "dosdevices");
  fs::create_directory_symlink("../drive_c", Prefix() / "dosdevices" / "c:");
  fs::create_directory_symlink("/", Prefix() / "dosdevices" / "z:");
}

void AskToQuit() { std::raise(SIGTERM); }

}  // namespace support
