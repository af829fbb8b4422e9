#include "installations/frmDoWSetup.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "mods/frmMain.h"
#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/registry.h"
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

bool IsListed(std::string_view game, std::int64_t count) {
  for (std::int64_t n = 1; n <= count; ++n) {
    if (Module1::GameName(n) == game) return true;
  }
  return false;
}

// Registers the edition when the registry knows its folder.
void TryGame(std::string_view N) {
  std::string folder = RegisteredFolder(N);
  if (folder.empty()) return;
  if (!folder.ends_with('\\')) folder += '\\';
  const std::int64_t n = ListedGames() + 1;
  PutSetting("Games", schema::GameKey(n), N);
  PutSetting(N, "Path", folder);
  PutSetting(N, "AutoPath", "1");
  PutNumber("Games", "Count", n);
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
  const Module1::Command command;
  lstGames.Clear();
  platform::DoEvents();
  if (Module1::GameCount() == Module1::kNoGameCount) {
    for (const char* const edition : {"Dawn of War", "Dawn of War Demo", "Dawn of War Beta"}) TryGame(edition);
  }
  const std::int64_t count = Module1::GameCount();
  if (count == Module1::kNoGameCount) return;
  for (std::int64_t n = 1; n <= count; ++n) {
    const std::string name = Module1::GameName(n);
    lstGames.Add(name + " (" + Module1::GamePath(name) + ")");
  }
  platform::DoEvents();
}

void frmDoWSetup::cmdnew_Click() const {
  const Module1::Command command;
  const std::string name = platform::InputBox("Installation Name:", "New", "Dawn of War");
  if (name.empty()) return;
  const std::int64_t count = ListedGames();
  if (IsListed(name, count)) {
    platform::MsgBox("Please enter a unique name.", platform::Buttons::Ok, platform::Icon::Information, "New");
    return;
  }

  constexpr std::array kFilters = {platform::FileFilter{"W40k.exe", "W40k.exe"},
                                   platform::FileFilter{"All Files", "*.*"}};
  const auto chosen = platform::ShowOpen({.title = "Select DoW Path",
                                          .folder = RegisteredFolder(name),
                                          .fileName = "W40k.exe",
                                          .filters = kFilters,
                                          .defaultExtension = "exe"});
  if (!chosen) return;
  const std::string folder = chosen->path.substr(0, chosen->path.size() - chosen->name.size());
  const std::int64_t n = count + 1;
  PutNumber("Games", "Count", n);
  PutSetting("Games", schema::GameKey(n), name);
  PutSetting(name, "Path", folder);
  PutSetting(name, "AutoPath", "0");
  RefreshGames();
}

// Takes the game out of the list alone: its mods stay in the file, and are there again when it is registered again.
void frmDoWSetup::cmdDelete_Click() const {
  const Module1::Command command;
  const int selected = lstGames.Selected();
  if (selected == platform::kNoSelection) return;
  const std::int64_t n = selected + 1;
  const auto answer = platform::MsgBox("Really Delete '" + Module1::GameName(n) + "'?", platform::Buttons::YesNo,
                                       platform::Icon::None, "Delete");
  if (answer == platform::Answer::No) return;
  const std::int64_t count = ListedGames();
  for (std::int64_t i = n + 1; i <= count; ++i) {
    PutSetting("Games", schema::GameKey(i - 1), Module1::GameName(i));
  }
  PutNumber("Games", "Count", count - 1);
  RefreshGames();
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
