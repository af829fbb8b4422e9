#include "installations/frmDoWSetup.h"
#include "installations/registry_lookup.h"
#include "mods/frmMain.h"
#include "platform/application.h"

// Does not refill the mod lists: that happens when the focus leaves the selector. So the selector gets the focus, and
// the next click acts on the lists of the selected game.
void frmMain::cmdGoToGames_Click() {
  window_.Disable();
  {
    frmDoWSetup setup(*this);
    setup.ShowInFrontOf(window_);
    setup.Form_Load();
    platform::WaitUntil([&setup] { return setup.DoneYet(); });
    setup.Close();
  }
  window_.Enable();
  lstGame.TakeFocus();
}

std::string frmMain::GetKeyValue(std::int32_t KeyRoot, std::string_view KeyName, std::string_view SubKeyRef) {
  return ::GetKeyValue(KeyRoot, KeyName, SubKeyRef);
}
