#include "mods/frmMain.h"
#include "mods/mod_section.h"
#include "settings/Module1.h"
#include "settings/schema.h"

// A mod's number is its place in the load order. Moving a mod exchanges its number with that of the next active mod;
// available mods between the two keep theirs.

namespace {

// In the middle of it a mod is in the scratch section alone; no reader may ever see that.
void ExchangeMods(std::string_view game, std::int64_t moved, std::int64_t neighbour) {
  const Module1::WholeChange change;
  CopyMod(game, moved, schema::kScratchMod);
  CopyMod(game, neighbour, moved);
  CopyMod(game, schema::kScratchMod, neighbour);
}

}  // namespace

void frmMain::cmdMoveUp_Click() const { MoveSelected(Direction::Up); }

void frmMain::cmdMoveDown_Click() const { MoveSelected(Direction::Down); }

void frmMain::MoveSelected(Direction direction) const {
  const int position = lstActive.Selected();
  const int newPosition = direction == Direction::Up ? position - 1 : position + 1;
  if (newPosition < 0 || newPosition >= lstActive.Count()) return;

  const std::string game = SelectedGame();
  const std::int64_t moved = Module1::FindMod(game, lstActive.Text(position));
  const std::int64_t neighbour = Module1::FindMod(game, lstActive.Text(newPosition));
  if (moved == Module1::kNoMod || neighbour == Module1::kNoMod) return;

  ExchangeMods(game, moved, neighbour);
  ListMods();
  lstActive.Select(newPosition);
  MakeModule();
}
