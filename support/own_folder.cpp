#include "support/own_folder.h"

#include <QProcess>
#include <QStringList>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "platform/paths.h"

namespace support {
namespace {

constexpr const char* kProgram = "gantrel-test.exe";  // the suffix is for Windows and harmless elsewhere
constexpr const char* kIsCopy = "GANTREL_TEST_IS_COPY";

// Removes read-only files, too; keeps `kept` and its parents.
void Remove(const fs::path& path, const fs::path& kept) {
  if (path == kept) return;
  if (!fs::is_symlink(path)) {
    fs::permissions(path, fs::perms::owner_all, fs::perm_options::add);
    if (fs::is_directory(path)) {
      for (const auto& entry : fs::directory_iterator(path)) Remove(entry.path(), kept);
    }
  }
  std::error_code isNotEmpty;
  fs::remove(path, isNotEmpty);
}

// On a drive C: outside the root, the tests use two more folders.
void RemoveAllBut(const fs::path& kept) {
  for (const fs::path& path : {Root(), DriveC() / "Games", ExecutableFolder().parent_path()}) {
    if (fs::exists(path)) Remove(path, kept);
  }
}

}  // namespace

fs::path ExecutableFolder() { return DriveC() / u8"My T\u00F6\u00F6ls" / "Gantrel"; }
fs::path SettingsFile() { return ExecutableFolder() / "Ulvane.ini"; }

void Reset() {
  RemoveAllBut(ExecutableFolder() / kProgram);
  fs::create_directories(Root());
  MakeDrives();
  SetRegistry({});
  for (const char* const name : {"Make.ini", "HEADER", "FOOTER"}) {
    fs::copy_file(fs::path(GANTREL_SOURCE_DIR) / "templates" / name, ExecutableFolder() / name);
  }
}

int RunInOwnFolder(int argumentCount, char** arguments, int (*run)(int, char**)) {
  if (qEnvironmentVariableIsSet(kIsCopy)) return run(argumentCount, arguments);
  MakeRoot();
  qputenv(kIsCopy, "1");
  const fs::path copy = ExecutableFolder() / kProgram;
  fs::create_directories(copy.parent_path());
  fs::path own = platform::BesideExecutable(fs::path(arguments[0]).filename().string());
  if (!fs::exists(own)) own += ".exe";  // commands may omit it
  fs::copy_file(own, copy, fs::copy_options::overwrite_existing);
  const QStringList others(arguments + 1, arguments + argumentCount);
  const int result = QProcess::execute(QString::fromStdU16String(copy.u16string()), others);
  SetRegistry({});
  RemoveAllBut({});
  return result;
}

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

}  // namespace support
