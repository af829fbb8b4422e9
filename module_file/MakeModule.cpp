#include "mods/frmMain.h"
#include "module_file/module_file.h"
#include "module_file/module_text.h"
#include "platform/application.h"

std::optional<Message> frmMain::MakeModule(const Module1::Change& settings, const std::string& game) {
  if (ModulePath(settings, game).empty()) return messages::NoGame();
  return messages::NotMade(WriteModule(settings, game));
}

// Also rewrites the module files of all games whose mods have changed.
void frmMain::Undo(History::Way way) {
  std::optional<Message> message;
  {
    const platform::BusyPointer busy;
    Module1::Change change;
    const Module1::Settings& current = change;
    const Module1::Settings before = current;
    message = messages::Failed(way == History::Way::Undo ? change.Undo() : change.Redo());
    Refresh(change);
    for (const std::string& game : GamesWithOtherModules(before, change)) {
      const auto unmade = MakeModule(change, game);
      if (!message) message = unmade;
    }
  }
  messages::Show(way == History::Way::Undo ? "Undo" : "Redo", message);
}

std::string frmMain::GameDetails(const Module1::Settings& settings, std::string_view game) {
  const std::string file = ModulePath(settings, game);
  return file.empty() ? "" : "Folder: " + settings.GamePath(game) + "\nModule file: " + file;
}

void frmMain::CopyLaunchOption() { platform::CopyText(LaunchOption(Module1::Settings())); }
