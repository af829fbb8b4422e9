// The tool from start to its first painted window.

#include "app/layouts.h"
#include "bench/first_paint.h"
#include "mods/frmMain.h"
#include "platform/application.h"

int main(int argumentCount, char** arguments) {
  const platform::Application application(Layouts(), argumentCount, arguments);
  const EndAtFirstPaint end;
  frmMain mainWindow;
  mainWindow.Form_Load();
  mainWindow.Show();
  return platform::Application::Run();
}
