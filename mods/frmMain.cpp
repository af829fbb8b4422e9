#include "mods/frmMain.h"

#include <chrono>

#include "mods/frmNew.h"
#include "mods/mod_list.h"
#include "mods/which_mod_wins.h"
#include "platform/application.h"

using Module1::Change;
using Module1::Settings;

frmMain::frmMain()
    : window_("frmMain"),
      lstGame(window_.DropDownList("lstGame")),
      lstNotActive(window_.ListBox("lstNotActive")),
      lstActive(window_.ListBox("lstActive")),
      cmdActivate1(window_.Button("cmdActivate1")),
      cmdDeactivate1(window_.Button("cmdDeactivate1")),
      cmdActivateAll(window_.Button("cmdActivateAll")),
      cmdDeactivateAll(window_.Button("cmdDeactivateAll")),
      cmdMoveUp(window_.Button("cmdMoveUp")),
      cmdMoveDown(window_.Button("cmdMoveDown")),
      cmdNewMod(window_.Button("cmdNewMod")),
      cmdDeleteMod(window_.Button("cmdDeleteMod")),
      cmdGoToGames(window_.Button("cmdGoToGames")) {
  lstGame.OnValidate([this] { lstGame_Validate(); });
  lstGame.OnToolTip([this] { return GameDetails(Settings(), SelectedGame()); });
  lstNotActive.OnToolTip([this](int position) { return ModToolTip(lstNotActive.Text(position)); });
  lstActive.OnToolTip([this](int position) { return ModToolTip(lstActive.Text(position)); });
  cmdActivate1.OnClick([this] { cmdActivate1_Click(); });
  cmdDeactivate1.OnClick([this] { cmdDeactivate1_Click(); });
  cmdActivateAll.OnClick([this] { cmdActivateAll_Click(); });
  cmdDeactivateAll.OnClick([this] { cmdDeactivateAll_Click(); });
  cmdMoveUp.OnClick([this] { cmdMoveUp_Click(); });
  cmdMoveDown.OnClick([this] { cmdMoveDown_Click(); });
  cmdNewMod.OnClick([this] { cmdNewMod_Click(); });
  cmdDeleteMod.OnClick([this] { cmdDeleteMod_Click(); });
  cmdGoToGames.OnClick([this] { cmdGoToGames_Click(); });
  lstActive.OnMove([this](int from, int to) { MoveMod(from, to); });

  window_.OnCommand("Move to Top", [this] { MoveMod(lstActive.Selected(), 0); });
  window_.OnCommand("Move to Bottom", [this] { MoveMod(lstActive.Selected(), lstActive.Count() - 1); });
  window_.OnCommand("Edit...", [this] { EditMod(); });
  window_.OnCommand("Details", [this] { window_.ShowDetails(); });
  window_.OnCommand("Which Mod Wins...", [this] { ShowWhichModWins(); });
  window_.OnCommand("Open Game Folder", [this] { OpenGameFolder(); });
  window_.OnCommand("Copy Launch Option", CopyLaunchOption);
  window_.OnCommand("Undo", [this] { Undo(History::Way::Undo); });
  window_.OnCommand("Redo", [this] { Undo(History::Way::Redo); });
  window_.OnCommand("Refresh", [this] { Refresh(Settings()); });

  const auto canMove = [this] { return lstActive.Count() > 1; };
  const auto hasGame = [this] { return !GetBPath().empty(); };
  window_.OnIsAvailable("Move to Top", canMove);
  window_.OnIsAvailable("Move to Bottom", canMove);
  window_.OnIsAvailable("Open Game Folder", hasGame);
  window_.OnIsAvailable("Copy Launch Option", hasGame);
  window_.OnIsAvailable("Undo", Module1::CanUndo);
  window_.OnIsAvailable("Redo", Module1::CanRedo);
}

frmMain::~frmMain() = default;

// Unreadable settings do not count as a first start.
void frmMain::Form_Load() {
  bool isFirstStart = false;
  std::optional<FileFailure> unread;
  {
    const Settings settings;
    unread = settings.Unread();
    isFirstStart = !unread && settings.GetSetting("Games", "Count", "-1") == "-1";
  }
  if (isFirstStart) cmdGoToGames_Click();
  {
    const Settings settings;
    RefreshGames(settings);
    if (!unread) unread = settings.Unread();
    if (unread || !settings.InstallFolder(SelectedGame()).empty()) ListMods(settings);
  }
  messages::Show("Gantrel", messages::Failed(unread));
}

void frmMain::Show() const { window_.Show(); }

