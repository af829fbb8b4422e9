#include "installations/frmDoWSetup.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "installations/game_list.h"
#include "installations/registry_lookup.h"
#include "mods/frmMain.h"
#include "platform/application.h"
#include "platform/dialogs.h"
#include "platform/registry.h"
#include "settings/EZINILib.h"

namespace {

// The registry's install folders of these editions; empty if not found.
std::vector<std::string> RegisteredFolders(std::span<const std::string> games) {
  std::vector<std::string> keys;
  for (const std::string& game : games) keys.push_back("Software\\THQ\\" + game);
  return GetKeyValues(platform::kHkeyLocalMachine, keys, "InstallLocation");
}

// Why a game of this name cannot be registered.
std::optional<Message> Refusal(const Module1::Settings& settings, std::string_view name) {
  if (settings.FindGame(name)) return messages::NameIsTaken();
  return messages::Failed(settings.Unread());
}

// Checks again: another program may have registered the name meanwhile.
std::optional<Message> Register(std::string_view name, std::string_view folder) {
  Module1::Change change;
  if (auto refusal = Refusal(change, name)) return refusal;
  AddGame(change, name, folder);
  return messages::Failed(change.Save());
}

std::optional<Message> Remove(std::int64_t n, std::string_view name) {
  Module1::Change change;
  RemoveGame(change, n, name);
  return messages::Failed(change.Save());
}

// Registers the editions found in the registry if no game was ever counted.
std::optional<Message> RegisterEditions() {
  if (Module1::Settings().GameCount() != Module1::kNoGameCount) return std::nullopt;
  const std::array<std::string, 3> editions = {"Dawn of War", "Dawn of War Demo", "Dawn of War Beta"};
  const std::vector<std::string> folders = RegisteredFolders(editions);
  Module1::Change change;
  if (change.GameCount() != Module1::kNoGameCount) return std::nullopt;
  for (std::size_t i = 0; i < folders.size(); ++i) TryGame(change, editions[i], folders[i]);
  return messages::Failed(change.Save());
}

}  // namespace

frmDoWSetup::frmDoWSetup(frmMain& mainWindow)
    : mainWindow_(&mainWindow),
      window_("frmDoWSetup"),
      OKButton(window_.Button("OKButton")),
      lstGames(window_.ListBox("lstGames")) {
  OKButton.OnClick([this] { OKButton_Click(); });
  window_.Button("cmdnew").OnClick([this] { cmdnew_Click(); });
  window_.Button("cmdDelete").OnClick([this] { cmdDelete_Click(); });
  lstGames.OnToolTip([](int position) {
    const Module1::Settings settings;
    return frmMain::GameDetails(settings, settings.GameName(position + 1));
  });
  window_.OnCommand("Details", [this] { window_.ShowDetails(); });
  window_.OnUnload([this](bool& cancel) { Form_Unload(cancel); });
}

void frmDoWSetup::ShowInFrontOf(const platform::Window& mainWindow) const { window_.ShowInFrontOf(mainWindow); }

void frmDoWSetup::Close() const { window_.Close(); }

bool frmDoWSetup::DoneYet() const { return done_; }

void frmDoWSetup::Form_Load() {
  done_ = false;
  RefreshGames();
}

void frmDoWSetup::RefreshGames() {
  lstGames.Fill({});
  platform::DoEvents();
  std::optional<Message> message;
  {
    const platform::BusyPointer busy;
    message = RegisterEditions();
    const Module1::Settings settings;
    if (!message) message = messages::Failed(settings.Unread());
    lstGames.SetEmptyText(message ? message->text
                                  : "No installation was found. Click + and select the game's W40k.exe.");
    lstGames.Fill(GameEntries(settings));
  }
  platform::DoEvents();
  messages::Show("DoW Installation Setup", message);
}

void frmDoWSetup::cmdnew_Click() {
  const std::string name = platform::InputBox("Installation Name:", "New", "Dawn of War");
  if (name.empty()) return;
  if (const auto refusal = Refusal(Module1::Settings(), name)) return messages::Show("New", refusal);

  constexpr std::array kFilters = {platform::FileFilter{"W40k.exe", "W40k.exe"},
                                   platform::FileFilter{"All Files", "*.*"}};
  const auto chosen = platform::ShowOpen({.title = "Select DoW Path",
                                          .folder = RegisteredFolders({&name, 1}).front(),
                                          .fileName = "W40k.exe",
                                          .filters = kFilters,
                                          .defaultExtension = "exe",
                                          .longestFolder = EZINILib::kMostCharacters});
  if (!chosen) return;
  OKButton.TakeFocus();  // for the next step
  Finish("New", Register(name, chosen->path.substr(0, chosen->path.size() - chosen->name.size())));
}

void frmDoWSetup::cmdDelete_Click() {
  const int selected = lstGames.Selected();
  if (selected == platform::kNoSelection) return;
  const std::int64_t n = selected + 1;
  std::string name;
  std::optional<FileFailure> unread;
  {
    const Module1::Settings settings;
    name = settings.GameName(n);
    unread = settings.Unread();
  }
  if (unread) return messages::Show("Delete", messages::Failed(unread));
  const auto answer =
      platform::MsgBox("Really Delete '" + name + "'?", platform::Buttons::YesNo, platform::Icon::None, "Delete");
  if (answer == platform::Answer::No) return;
  Finish("Delete", Remove(n, name));
}

// Refreshes the list after a success; after a failure it is still correct.
void frmDoWSetup::Finish(std::string_view title, const std::optional<Message>& message) {
  message ? messages::Show(title, message) : RefreshGames();
}

void frmDoWSetup::OKButton_Click() {
  done_ = true;
  mainWindow_->RefreshGames();
}

// The user's request to close is refused, but ends the main window's wait; then the main window's own request succeeds.
void frmDoWSetup::Form_Unload(bool& Cancel) {
  if (done_) return;
  done_ = true;
  Cancel = true;
}
