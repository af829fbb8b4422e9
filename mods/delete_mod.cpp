#include "mods/failure_message.h"
#include "mods/frmMain.h"
#include "mods/mod_section.h"
#include "platform/busy_pointer.h"
#include "platform/dialogs.h"
#include "settings/Module1.h"

// Deleting an available mod. The later mods move down by one number, so the order of the others stays as it is.

namespace {

void DeleteMod(const std::string& game, const std::string& name) {
  const std::int64_t count = Module1::ModCount(game);
  const std::int64_t deleted = Module1::FindMod(game, name);
  if (deleted == Module1::kNoMod) return;  // another program took it away while the user was asked
  for (std::int64_t n = deleted + 1; n <= count; ++n) CopyMod(game, n, n - 1);
  Module1::PutNumber(game, "ModCount", count - 1);
}

}  // namespace

void frmMain::cmdDeleteMod_Click() const {
  const std::string name = lstNotActive.Text();
  const std::string game = SelectedGame();
  {
    const Module1::Reading reading;
    if (Module1::FindMod(game, name) == Module1::kNoMod) return ShowFailure("Delete Mod", ListMods());
  }
  const auto answer = platform::MsgBox("Really delete '" + name + "'?", platform::Buttons::OkCancel,
                                       platform::Icon::None, "Delete Mod");
  if (answer == platform::Answer::Cancel) return;
  std::optional<FileFailure> unsaved;
  {
    const platform::BusyPointer busy;
    const Module1::Change change;
    DeleteMod(game, name);
    unsaved = Module1::Change::Save();
    ListMods();
  }
  ShowFailure("Delete Mod", unsaved);
}