void frmMain::RefreshGames() { RefreshGames(Settings()); }

void frmMain::RefreshGames(const Settings& settings) {
  lstGame.Clear();
  platform::DoEvents();
  const std::int64_t count = settings.GameCount();
  if (count == Module1::kNoGameCount) return;
  for (std::int64_t i = 1; i <= count; ++i) lstGame.Add(settings.GameName(i));
  platform::DoEvents();
  if (lstGame.Count() > 0) lstGame.Select(0);
}

std::string frmMain::SelectedGame() const { return lstGame.Text(); }

std::string frmMain::GetBPath() const {
  std::string folder = Settings().InstallFolder(SelectedGame());
  if (folder.empty()) platform::DoEvents();
  return folder;
}

// The selected game stays selected if it is still registered.
void frmMain::Refresh(const Settings& settings) {
  const std::string game = SelectedGame();
  if (!settings.Unread()) RefreshGames(settings);
  if (const auto n = settings.FindGame(game)) lstGame.Select(static_cast<int>(*n) - 1);
  ListMods(settings);
}

void frmMain::lstGame_Validate() { ListMods(); }

void frmMain::ListMods() { ListMods(Settings()); }

void frmMain::ListMods(const Settings& settings) {
  Batch batch;
  ListMods(settings, batch);
}

void frmMain::ListMods(const Settings& settings, Batch& batch) {
  const auto unread = settings.Unread();
  lstNotActive.SetEmptyText(unread ? unread->Sentence() : "");
  listedGame_ = SelectedGame();
  if (!batch.folders) batch.folders.emplace(DataFolderBase(settings.InstallFolder(listedGame_)));
  const ModLists lists =
      ::ListMods(settings, listedGame_, [&](std::string_view folder) { return batch.folders->IsMissing(folder); });
  lstActive.Fill(lists.active.names);
  lstActive.SetMarks(lists.active.lacksFolder);
  lstNotActive.Fill(lists.available.names);
  lstNotActive.SetMarks(lists.available.lacksFolder);

  const bool someAvailable = lstNotActive.Count() > 0;
  cmdDeleteMod.SetEnabled(someAvailable);
  cmdActivate1.SetEnabled(someAvailable);
  cmdActivateAll.SetEnabled(someAvailable);

  const bool someActive = lstActive.Count() > 0;
  const bool severalActive = lstActive.Count() > 1;
  cmdMoveUp.SetEnabled(severalActive);
  cmdMoveDown.SetEnabled(severalActive);
  cmdDeactivate1.SetEnabled(someActive);
  cmdDeactivateAll.SetEnabled(someActive);
}

// A mod's data folders, one per line; empty if it is not registered, or while the lists show another game.
std::string frmMain::ModToolTip(const std::string& mod) const {
  if (listedGame_ != SelectedGame()) return "";
  const Settings settings;
  const auto folders = DataFolders(settings, listedGame_, mod);
  if (!folders) return "";
  if (folders->empty()) return "No data folders";
  const platform::FoldersBelow present(DataFolderBase(settings.InstallFolder(listedGame_)));
  std::string lines = "Data folders:";
  for (const std::string& folder : *folders) lines += "\n" + folder + (present.IsMissing(folder) ? " (missing)" : "");
  return lines;
}

void frmMain::cmdActivate1_Click() {
  Batch batch;
  messages::Show("Make Module", SetActive(lstNotActive, true, batch).message);
}

void frmMain::cmdDeactivate1_Click() {
  Batch batch;
  messages::Show("Make Module", SetActive(lstActive, false, batch).message);
}

void frmMain::cmdActivateAll_Click() { SetAllActive(lstNotActive, true); }

void frmMain::cmdDeactivateAll_Click() { SetAllActive(lstActive, false); }

// If the mod is no longer registered, still refreshes the lists and the module file.
Outcome frmMain::SetActive(const platform::ListBox& list, bool isActive, Batch& batch) {
  Change change;
  ::SetActive(change, SelectedGame(), list.Text(), isActive);
  const auto unsaved = change.Save(batch.step);
  ListMods(change, batch);
  return {!unsaved, unsaved ? messages::Failed(unsaved) : MakeModule(change)};
}

