#include "installations/frmDoWSetup.h"
#include "installations/registry_lookup.h"
#include "mods/frmMain.h"
#include "platform/application.h"

// The mod lists are not refilled here: they follow the selector when the focus leaves it. So that is where the focus is
// afterwards, and the next click finds the lists of the game that it acts on.
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
