#include "app/tool.h"

#include <string>
#include <system_error>

#include "app/layouts.h"
#include "mods/frmMain.h"
#include "platform/application.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace {

// The downloads have them in a folder of their own, where no newer version replaces one that was edited. A failure is
// told when the file is needed.
void PutMissingTemplates() {
  for (const std::string name : {"Make.ini", "HEADER", "FOOTER"}) {
    const auto file = platform::BesideExecutable(name);
    std::string bytes;
    if (platform::ReadFile(file, bytes) != std::errc::no_such_file_or_directory) continue;
    const platform::ToolLock lock = platform::LockTool();
    if (platform::ReadFile(file, bytes) != std::errc::no_such_file_or_directory) continue;
    if (platform::ReadFile(platform::BesideExecutable("templates\\" + name), bytes)) continue;
    [[maybe_unused]] const auto failure = platform::ReplaceFile(file, bytes);
  }
}

}  // namespace

int RunTool(int argumentCount, char** arguments) {
  argumentCount = 1;  // the tool takes no arguments
  PutMissingTemplates();
  const platform::Application application(Layouts(), argumentCount, arguments);
  frmMain mainWindow;
  mainWindow.Form_Load();
  mainWindow.Show();
  return platform::Application::Run();
}
