#include "mods/frmMain.h"
#include "platform/busy_pointer.h"
#include "settings/Module1.h"
#include "settings/schema.h"

// Activating and deactivating mods. A mod keeps its number, and with it its place in the load order.

void frmMain::cmdActivate1_Click() const {
  SetActive(lstNotActive, "1");
  MakeModule();
}

void frmMain::cmdDeactivate1_Click() const {
  SetActive(lstActive, "0");
  MakeModule();
}

void frmMain::cmdActivateAll_Click() const { SetAllActive(lstNotActive, "1"); }

void frmMain::cmdDeactivateAll_Click() const { SetAllActive(lstActive, "0"); }

// An entry that is no longer registered changes nothing; the lists are refilled all the same.
void frmMain::SetActive(const platform::ListBox& list, std::string_view flag) const {
  const Module1::Command command;
  const std::string game = SelectedGame();
  const std::int64_t n = Module1::FindMod(game, list.Text());
  if (n != Module1::kNoMod) Module1::PutSetting(schema::ModSection(game, n), "Active", flag);
  ListMods();
}

// One mod after the other, from the top of the list, each followed by the module file. What counts for the user is
// whether the last module file was written.
void frmMain::SetAllActive(const platform::ListBox& list, std::string_view flag) const {
  ModuleFailure failure;
  {
    const platform::BusyPointer busy;
    for (int left = list.Count(); left > 0;) {
      list.Select(0);
      SetActive(list, flag);
      failure = WriteModule();
      if (list.Count() >= left) break;  // an entry that shares its name with another mod may stay for ever
      left = list.Count();
    }
  }
  ShowFailure(failure);
}
