#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/controls.h"
#include "platform/window.h"
#include "settings/file_failure.h"

class frmMain;

// The dialog in which the user keeps the list of game installations. It writes every change at once, and never closes
// itself: it only tells that it is done, and the main window, which waits for that, closes it.
class frmDoWSetup {
 public:
  // Fills the list; where no game was ever registered, registers the editions that the registry knows. The main window
  // outlives the dialog.
  explicit frmDoWSetup(const frmMain& mainWindow);

  void ShowInFrontOf(const platform::Window& mainWindow) const;
  void Close() const;

  // Whether the user is done: has clicked OK, or asked to close the dialog.
  bool DoneYet() const;

 private:
  void Form_Load();
  void Form_Unload(bool& Cancel);
  void OKButton_Click();
  void cmdnew_Click() const;
  void cmdDelete_Click() const;
  void RefreshGames() const;
  void Finish(std::string_view title, const std::optional<FileFailure>& failure) const;

  const frmMain* mainWindow_;
  platform::Window window_;
  platform::ListBox lstGames;
  bool done_ = false;
};
