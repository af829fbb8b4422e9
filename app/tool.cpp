#include "app/tool.h"

#include "app/layouts.h"
#include "mods/frmMain.h"
#include "platform/application.h"

int RunTool(int argumentCount, char** arguments) {
  argumentCount = 1;  // the tool takes no arguments
  const platform::Application application(Layouts(), argumentCount, arguments);
  frmMain mainWindow;
  mainWindow.Form_Load();
  mainWindow.Show();
  return platform::Application::Run();
}
