#pragma once

#include <functional>
#include <optional>
#include <string>

#include "mods/messages.h"
#include "platform/controls.h"
#include "platform/window.h"
#include "settings/Module1.h"

class frmMain;

// The dialog that registers a new mod or edits one: its name and its data folders, chosen from those of the game that
// was selected when the dialog opened. Several may be open at once. OK writes a new mod to the game selected at that
// time, an edited mod to its own game.
class frmNew {
 public:
  // Offers the folders directly below `baseFolder`, a Windows path. The main window outlives the dialog.
  frmNew(frmMain& mainWindow, const std::string& baseFolder);

  // Fills the dialog with a mod of the selected game for editing. Its own folders come first, in order and selected,
  // marked if missing. False if the mod is not registered.
  bool Edit(const Module1::Settings& settings, const std::string& mod);

  void Show() const;

  // Called after the dialog has closed in any way; the handler may destroy it.
  void OnClosed(std::function<void()> handler) const;

 private:
  void OKButton_Click();
  void CancelButton_Click();
  Outcome Register();
  std::optional<Message> Put(Module1::Change& change, const std::string& game, const std::string& name) const;

  struct Edited {
    std::string game;
    std::string mod;
  };

  frmMain* mainWindow_;
  std::string baseFolder_;
  std::optional<Edited> edited_;
  platform::Window window_;
  platform::TextBox txtName;
  platform::ListBox lstDirs;
};
