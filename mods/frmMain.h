#pragma once

#include <cstdint>
#include <list>
#include <optional>
#include <string>
#include <string_view>

#include "mods/messages.h"
#include "platform/controls.h"
#include "platform/window.h"
#include "settings/Module1.h"

class frmNew;

// The main window: the game selector, the selected game's available and active mods, and the commands on them. The game
// is the selector's text and the lists are a view of the settings file, read again at every use.
//
// A command reads its controls, opens the settings, lets a rule (mods/mod_list.h and its likes) change them, saves,
// refills the lists, and only then talks to the user. Each operation is defined in the folder of its subject: here, in
// module_file/ or in installations/.
class frmMain {
 public:
  frmMain();
  ~frmMain();
  frmMain(const frmMain&) = delete;
  frmMain& operator=(const frmMain&) = delete;

  // Sets the games up when none were counted yet, and fills the window. Call once, before Show.
  void Form_Load();
  void Show() const;

  // Refills the game selector and selects its first entry. The mod lists keep their contents.
  void RefreshGames();
  void RefreshGames(const Module1::Settings& settings);

  // Refills both mod lists, with no entry selected, and enables the buttons that have something to act on. What keeps
  // the settings from being read is shown in the place of entries.
  void ListMods();
  void ListMods(const Module1::Settings& settings);

  std::string SelectedGame() const;

  // The selected game's install folder, a Windows path; empty when the game is not registered.
  std::string GetBPath() const;

  // Writes the module file of a game, or of the selected one, and returns what kept it from that. The caller has the
  // lock, so that the file belongs to the settings that are there.
  static std::optional<Message> MakeModule(const Module1::Change& settings, const std::string& game);
  std::optional<Message> MakeModule(const Module1::Change& settings) const {
    return MakeModule(settings, SelectedGame());
  }

  // What the tooltip of a game says: its folder and its module file, a line each; nothing when it is not registered.
  static std::string GameDetails(const Module1::Settings& settings, std::string_view game);

  // A registry value as text. Empty when there is none, it takes more than 1023 characters, or it is neither text nor
  // a 32-bit number; environment references stay as they are.
  static std::string GetKeyValue(std::int32_t KeyRoot, std::string_view KeyName, std::string_view SubKeyRef);

 private:
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
  Outcome SetActive(const platform::ListBox& list, bool isActive, Module1::Step& step);
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
  std::string listedGame_;     // whose mods the lists show; another one than the selected until they are refilled
  std::list<frmNew> newMods_;  // the open dialogs for new and edited mods
};
