#include "mods/frmNew.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "mods/frmMain.h"
#include "mods/mod_list.h"
#include "platform/code_page.h"
#include "platform/folders.h"

frmNew::frmNew(frmMain& mainWindow, const std::string& baseFolder)
    : mainWindow_(&mainWindow),
      baseFolder_(baseFolder),
      window_("frmNew"),
      txtName(window_.TextBox("txtName")),
      lstDirs(window_.ListBox("lstDirs")) {
  window_.Button("OKButton").OnClick([this] { OKButton_Click(); });
  window_.Button("CancelButton").OnClick([this] { CancelButton_Click(); });

  const auto folders = platform::ListSubfolders(baseFolder);
  lstDirs.SetEmptyText((folders ? "No folders in:\n" : "Folder not found:\n") + baseFolder);
  if (folders) lstDirs.Fill(*folders);
}

bool frmNew::Edit(const Module1::Settings& settings, const std::string& mod) {
  edited_ = {mainWindow_->SelectedGame(), mod};
  auto folders = DataFolders(settings, edited_->game, mod);
  if (!folders) return false;
  const platform::FoldersBelow present(baseFolder_);
  std::vector<bool> areMissing;
  for (const std::string& folder : *folders) areMissing.push_back(present.IsMissing(folder));
  const auto own = folders->size();
  for (const std::string& other : lstDirs.Texts()) {
    const auto isSame = [&](const std::string& folder) { return platform::SameName(folder, other); };
    if (std::none_of(folders->begin(), folders->begin() + static_cast<std::ptrdiff_t>(own), isSame))
      folders->push_back(other);
  }
  window_.SetCaption("Edit Mod");
  txtName.SetText(mod);
  lstDirs.Fill(*folders);
  lstDirs.SetMarks(std::move(areMissing));
  lstDirs.SelectFirst(static_cast<int>(own));
  return true;
}

void frmNew::Show() const { window_.Show(); }

void frmNew::OnClosed(std::function<void()> handler) const { window_.OnClosed(std::move(handler)); }

void frmNew::OKButton_Click() {
  const Outcome outcome = Register();
  messages::Show(edited_ ? "Edit Mod" : "New Mod", outcome.message);
  outcome.isSaved ? window_.Close() : txtName.TakeFocus();  // to correct the name
}

Outcome frmNew::Register() {
  const std::string name = txtName.Text();
  const bool isBlank = name.find_first_not_of(" \t") == std::string::npos;
  if (isBlank) return {false, messages::NameIsBlank()};
  Module1::Change change;
  if (const auto unread = change.Unread()) return {false, messages::Failed(unread)};
  const std::string game = edited_ ? edited_->game : mainWindow_->SelectedGame();
  if (const auto refusal = Put(change, game, name)) return {false, refusal};
  const auto unsaved = change.Save();
  mainWindow_->ListMods(change);
  if (unsaved) return {false, messages::Failed(unsaved)};
  return {true, IsActive(change, game, name) ? frmMain::MakeModule(change, game) : std::nullopt};
}

// Writes the mod, or returns why not.
std::optional<Message> frmNew::Put(Module1::Change& change, const std::string& game, const std::string& name) const {
  if (change.InstallFolder(game).empty()) return messages::NoGame();
  if (IsNameTaken(change, game, name, edited_ ? edited_->mod : "")) return messages::NameIsTaken();
  const std::vector<std::string> folders = lstDirs.SelectedTexts();
  if (!edited_) {
    RegisterMod(change, game, name, folders);
  } else if (!EditMod(change, game, edited_->mod, name, folders)) {
    return messages::ModIsGone(edited_->mod);
  }
  return std::nullopt;
}

void frmNew::CancelButton_Click() { window_.Close(); }
