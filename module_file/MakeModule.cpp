#include "mods/frmMain.h"
#include "module_file/module_file.h"
#include "module_file/module_text.h"

std::optional<Message> frmMain::MakeModule(const Module1::Change& settings) const {
  const std::string game = SelectedGame();
  if (ModulePath(settings, game).empty()) return messages::NoGame();
  return messages::NotMade(WriteModule(settings, game));
}

std::string frmMain::GameDetails(const Module1::Settings& settings, std::string_view game) {
  const std::string file = ModulePath(settings, game);
  return file.empty() ? "" : "Folder: " + settings.GamePath(game) + "\nModule file: " + file;
}

void frmMain::CopyLaunchOption() { platform::CopyText(LaunchOption(Module1::Settings())); }
