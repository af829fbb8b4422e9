#pragma once

#include <functional>
#include <optional>
#include <string>

#include "mods/messages.h"
#include "platform/controls.h"
#include "platform/window.h"

class frmMain;

// The dialog that registers a new mod: its name, and its data folders from those of the game that was selected when the
// dialog opened. Any number may be open at once. Confirming writes to the game that is selected then.
class frmNew {
 public:
  // Offers the folders immediately below `baseFolder`, a Windows path. The main window outlives the dialog.
  frmNew(frmMain& mainWindow, const std::string& baseFolder);

  void Show() const;

  // Called once the dialog has closed, whichever way; it may be destroyed in it.
  void OnClosed(std::function<void()> handler) const;

 private:
  void OKButton_Click();
  void CancelButton_Click();
  std::optional<Message> Register();

  frmMain* mainWindow_;
  platform::Window window_;
  platform::TextBox txtName;
  platform::ListBox lstDirs;
};
