#include "mods/frmMain.h"

#include "mods/failure_message.h"
#include "mods/frmNew.h"
#include "platform/events.h"
#include "platform/files.h"
#include "settings/Module1.h"
#include "settings/schema.h"

using Module1::GetNumber;
using Module1::GetSetting;

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
  lstGame.OnToolTip([this] {
    const std::string file = ModuleFile();
    return file.empty() ? "" : "Folder: " + GetBPath() + "\nModule file: " + file;
  });
  lstNotActive.OnToolTip([this](int position) { return DataFolders(lstNotActive.Text(position)); });
  lstActive.OnToolTip([this](int position) { return DataFolders(lstActive.Text(position)); });
  cmdActivate1.OnClick([this] { cmdActivate1_Click(); });
  cmdDeactivate1.OnClick([this] { cmdDeactivate1_Click(); });
  cmdActivateAll.OnClick([this] { cmdActivateAll_Click(); });
  cmdDeactivateAll.OnClick([this] { cmdDeactivateAll_Click(); });
  cmdMoveUp.OnClick([this] { cmdMoveUp_Click(); });
  cmdMoveDown.OnClick([this] { cmdMoveDown_Click(); });
  cmdNewMod.OnClick([this] { cmdNewMod_Click(); });
  cmdDeleteMod.OnClick([this] { cmdDeleteMod_Click(); });
  cmdGoToGames.OnClick([this] { cmdGoToGames_Click(); });
}

frmMain::~frmMain() = default;

void frmMain::Form_Load() const {
  bool isFirstStart = false;
  {
    const Module1::Reading reading;
    if (const auto unread = Module1::Unread()) return ShowFailure("Gantrel", unread);
    isFirstStart = GetSetting("Games", "Count", "-1") == "-1";
  }
  if (isFirstStart) cmdGoToGames_Click();
  const Module1::Reading reading;
  RefreshGames();
  if (!GetBPath().empty()) ListMods();
  ShowFailure("Gantrel", Module1::Unread());
}

void frmMain::Show() const { window_.Show(); }

void frmMain::RefreshGames() const {
  const Module1::Reading reading;
  lstGame.Clear();
  platform::DoEvents();
  const std::int64_t count = Module1::GameCount();
  if (count == Module1::kNoGameCount) return;
  for (std::int64_t i = 1; i <= count; ++i) lstGame.Add(Module1::GameName(i));
  platform::DoEvents();
  if (lstGame.Count() > 0) lstGame.Select(0);
}

std::string frmMain::SelectedGame() const { return lstGame.Text(); }

std::string frmMain::GetBPath() const {
  const Module1::Reading reading;
  const std::int64_t count = Module1::GameCount();
  if (count == Module1::kNoGameCount) return "";
  const std::string game = SelectedGame();
  for (std::int64_t i = 1; i <= count; ++i) {
    if (Module1::GameName(i) == game) return Module1::GamePath(game);
  }
  platform::DoEvents();
  return "";
}

// A mod's data folders, a line each; nothing for one that is not registered.
std::string frmMain::DataFolders(const std::string& mod) const {
  const Module1::Reading reading;
  const std::string game = SelectedGame();
  const std::int64_t n = Module1::FindMod(game, mod);
  if (n == Module1::kNoMod) return "";
  const std::string section = schema::ModSection(game, n);
  const std::int64_t count = Module1::DirCount(section);
  if (count <= 0) return "No data folders";
  const std::string base = DataFolderBase() + "\\";
  std::string lines = "Data folders:";
  for (std::int64_t k = 1; k <= count; ++k) {
    const std::string folder = GetSetting(section, schema::DirKey(k), "");
    lines.append("\n").append(folder);
    if (platform::IsMissingFolder(base + folder)) lines += " (missing)";
  }
  return lines;
}

void frmMain::lstGame_Validate() const { ListMods(); }

std::optional<FileFailure> frmMain::ListMods() const {
  const Module1::Reading reading;
  auto unread = Module1::Unread();
  lstNotActive.SetEmptyText(unread ? unread->Sentence() : "");
  const std::string game = SelectedGame();
  const std::int64_t count = Module1::ModCount(game);
  std::vector<std::string> active;
  std::vector<std::string> notActive;
  for (std::int64_t n = 1; n <= count; ++n) {
    const std::string section = schema::ModSection(game, n);
    const bool isActive = GetNumber(section, "Active", 0) != 0;
    (isActive ? active : notActive).push_back(GetSetting(section, "Name", "Unknown"));
  }
  lstActive.Fill(active);
  lstNotActive.Fill(notActive);

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
  return unread;
}
