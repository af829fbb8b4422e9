// Shows by itself what Gantrel does, on a machine without a display: says each act, does it in the real windows, takes
// pictures of them and of every message, and prints what came of it. Runs in a compatibility prefix with a game in it.
// Arguments: the game's executable, the folder for the pictures.

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "platform/code_page.h"
#include "platform/paths.h"
#include "support/own_folder.h"
#include "support/user.h"

namespace {

namespace fs = std::filesystem;
using support::Key;
using support::User;

// What is printed is UTF-8, on both systems; the tool's own text and files are in the code page.
void Print(const std::string& text) {
  const std::u8string utf8 = fs::path(platform::ToUtf16(text)).u8string();
  std::fputs(std::string(utf8.begin(), utf8.end()).c_str(), stdout);
  std::fflush(stdout);
}

fs::path BesideTheTour(const char* name) { return platform::BesideExecutable(name).text; }

fs::path Away(fs::path file) { return file += ".away"; }

class Tour {
 public:
  Tour(const User& user, fs::path game, fs::path pictures)
      : user_(user), game_(std::move(game)), pictures_(std::move(pictures)) {}

  void Go() {
    StartForTheFirstTime();
    RegisterTheGame();
    MakeMods();
    ActivateAndOrder();
    DeleteAMod();
    FailToWrite();
    KeepTheGame();
  }

 private:
  static void Say(const std::string& sentence) { Print("  " + sentence + "\n"); }

  void SayLists() {
    const auto listed = [this](const char* list) {
      std::string text;
      for (const std::string& entry : user_.Entries(list)) text += (text.empty() ? "" : ", ") + entry;
      return text.empty() ? "none" : text;
    };
    Say("    Available: " + listed("lstNotActive") + ". Activated: " + listed("lstActive") + ".");
  }

  // Takes a picture of the message that is shown, and gives the answer.
  void Answer(const char* picture, const std::string& button) {
    const auto message = user_.ShownMessage();
    if (!message) throw std::runtime_error(std::string("no message for ") + picture);
    Say("    " + message->title + ": " + message->text.substr(0, message->text.find('\n')) + " [" + button + "]");
    Picture(picture);
    user_.Answer(button);
  }

  void Picture(const char* name) { user_.SavePicture(pictures_ / (std::string(name) + ".png")); }

  void StartForTheFirstTime() {
    Say("The first start: no game is known yet, so the installation setup opens. Close it.");
    user_.CloseWindow();
    Say("Click on '+': a mod needs a game.");
    user_.Click("cmdNewMod");
    Answer("message-no-game", "OK");
  }

  void NameAGame(const char* name) {
    user_.Click("cmdnew");
    user_.Type(name);
  }

  void RegisterTheGame() {
    Say("Click on '*', then on '+', and name the game 'Sample Game'.");
    user_.Click("cmdGoToGames");
    NameAGame("Sample Game");
    Picture("game-name");
    user_.Press(Key::Enter);
    Say("Pick its W40k.exe.");
    user_.Paste(game_.filename().u16string());
    Picture("game-file");
    user_.Press(Key::Enter);
    Say("    Listed: " + user_.Entries("lstGames").back());
    Say("Click on '+' and name another one the same.");
    NameAGame("Sample Game");
    user_.Press(Key::Enter);
    Answer("message-game-name-taken", "OK");
    Picture("setup");
    Say("Click on 'OK'.");
    user_.Click("OKButton");
  }

  void MakeMods() {
    Say("Click on '+', and on 'OK' without a name.");
    user_.Click("cmdNewMod");
    user_.Click("OKButton");
    Answer("message-mod-name-empty", "OK");
    Say("Name the mod 'Better Maps', and choose two folders.");
    user_.Type("Better Maps");
    user_.ClickEntry("lstDirs", "BetterMaps");
    user_.ClickEntry("lstDirs", "BetterMaps_Sound");
    Picture("new-mod");
    user_.Click("OKButton");
    Say("Make 'Big Armies' and 'Night Sky' the same way.");
    for (const auto& [name, folder] : {std::pair("Big Armies", "BigArmies"), std::pair("Night Sky", "NightSky")}) {
      user_.Click("cmdNewMod");
      user_.Type(name);
      user_.ClickEntry("lstDirs", folder);
      user_.Click("OKButton");
    }
    Say("Try to make a second 'Night Sky'.");
    user_.Click("cmdNewMod");
    user_.Type("Night Sky");
    user_.Click("OKButton");
    Answer("message-mod-name-taken", "OK");
    user_.Click("CancelButton");
    SayLists();
  }

  void ActivateAndOrder() {
    Say("Click on 'Better Maps', then on '>'; on 'Big Armies', then on '>'.");
    for (const char* const name : {"Better Maps", "Big Armies"}) {
      user_.ClickEntry("lstNotActive", name);
      user_.Click("cmdActivate1");
    }
    SayLists();
    Say("Click on 'Better Maps', then on '\\/': it moves down, so the game looks into it earlier.");
    user_.ClickEntry("lstActive", "Better Maps");
    user_.Click("cmdMoveDown");
    SayLists();
    Picture("main-window");
  }

  void DeleteAMod() {
    Say("Click on 'Night Sky', then on 'X'.");
    user_.ClickEntry("lstNotActive", "Night Sky");
    user_.Click("cmdDeleteMod");
    Answer("message-delete-mod", "OK");
    SayLists();
  }

  void FailToWrite() {
    Say("Take the header template away; click on 'Big Armies', then on '<'.");
    const fs::path header = BesideTheTour("HEADER");
    fs::rename(header, Away(header));
    user_.ClickEntry("lstActive", "Big Armies");
    user_.Click("cmdDeactivate1");
    Answer("message-module-file", "OK");
    fs::rename(Away(header), header);
    Say("Put it back. Put a folder in the place of the settings; click on 'Big Armies', then on '>'.");
    const fs::path settings = BesideTheTour("Ulvane.ini");
    user_.ClickEntry("lstNotActive", "Big Armies");
    fs::rename(settings, Away(settings));
    fs::create_directory(settings);
    user_.Click("cmdActivate1");
    Answer("message-settings", "OK");
    Picture("settings-unread");
    fs::remove(settings);
    fs::rename(Away(settings), settings);
    Say("Put them back, and activate 'Big Armies' again.");
    user_.GoTo("lstGame");
    user_.Press(Key::Tab);
    user_.Click("cmdActivateAll");
    SayLists();
  }

  void KeepTheGame() {
    Say("Click on '*', on the game, and on 'X'; but keep it.");
    user_.Click("cmdGoToGames");
    user_.ClickEntry("lstGames", user_.Entries("lstGames").front());
    user_.Click("cmdDelete");
    Answer("message-delete-game", "No");
    user_.Click("OKButton");
  }

  User user_;
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
    support::Use([&](User& user) { Tour(user, game, pictures).Go(); });
    Show(BesideTheTour("Ulvane.ini"));
    Show(game.parent_path() / "Ulvane.module");
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "The tour broke off: %s\n", failure.what());
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
