#include "installations/frmDoWSetup.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "mods/failure_message.h"
#include "mods/frmMain.h"
#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/registry.h"
#include "settings/EZINILib.h"
#include "settings/Module1.h"
#include "settings/schema.h"

using Module1::PutNumber;
using Module1::PutSetting;

namespace {

// Where the registry says that an edition of the game is installed; empty when it does not know.
std::string RegisteredFolder(std::string_view game) {
  return frmMain::GetKeyValue(platform::kHkeyLocalMachine, std::string("Software\\THQ\\").append(game),
                              "InstallLocation");
}

// The number of games in the list, before the first one was registered as well.
std::int64_t ListedGames() { return std::max<std::int64_t>(Module1::GameCount(), 0); }

// The number of the first game of that name in the list; nothing when there is none.
std::optional<std::int64_t> FindGame(std::string_view name) {
  const Module1::Reading reading;
  const std::int64_t count = ListedGames();
  for (std::int64_t n = 1; n <= count; ++n) {
    if (Module1::GameName(n) == name) return n;
  }
  return std::nullopt;
}

void PutGame(std::int64_t n, std::string_view name, std::string_view folder, std::string_view isAutomatic) {
  PutSetting("Games", schema::GameKey(n), name);
  PutSetting(name, "Path", folder);
  PutSetting(name, "AutoPath", isAutomatic);
}

// A name that is in the list already is refused with a message, any name where the list cannot be read.
bool IsRefused(std::string_view name) {
  const Module1::Reading reading;
  const bool isTaken = FindGame(name).has_value();
  const auto unread = Module1::Unread();
  if (isTaken)
    platform::MsgBox("Please enter a unique name.", platform::Buttons::Ok, platform::Icon::Information, "New");
  ShowFailure("New", unread);
  return isTaken || unread;
}

// Registers the edition when the registry knows its folder.
void TryGame(std::string_view N) {
  std::string folder = RegisteredFolder(N);
  if (folder.empty()) return;
  if (!folder.ends_with('\\')) folder += '\\';
  const std::int64_t n = ListedGames() + 1;
  PutGame(n, N, folder, "1");
  PutNumber("Games", "Count", n);
}

std::optional<FileFailure> AddGame(std::string_view name, std::string_view folder) {
  const Module1::Change change;
  const std::int64_t n = ListedGames() + 1;
  PutNumber("Games", "Count", n);
  PutGame(n, name, folder, "0");
  return Module1::Change::Save();
}

// Takes the game out of the list alone: its mods stay in the file, and are there again when it is registered again. `n`
// was its number before the user was asked.
std::optional<FileFailure> RemoveGame(std::int64_t n, std::string_view name) {
  const Module1::Change change;
  const std::int64_t count = ListedGames();
  const auto removed = Module1::GameName(n) == name && n <= count ? n : FindGame(name);
  for (std::int64_t i = removed.value_or(count) + 1; i <= count; ++i) {
    PutSetting("Games", schema::GameKey(i - 1), Module1::GameName(i));
  }
  if (removed) PutNumber("Games", "Count", count - 1);
  return Module1::Change::Save();
}

}  // namespace

frmDoWSetup::frmDoWSetup(const frmMain& mainWindow)
    : mainWindow_(&mainWindow), window_("frmDoWSetup"), lstGames(window_.ListBox("lstGames")) {
  window_.Button("OKButton").OnClick([this] { OKButton_Click(); });
  window_.Button("cmdnew").OnClick([this] { cmdnew_Click(); });
  window_.Button("cmdDelete").OnClick([this] { cmdDelete_Click(); });
  window_.OnUnload([this](bool& cancel) { Form_Unload(cancel); });
  Form_Load();
}

void frmDoWSetup::ShowInFrontOf(const platform::Window& mainWindow) const { window_.ShowInFrontOf(mainWindow); }

void frmDoWSetup::Close() const { window_.Close(); }

bool frmDoWSetup::DoneYet() const { return done_; }

void frmDoWSetup::Form_Load() {
  done_ = false;
  RefreshGames();
}

void frmDoWSetup::RefreshGames() const {
  lstGames.Fill({});
  platform::DoEvents();
  std::optional<FileFailure> failure;
  {
    const Module1::Change change;
    if (Module1::GameCount() == Module1::kNoGameCount) {
      for (const char* const edition : {"Dawn of War", "Dawn of War Demo", "Dawn of War Beta"}) TryGame(edition);
    }
    failure = Module1::Change::Save();
    const std::int64_t count = Module1::GameCount();
    std::vector<std::string> games;
    for (std::int64_t n = 1; n <= count; ++n) {
      const std::string name = Module1::GameName(n);
      games.push_back(name + " (" + Module1::GamePath(name) + ")");
    }
    const auto unread = Module1::Unread();
    lstGames.SetEmptyText(unread ? unread->Sentence()
                                 : "No installation was found. Click on + and pick the game's W40k.exe.");
    lstGames.Fill(games);
  }
  platform::DoEvents();
  ShowFailure("DoW Installation Setup", failure);
}

void frmDoWSetup::cmdnew_Click() const {
  const std::string name = platform::InputBox("Installation Name:", "New", "Dawn of War");
  if (name.empty()) return;
  if (IsRefused(name)) return;

  constexpr std::array kFilters = {platform::FileFilter{"W40k.exe", "W40k.exe"},
                                   platform::FileFilter{"All Files", "*.*"}};
  const auto chosen = platform::ShowOpen({.title = "Select DoW Path",
                                          .folder = RegisteredFolder(name),
                                          .fileName = "W40k.exe",
                                          .filters = kFilters,
                                          .defaultExtension = "exe",
                                          .longestFolder = EZINILib::kMostCharacters});
  if (!chosen || IsRefused(name)) return;  // another program may have registered it meanwhile
  Finish("New", AddGame(name, chosen->path.substr(0, chosen->path.size() - chosen->name.size())));
}

void frmDoWSetup::cmdDelete_Click() const {
  const int selected = lstGames.Selected();
  if (selected == platform::kNoSelection) return;
  const std::int64_t n = selected + 1;
  std::string name;
  {
    const Module1::Reading reading;
    if (const auto unread = Module1::Unread()) return ShowFailure("Delete", unread);
    name = Module1::GameName(n);
  }
  const auto answer =
      platform::MsgBox("Really Delete '" + name + "'?", platform::Buttons::YesNo, platform::Icon::None, "Delete");
  if (answer == platform::Answer::No) return;
  Finish("Delete", RemoveGame(n, name));
}

// The list follows what was changed; where nothing could be, it is right as it is.
void frmDoWSetup::Finish(std::string_view title, const std::optional<FileFailure>& failure) const {
  failure ? ShowFailure(title, failure) : RefreshGames();
}

void frmDoWSetup::OKButton_Click() {
  done_ = true;
  mainWindow_->RefreshGames();
}

// The user's request to close is refused, but ends the main window's wait; the main window's own, after that, is not.
void frmDoWSetup::Form_Unload(bool& Cancel) {
  if (done_) return;
  done_ = true;
  Cancel = true;
}
