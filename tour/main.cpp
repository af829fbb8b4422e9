// Demonstrates Gantrel on a machine without a display: announces each act, performs it in the real windows, takes
// pictures of them and of every message, and prints the results. Runs in a compatibility prefix with a game. Arguments:
// the game's executable, the picture folder.

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/code_page.h"
#include "platform/paths.h"
#include "support/own_folder.h"
#include "support/user.h"

namespace {

namespace fs = std::filesystem;
using support::Act;
using support::Answer;
using support::Click;
using support::Press;
using support::Type;

// Prints UTF-8 on both systems; the tool's text and files are in the code page.
void Print(const std::string& text) {
  const std::u8string utf8 = fs::path(platform::ToUtf16(text)).u8string();
  std::fputs(std::string(utf8.begin(), utf8.end()).c_str(), stdout);
  std::fflush(stdout);
}

fs::path BesideTheTour(const char* name) { return platform::BesideExecutable(name); }

fs::path Away(fs::path file) { return file += ".away"; }

class Tour {
 public:
  Tour(fs::path game, fs::path pictures) : game_(std::move(game)), pictures_(std::move(pictures)) {}

  std::vector<Act> Acts() {
    StartForTheFirstTime();
    RegisterTheGame();
    MakeMods();
    ActivateAndOrder();
    DeleteAMod();
    UseMenusAndKeys();
    FailToWrite();
    KeepTheGame();
    return acts_;
  }

 private:
  void Do(const std::vector<Act>& acts) { acts_.insert(acts_.end(), acts.begin(), acts.end()); }

  void Say(const std::string& sentence) {
    Do({[=] { Print("  " + sentence + "\n"); }});
  }

  void SayLists() {
    const auto listed = [](const char* list) {
      std::string text;
      for (const std::string& entry : support::Entries(list)) text += (text.empty() ? "" : ", ") + entry;
      return text.empty() ? "none" : text;
    };
    Do({[=] { Print("      Available: " + listed("lstNotActive") + ". Activated: " + listed("lstActive") + ".\n"); }});
  }

  // Prints the open message, takes its picture, and answers it.
  void Meet(const char* picture, const std::string& button) {
    const Act say = [=] {
      const auto message = support::ShownMessage();
      if (!message) throw std::runtime_error(std::string("no message for ") + picture);
      const std::string line = message->text.substr(0, message->text.find('\n'));
      Print("      " + message->title + ": " + line + " [" + button + "]\n");
    };
    Do({say, Picture(picture), Answer(button)});
  }

  Act Picture(const char* name) const { return support::SavePicture(pictures_ / (std::string(name) + ".png")); }

  void StartForTheFirstTime() {
    Say("The first start: no game is known yet, so the installation setup opens. Close it.");
    Do({support::Close()});
    Say("Click on '+': a mod needs a game.");
    Do({Click("cmdNewMod")});
    Meet("message-no-game", "OK");
  }

  void RegisterTheGame() {
    const Act name = support::InTurn({Click("cmdnew"), Type("Sample Game")});
    const Act sayListed = [] { Print("      Listed: " + support::Entries("lstGames").back() + "\n"); };
    Say("Click on '*', then on '+', and name the game 'Sample Game'.");
    Do({Click("cmdGoToGames"), name, Picture("game-name"), Press("Return")});
    Say("Pick its W40k.exe.");
    Do({support::Paste(game_.filename().u16string()), Picture("game-file"), Press("Return"), sayListed});
    Say("Click on '+' and name another one the same.");
    Do({name, Press("Return")});
    Meet("message-game-name-taken", "OK");
    Do({Picture("setup")});
    Say("Click on 'OK'.");
    Do({Click("OKButton")});
  }

  void MakeMods() {
    Say("Click on '+', and on 'OK' without a name.");
    Do({Click("cmdNewMod"), Click("OKButton")});
    Meet("message-mod-name-empty", "OK");
    Say("Name the mod 'Better Maps', and choose two folders.");
    Do({Type("Better Maps"), Click("lstDirs", "BetterMaps"), Click("lstDirs", "BetterMaps_Sound"), Picture("new-mod"),
        Click("OKButton")});
    Say("Make 'Big Armies' and 'Night Sky' the same way.");
    for (const auto& [name, folder] : {std::pair("Big Armies", "BigArmies"), std::pair("Night Sky", "NightSky")})
      Do({Click("cmdNewMod"), Type(name), Click("lstDirs", folder), Click("OKButton")});
    Say("Try to make a second 'Night Sky'.");
    Do({Click("cmdNewMod"), Type("Night Sky"), Click("OKButton")});
    Meet("message-mod-name-taken", "OK");
    Do({Click("CancelButton")});
    SayLists();
  }

