#pragma once

#include <cstdint>
#include <list>
#include <optional>
#include <string>
#include <string_view>

#include "platform/controls.h"
#include "platform/window.h"
#include "settings/file_failure.h"

class frmNew;

// The main window: the game selector, the selected game's available and active mods, and the commands on them. It keeps
// nothing but its controls: the game is the selector's text and the lists are a view of the settings file, read again
// at every use.
//
// Each operation is defined in the folder of its subject: here, in module_file/ or in installations/.
class frmMain {
 public:
  frmMain();
  ~frmMain();
  frmMain(const frmMain&) = delete;
  frmMain& operator=(const frmMain&) = delete;
  frmMain(frmMain&&) = delete;
  frmMain& operator=(frmMain&&) = delete;

  // Sets the games up when none were counted yet, and fills the window. Call once, before Show.
  void Form_Load() const;
  void Show() const;

  // Refills the game selector and selects its first entry. The mod lists keep their contents.
  void RefreshGames() const;

  // Refills both mod lists, with no entry selected, and enables the buttons that have something to act on. Returns what
  // kept the settings from being read; the lists show it as well, in the place of entries.
  std::optional<FileFailure> ListMods() const;

  std::string SelectedGame() const;

  // The selected game's install folder, a Windows path; empty when the game is not registered.
  std::string GetBPath() const;

  // The folder that holds the data folders of the selected game, a Windows path; empty when the game is not registered.
  std::string DataFolderBase() const;

  // The selected game's module file, a Windows path; empty when the game is not registered.
  std::string ModuleFile() const;

  // Writes the selected game's module file, and returns what kept it from that. Does nothing when the game is not
  // registered.
  std::optional<FileFailure> MakeModule() const;

  // A registry value as text. Empty when there is none, it takes more than 1023 characters, or it is neither text nor
  // a 32-bit number; environment references stay as they are.
  static std::string GetKeyValue(std::int32_t KeyRoot, std::string_view KeyName, std::string_view SubKeyRef);

 private:
  void lstGame_Validate() const;
  void cmdGoToGames_Click() const;
  void cmdActivate1_Click() const;
  void cmdDeactivate1_Click() const;
  void cmdActivateAll_Click() const;
  void cmdDeactivateAll_Click() const;
  void cmdMoveUp_Click() const;
  void cmdMoveDown_Click() const;
  void cmdNewMod_Click();
  void cmdDeleteMod_Click() const;

  std::string DataFolders(const std::string& mod) const;

  std::optional<FileFailure> SetActive(const platform::ListBox& list, std::string_view flag) const;
  void SetAllActive(const platform::ListBox& list, std::string_view flag) const;
  void MoveSelected(int by) const;
  std::optional<FileFailure> Move(int position, int newPosition) const;

  platform::Window window_;
  platform::DropDownList lstGame;
  platform::ListBox lstNotActive;
  platform::ListBox lstActive;
  platform::Button cmdActivate1;
  platform::Button cmdDeactivate1;
  platform::Button cmdActivateAll;
  platform::Button cmdDeactivateAll;
  platform::Button cmdMoveUp;
  platform::Button cmdMoveDown;
  platform::Button cmdNewMod;
  platform::Button cmdDeleteMod;
  platform::Button cmdGoToGames;
  std::list<frmNew> newMods_;  // the open new-mod dialogs
};
