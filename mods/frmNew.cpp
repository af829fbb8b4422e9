#include "mods/frmNew.h"

#include <utility>

#include "mods/frmMain.h"
#include "mods/mod_list.h"
#include "platform/paths.h"

frmNew::frmNew(frmMain& mainWindow, const std::string& baseFolder)
    : mainWindow_(&mainWindow),
      window_("frmNew"),
      txtName(window_.TextBox("txtName")),
      lstDirs(window_.ListBox("lstDirs")) {
  window_.Button("OKButton").OnClick([this] { OKButton_Click(); });
  window_.Button("CancelButton").OnClick([this] { CancelButton_Click(); });

  const auto folders = platform::ListSubfolders(baseFolder);
  lstDirs.SetEmptyText((folders ? "No folders in\n" : "Folder not found:\n") + baseFolder);
  if (folders) lstDirs.Fill(*folders);
}

void frmNew::Show() const { window_.Show(); }

void frmNew::OnClosed(std::function<void()> handler) const { window_.OnClosed(std::move(handler)); }

void frmNew::OKButton_Click() {
  const auto refusal = Register();
  if (!refusal) return window_.Close();
  messages::Show("New Mod", refusal);
  txtName.TakeFocus();  // where the user goes on
}

std::optional<Message> frmNew::Register() {
  const std::string name = txtName.Text();
  const bool isBlank = name.find_first_not_of(" \t") == std::string::npos;
  if (isBlank) return messages::NameIsBlank();
  const std::string game = mainWindow_->SelectedGame();
  Module1::Change change;
  if (const auto unread = change.Unread()) return messages::Failed(unread);
  if (change.InstallFolder(game).empty()) return messages::NoGame();
  if (change.FindMod(game, name) != Module1::kNoMod) return messages::NameIsTaken();
  RegisterMod(change, game, name, lstDirs.SelectedTexts());
  const auto unsaved = change.Save();
  mainWindow_->ListMods(change);
  return messages::Failed(unsaved);
}

void frmNew::CancelButton_Click() { window_.Close(); }