  void ActivateAndOrder() {
    Say("Click on 'Better Maps', then on '>'; on 'Big Armies', then on '>'.");
    for (const char* const name : {"Better Maps", "Big Armies"})
      Do({Click("lstNotActive", name), Click("cmdActivate1")});
    SayLists();
    Say("Click on 'Better Maps', then on '\\/': it moves down, so the game looks into it earlier.");
    Do({Click("lstActive", "Better Maps"), Click("cmdMoveDown")});
    SayLists();
    Do({Picture("main-window")});
  }

  void DeleteAMod() {
    Say("Click on 'Night Sky', then on 'X'.");
    Do({Click("lstNotActive", "Night Sky"), Click("cmdDeleteMod")});
    Meet("message-delete-mod", "OK");
    SayLists();
  }

  void UseMenusAndKeys() {
    Say("Click on 'Better Maps' with the right button.");
    Do({support::RightClick("lstActive", "Better Maps"), Picture("menu"), Press("Esc")});
    Say("Press F2, and name it 'Best Maps'.");
    Do({Press("F2"), Picture("edit-mod"), Type("Best Maps"), Press("Return")});
    SayLists();
    Say("Press Ctrl+Z: that is taken back.");
    Do({Press("Ctrl+Z")});
    SayLists();
    Say("Type 'map', and press Alt+Home: it is found, and moved to the top. Press Ctrl+Z.");
    Do({support::GoTo("lstActive"), Type("map"), Picture("find"), Press("Alt+Home")});
    SayLists();
    Do({Press("Ctrl+Z")});
    Say("Click on 'Big Armies' and press F4: which mod wins?");
    Do({Click("lstActive", "Big Armies"), Press("F4")});
    Meet("message-which-mod-wins", "OK");
  }

  void FailToWrite() {
    const fs::path header = BesideTheTour("HEADER");
    const fs::path settings = BesideTheTour("Ulvane.ini");
    const auto rename = [](const fs::path& from, const fs::path& to) -> Act { return [=] { fs::rename(from, to); }; };
    Say("Take the header template away; click on 'Big Armies', then on '<'.");
    Do({rename(header, Away(header)), Click("lstActive", "Big Armies"), Click("cmdDeactivate1")});
    Meet("message-module-file", "OK");
    Say("Put it back. Put a folder in the place of the settings; click on 'Big Armies', then on '>'.");
    Do({rename(Away(header), header), Click("lstNotActive", "Big Armies"), rename(settings, Away(settings)),
        [=] { fs::create_directory(settings); }, Click("cmdActivate1")});
    Meet("message-settings", "OK");
    Do({Picture("settings-unread"), [=] { fs::remove(settings); }, rename(Away(settings), settings)});
    Say("Put them back, and activate 'Big Armies' again.");
    Do({support::GoTo("lstGame"), Press("Tab"), Click("cmdActivateAll")});
    SayLists();
  }

  void KeepTheGame() {
    Say("Click on '*', on the game, and on 'X'; but keep it.");
    const Act clickOnIt = [] { support::DoNext({Click("lstGames", support::Entries("lstGames").front())}); };
    Do({Click("cmdGoToGames"), clickOnIt, Click("cmdDelete")});
    Meet("message-delete-game", "No");
    Do({Click("OKButton")});
  }

  std::vector<Act> acts_;
  fs::path game_;
  fs::path pictures_;
};

void Show(const fs::path& file) {
  std::printf("\n%s:\n\n", file.filename().string().c_str());
  Print(support::ReadFile(file));
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 3) return EXIT_FAILURE;
  const fs::path game = arguments[1];
  const fs::path pictures = arguments[2];
  try {
    if (support::Use(Tour(game, pictures).Acts())) throw std::runtime_error("the tool has ended by itself");
    Show(BesideTheTour("Ulvane.ini"));
    Show(game.parent_path() / "Ulvane.module");
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "The tour broke off: %s\n", failure.what());
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
