#include "mods/failure_message.h"
#include "mods/frmMain.h"
#include "mods/mod_section.h"
#include "settings/Module1.h"
#include "settings/schema.h"

// A mod's number is its place in the load order. Moving a mod exchanges its number with that of the next active mod;
// available mods between the two keep theirs.

namespace {

void ExchangeMods(std::string_view game, std::int64_t moved, std::int64_t neighbour) {
  CopyMod(game, moved, schema::kScratchMod);
  CopyMod(game, neighbour, moved);
  CopyMod(game, schema::kScratchMod, neighbour);
}

}  // namespace

void frmMain::cmdMoveUp_Click() const { MoveSelected(-1); }

void frmMain::cmdMoveDown_Click() const { MoveSelected(+1); }

void frmMain::MoveSelected(int by) const {
  const int position = lstActive.Selected();
  const int newPosition = position + by;
  if (newPosition < 0 || newPosition >= lstActive.Count()) return;
  ShowFailure("Make Module", Move(position, newPosition));
}

std::optional<FileFailure> frmMain::Move(int position, int newPosition) const {
  const Module1::Change change;
  const std::string game = SelectedGame();
  const std::int64_t moved = Module1::FindMod(game, lstActive.Text(position));
  const std::int64_t neighbour = Module1::FindMod(game, lstActive.Text(newPosition));
  if (moved == Module1::kNoMod || neighbour == Module1::kNoMod) return Module1::Unread();

  ExchangeMods(game, moved, neighbour);
  const auto unsaved = Module1::Change::Save();
  ListMods();
  lstActive.Select(unsaved ? position : newPosition);
  return unsaved ? unsaved : MakeModule();
}
