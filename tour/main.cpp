// Shows by itself what Gantrel does, on a machine without a display: says each act, does it in the real windows, takes
// pictures of them, and prints the module file. Arguments: the game's folder, the folder for the pictures.

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>

#include "tests/support/own_folder.h"
#include "tests/support/user.h"

namespace {

namespace fs = std::filesystem;
using support::User;

void Say(const std::string& sentence) {
  std::printf("  %s\n", sentence.c_str());
  std::fflush(stdout);
}

std::string Listed(User& user, const char* list) {
  std::string text;
  for (const std::string& entry : user.Entries(list)) text += (text.empty() ? "" : ", ") + entry;
  return text.empty() ? "none" : text;
}

void SayLists(User& user) {
  Say("    Available: " + Listed(user, "lstNotActive") + ". Activated: " + Listed(user, "lstActive") + ".");
}

void DoTheMainJob(User& user, const fs::path& pictures) {
  Say("Gantrel is open, with the game '" + user.Selected("lstGame") + "'.");
  SayLists(user);
  Say("Click on 'Big Armies', then on '>': it is activated.");
  user.ClickEntry("lstNotActive", "Big Armies");
  user.Click("cmdActivate1");
  SayLists(user);
  Say("Click on 'Better Maps', then on '\\/': it moves down, so the game looks into it earlier.");
  user.ClickEntry("lstActive", "Better Maps");
  user.Click("cmdMoveDown");
  SayLists(user);
  user.SavePicture(pictures / "main-window.png");
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 3) return EXIT_FAILURE;
  const fs::path game = arguments[1];
  const fs::path pictures = arguments[2];
  try {
    support::Use([&](User& user) { DoTheMainJob(user, pictures); });
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "The tour broke off: %s\n", failure.what());
    return EXIT_FAILURE;
  }
  std::printf("\nThe module file, %s:\n\n%s\nPictures of the windows are in %s.\n", (game / "Ulvane.module").c_str(),
              support::ReadFile(game / "Ulvane.module").c_str(), pictures.c_str());
  return EXIT_SUCCESS;
}
