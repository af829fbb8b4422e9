#include <chrono>

#include "mods/failure_message.h"
#include "mods/frmMain.h"
#include "platform/busy_pointer.h"
#include "settings/Module1.h"
#include "settings/schema.h"

// Activating and deactivating mods. A mod keeps its number, and with it its place in the load order.

void frmMain::cmdActivate1_Click() const { ShowFailure("Make Module", SetActive(lstNotActive, "1")); }

void frmMain::cmdDeactivate1_Click() const { ShowFailure("Make Module", SetActive(lstActive, "0")); }

void frmMain::cmdActivateAll_Click() const { SetAllActive(lstNotActive, "1"); }

void frmMain::cmdDeactivateAll_Click() const { SetAllActive(lstActive, "0"); }

// An entry that is no longer registered changes nothing; the lists and the module file are refreshed all the same.
std::optional<FileFailure> frmMain::SetActive(const platform::ListBox& list, std::string_view flag) const {
  const Module1::Change change;
  const std::string game = SelectedGame();
  const std::int64_t n = Module1::FindMod(game, list.Text());
  if (n != Module1::kNoMod) Module1::PutSetting(schema::ModSection(game, n), "Active", flag);
  const auto unsaved = Module1::Change::Save();
  ListMods();
  return unsaved ? unsaved : MakeModule();
}

// One mod after the other, from the top of the list, each followed by the module file. What counts for the user is
// whether the last module file was written.
void frmMain::SetAllActive(const platform::ListBox& list, std::string_view flag) const {
  using Clock = std::chrono::steady_clock;
  constexpr auto kBetweenPictures = std::chrono::milliseconds(100);
  std::optional<FileFailure> failure;
  {
    const platform::BusyPointer busy;
    auto shown = Clock::now();
    for (int left = list.Count(); left > 0;) {
      list.Select(0);
      failure = SetActive(list, flag);
      if (list.Count() >= left) break;  // an entry that shares its name with another mod may stay for ever
      left = list.Count();
      if (Clock::now() - shown < kBetweenPictures) continue;
      lstNotActive.ShowNow();
      lstActive.ShowNow();
      shown = Clock::now();
    }
  }
  ShowFailure("Make Module", failure);
}
