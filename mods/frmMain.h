#pragma once

#include <cstdint>
#include <list>
#include <optional>
#include <string>
#include <string_view>

#include "mods/messages.h"
#include "platform/controls.h"
#include "platform/folders.h"
#include "platform/window.h"
#include "settings/Module1.h"

class frmNew;

// The main window: game selector, lists of available and active mods, and their commands. The selector's text is the
// selected game; the lists are a view of the settings file, which is read for every use.
//
// A command reads the controls, opens the settings, calls a rule (such as in mods/mod_list.h), saves, refills the
// lists, and only then shows messages. Operations are defined in the folder of their subject: mods/, module_file/ or
// installations/.
class frmMain {
 public:
  frmMain();
  ~frmMain();
  frmMain(const frmMain&) = delete;
  frmMain& operator=(const frmMain&) = delete;

  // Runs the setup if no games were counted yet, and fills the window. Call once, before Show.
  void Form_Load();
  void Show() const;

  // Refills the game selector and selects its first entry. Leaves the mod lists alone.
  void RefreshGames();
  void RefreshGames(const Module1::Settings& settings);

  // Refills both mod lists, clears the selection, and enables the buttons that have something to act on. If the
  // settings cannot be read, the lists show the reason instead of entries.
  void ListMods();
  void ListMods(const Module1::Settings& settings);

  std::string SelectedGame() const;

  // The selected game's install folder, a Windows path; empty if the game is not registered.
  std::string GetBPath() const;

  // Writes the module file of this or the selected game; returns why it failed. The caller holds the lock, so that the
  // file matches the saved settings.
  static std::optional<Message> MakeModule(const Module1::Change& settings, const std::string& game);
  std::optional<Message> MakeModule(const Module1::Change& settings) const {
    return MakeModule(settings, SelectedGame());
  }

  // A game's tooltip: its folder and its module file, one per line; empty if it is not registered.
  static std::string GameDetails(const Module1::Settings& settings, std::string_view game);

  // A registry value as text. Empty if missing, longer than 1023 characters, or neither text nor a 32-bit number.
  // Environment references are not expanded.
  static std::string GetKeyValue(std::int32_t KeyRoot, std::string_view KeyName, std::string_view SubKeyRef);

 private:
  // What the changes of one command share.
  struct Batch {
    Module1::Step step = {};
    std::optional<platform::FoldersBelow> folders = {};  // of the listed game, once they are needed
  };

  void lstGame_Validate();
  void Refresh(const Module1::Settings& settings);
  void Undo(History::Way way);
  void cmdGoToGames_Click();
  void cmdActivate1_Click();
  void cmdDeactivate1_Click();
  void cmdActivateAll_Click();
  void cmdDeactivateAll_Click();
  void cmdMoveUp_Click();
  void cmdMoveDown_Click();
  void cmdNewMod_Click();
  void cmdDeleteMod_Click();

  void EditMod();
  void ShowWhichModWins();
  void OpenGameFolder() const;
  static void CopyLaunchOption();

  const platform::ListBox& FocusedList() const;
  std::string ModToolTip(const std::string& mod) const;
  void ListMods(const Module1::Settings& settings, Batch& batch);
  Outcome SetActive(const platform::ListBox& list, bool isActive, Batch& batch);
  void SetAllActive(const platform::ListBox& list, bool isActive);
  void MoveSelected(int by);
  void MoveMod(int from, int to);
  std::optional<Message> Move(int from, int to);
  void OpenDialog(const std::string& title, const std::optional<std::string>& edited);
  std::optional<Message> DeleteMod(const std::string& name);

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
  std::string listedGame_;     // the game whose mods are listed; differs from the selected one until ListMods
  std::list<frmNew> newMods_;  // the open dialogs for new and edited mods
};
