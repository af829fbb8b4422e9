#include "mods/frmNew.h"

#include <algorithm>
#include <utility>

#include "mods/failure_message.h"
#include "mods/frmMain.h"
#include "platform/dialogs.h"
#include "platform/paths.h"
#include "settings/Module1.h"
#include "settings/schema.h"

using Module1::PutNumber;
using Module1::PutSetting;

namespace {

void Refuse(std::string_view reason, platform::Icon icon) {
  platform::MsgBox(reason, platform::Buttons::Ok, icon, "New Mod");
}

// Appends the mod to the game's mods, as an available one.
void RegisterMod(const std::string& game, const std::string& name, const std::vector<std::string>& folders) {
  const std::int64_t n = std::max<std::int64_t>(Module1::ModCount(game), 0) + 1;
  const std::string section = schema::ModSection(game, n);
  PutNumber(game, "ModCount", n);
  PutSetting(section, "Name", name);
  PutSetting(section, "Active", "0");
  PutNumber(section, "DirCount", static_cast<std::int64_t>(folders.size()));
  std::int64_t j = 1;
  for (const std::string& folder : folders) PutSetting(section, schema::DirKey(j++), folder);
}

}  // namespace

std::string frmMain::DataFolderBase() const {
  std::string folder = GetBPath();
  if (folder.empty()) return "";
  if (!folder.ends_with('\\')) folder += '\\';
  return folder + "W40k";
}

void frmMain::cmdNewMod_Click() {
  const Module1::Reading reading;
  if (const auto unread = Module1::Unread()) return ShowFailure("New Mod", unread);
  const std::string folder = DataFolderBase();
  if (folder.empty()) return Refuse("Please set up a game first.", platform::Icon::Exclamation);
  const auto dialog = newMods_.emplace(newMods_.end(), *this, folder);
  dialog->OnClosed([this, dialog] { newMods_.erase(dialog); });
  dialog->Show();
}

frmNew::frmNew(const frmMain& mainWindow, const std::string& baseFolder)
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

void frmNew::OKButton_Click() const {
  const Module1::Change change;
  const std::string name = txtName.Text();
  const std::string game = mainWindow_->SelectedGame();
  const bool isBlank = name.find_first_not_of(" \t") == std::string::npos;
  if (isBlank) {
    Refuse("Please enter a name for the mod.", platform::Icon::Exclamation);
  } else if (const auto unread = Module1::Unread()) {
    ShowFailure("New Mod", unread);
  } else if (mainWindow_->GetBPath().empty()) {
    Refuse("Please set up a game first.", platform::Icon::Exclamation);
  } else if (Module1::FindMod(game, name) != Module1::kNoMod) {
    Refuse("Please enter a unique name.", platform::Icon::Information);
  } else {
    RegisterMod(game, name, lstDirs.SelectedTexts());
    const auto unsaved = Module1::Change::Save();
    mainWindow_->ListMods();
    if (!unsaved) return window_.Close();
    ShowFailure("New Mod", unsaved);
  }
  txtName.TakeFocus();  // where the user goes on
}

void frmNew::CancelButton_Click() const { window_.Close(); }
