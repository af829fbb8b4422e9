#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "mods/messages.h"
#include "platform/controls.h"
#include "platform/window.h"

class frmMain;

// The dialog for the list of game installations. Writes every change at once. Never closes itself: it only reports that
// the user is done, and the main window closes it.
class frmDoWSetup {
 public:
  // The main window outlives the dialog.
  explicit frmDoWSetup(frmMain& mainWindow);

  void ShowInFrontOf(const platform::Window& mainWindow) const;
  void Close() const;

  // Fills the list; if no game was ever registered, first registers the editions found in the registry. That takes a
  // moment, so the dialog is shown before.
  void Form_Load();

  // Whether the user has clicked OK or asked to close the dialog.
  bool DoneYet() const;

 private:
  void Form_Unload(bool& Cancel);
  void OKButton_Click();
  void cmdnew_Click();
  void cmdDelete_Click();
  void RefreshGames();
  void Finish(std::string_view title, const std::optional<Message>& message);

  frmMain* mainWindow_;
  platform::Window window_;
  platform::Button OKButton;
  platform::ListBox lstGames;
  bool done_ = false;
};
