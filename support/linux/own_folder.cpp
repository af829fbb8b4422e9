#include "support/own_folder.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

#include "support/linux/prefix.h"
#include "support/system.h"

namespace fs = std::filesystem;

namespace support {
namespace {

constexpr const char* kRootVariable = "GANTREL_TEST_ROOT";

void MakeWritable(const fs::path& root) {
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    if (entry.is_directory() && !entry.is_symlink())
      fs::permissions(entry, fs::perms::owner_all, fs::perm_options::add);
  }
}

fs::path Executable() { return fs::read_symlink("/proc/self/exe"); }

}  // namespace

fs::path Root() {
  const char* const root = std::getenv(kRootVariable);
  if (root == nullptr) throw std::logic_error("not started by RunInOwnFolder");
  return root;
}

fs::path Prefix() { return Root() / "Pr\u00E9fix of \u00C4nn"; }
fs::path DriveC() { return Prefix() / "drive_c"; }

void Reset() {
  MakeWritable(Root());
  const fs::path executable = Executable();
  const fs::path aside = Root().parent_path() / (Root().filename().string() + ".exe");
  fs::rename(executable, aside);
  for (const auto& entry : fs::directory_iterator(Root())) fs::remove_all(entry);
  fs::create_directories(ExecutableFolder());
  fs::rename(aside, executable);
  fs::create_directories(Root() / "home");
  fs::create_directories(Prefix() / "dosdevices");
  fs::create_directory_symlink("../drive_c", Prefix() / "dosdevices" / "c:");
  fs::create_directory_symlink("/", Prefix() / "dosdevices" / "z:");
  SetRegistry({});
  for (const char* const name : {"Make.ini", "HEADER", "FOOTER"}) {
    fs::copy_file(fs::path(GANTREL_SOURCE_DIR) / "templates" / name, ExecutableFolder() / name);
  }
}

int RunInOwnFolder(int argumentCount, char** arguments, int (*run)(int, char**)) {
  if (std::getenv(kRootVariable) != nullptr) return run(argumentCount, arguments);

  // Not named by the process's number, which a folder left behind by a killed program may have.
  std::string root = fs::temp_directory_path() / "gantrel \u00FCber all XXXXXX";
  if (mkdtemp(root.data()) == nullptr) throw std::runtime_error("cannot make a folder like " + root);
  fs::permissions(root, fs::perms(0755));  // some tests go on as a user who is not root
  setenv(kRootVariable, root.c_str(), 1);
  setenv("HOME", (fs::path(root) / "home").c_str(), 1);
  fs::create_directories(ExecutableFolder());
  const fs::path copy = ExecutableFolder() / "gantrel-test";
  std::error_code failure;
  fs::create_hard_link(Executable(), copy, failure);
  if (failure) fs::copy_file(Executable(), copy);

  int status = 0;
  const pid_t child = fork();
  if (child == 0) {
    execv(copy.c_str(), arguments);
    _exit(EXIT_FAILURE);
  }
  waitpid(child, &status, 0);
  MakeWritable(root);
  fs::remove_all(root);
  return WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE;
}

}  // namespace support