// One mod at a time from the top of the list, each followed by the module file. An entry that shares its name with
// another mod may stay in its list and is skipped. Only the last module file's failure is reported.
void frmMain::SetAllActive(const platform::ListBox& list, bool isActive) {
  constexpr auto kBetweenPictures = std::chrono::milliseconds(100);
  Outcome outcome;
  {
    const platform::BusyPointer busy;
    const int all = list.Count();
    int done = 0;
    int stayed = 0;
    Batch batch;
    auto shown = std::chrono::steady_clock::now();
    while (outcome.isSaved && stayed < list.Count()) {
      const int left = list.Count();
      list.Select(stayed);
      outcome = SetActive(list, isActive, batch);
      if (!outcome.isSaved && done > 0) outcome.message->outcome = messages::HowFar(done, all, isActive);
      ++(list.Count() < left ? done : stayed);
      if (std::chrono::steady_clock::now() - shown < kBetweenPictures) continue;
      lstNotActive.Repaint();
      lstActive.Repaint();
      shown = std::chrono::steady_clock::now();
    }
  }
  messages::Show("Make Module", outcome.message);
}

void frmMain::cmdMoveUp_Click() { MoveSelected(-1); }

void frmMain::cmdMoveDown_Click() { MoveSelected(+1); }

void frmMain::MoveSelected(int by) { MoveMod(lstActive.Selected(), lstActive.Selected() + by); }

void frmMain::MoveMod(int from, int to) {
  if (from == platform::kNoSelection || from == to || to < 0 || to >= lstActive.Count()) return;
  messages::Show("Make Module", Move(from, to));
}

std::optional<Message> frmMain::Move(int from, int to) {
  std::vector<std::string> passed;
  const int step = to > from ? 1 : -1;
  for (int i = from; i != to; i += step) passed.push_back(lstActive.Text(i + step));
  Change change;
  if (const auto unread = change.Unread()) return messages::Failed(unread);
  if (!::MoveMod(change, SelectedGame(), lstActive.Text(from), passed)) return std::nullopt;
  const auto unsaved = change.Save();
  ListMods(change);
  lstActive.Select(unsaved ? from : to);
  return unsaved ? messages::Failed(unsaved) : MakeModule(change);
}

void frmMain::cmdDeleteMod_Click() {
  const std::string name = lstNotActive.Text();
  bool isThere = false;
  std::optional<FileFailure> unread;
  {
    const Settings settings;
    isThere = settings.FindMod(SelectedGame(), name) != Module1::kNoMod;
    if (!isThere) ListMods(settings);
    unread = settings.Unread();
  }
  if (!isThere) return messages::Show("Delete Mod", messages::Failed(unread));
  const auto answer = platform::MsgBox("Really delete '" + name + "'?", platform::Buttons::OkCancel,
                                       platform::Icon::None, "Delete Mod");
  if (answer == platform::Answer::Cancel) return;
  messages::Show("Delete Mod", DeleteMod(name));
}

std::optional<Message> frmMain::DeleteMod(const std::string& name) {
  const platform::BusyPointer busy;
  Change change;
  ::DeleteMod(change, SelectedGame(), name);
  const auto unsaved = change.Save();
  ListMods(change);
  return messages::Failed(unsaved);
}

void frmMain::cmdNewMod_Click() { OpenDialog("New Mod", std::nullopt); }

const platform::ListBox& frmMain::FocusedList() const { return lstActive.HasFocus() ? lstActive : lstNotActive; }

void frmMain::EditMod() { OpenDialog("Edit Mod", FocusedList().Text()); }

void frmMain::OpenDialog(const std::string& title, const std::optional<std::string>& edited) {
  const std::string folder = DataFolderBase(GetBPath());
  const Settings settings;
  if (const auto unread = settings.Unread()) return messages::Show(title, messages::Failed(unread));
  if (folder.empty()) return messages::Show(title, messages::NoGame());
  const auto dialog = newMods_.emplace(newMods_.end(), *this, folder);
  if (edited && !dialog->Edit(settings, *edited)) {
    newMods_.erase(dialog);
    ListMods(settings);
    return messages::Show(title, messages::ModIsGone(*edited));
  }
  dialog->OnClosed([this, dialog] { newMods_.erase(dialog); });
  dialog->Show();
}

void frmMain::ShowWhichModWins() {
  const std::string mod = lstActive.Text();
  Message message = messages::ModIsGone(mod);
  {
    const platform::BusyPointer busy;
    const Settings settings;
    const auto text = WhichModWins(settings, SelectedGame(), mod);
    if (text) message = {.text = *text, .icon = platform::Icon::Information};
    if (!text) ListMods(settings);
  }
  messages::Show("Which Mod Wins", message);
}

void frmMain::OpenGameFolder() const {
  const std::string folder = GetBPath();
  if (!platform::OpenFolder(folder)) messages::Show("Open Game Folder", messages::NotOpened(folder));
}
