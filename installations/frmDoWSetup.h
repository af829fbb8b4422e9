#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "mods/messages.h"
#include "platform/controls.h"
#include "platform/window.h"

class frmMain;

// The dialog in which the user keeps the list of game installations. It writes every change at once, and never closes
// itself: it only tells that it is done, and the main window, which waits for that, closes it.
class frmDoWSetup {
 public:
  // The main window outlives the dialog.
  explicit frmDoWSetup(frmMain& mainWindow);

  void ShowInFrontOf(const platform::Window& mainWindow) const;
  void Close() const;

  // Fills the list; where no game was ever registered, registers the editions that the registry knows. That takes a
  // moment, so the dialog is shown before.
  void Form_Load();

  // Whether the user is done: has clicked OK, or asked to close the dialog.
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
