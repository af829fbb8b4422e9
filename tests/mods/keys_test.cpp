#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "support/user.h"
#include "tests/support/game.h"

using namespace support;

namespace {

// What the mouse and the keyboard do, and above all what they do not.
class Keys : public WithFourMods {};

const std::string& TwoGames() {
  static const std::string text = With(FourMods(), "[Games]\r\nCount=1\r\n", "[Games]\r\nCount=2\r\nDoW2=Second\r\n") +
                                  Text({"[Second]", "ModCount=1", "[Second.1]", "Name=Other"});
  return text;
}

// The available mods and the active ones, and the control with the focus.
std::string Shown(User& user) {
  std::string text;
  for (const std::string& name : user.Entries("lstNotActive")) text += name + " ";
  text += "|";
  for (const std::string& name : user.Entries("lstActive")) text += " " + name;
  return text + " @" + (user.ShownMessage() ? "message" : user.Focus());
}

TEST_F(Keys, NoClickDoesWhatWasNotMeant) {
  struct Row {
    const char* rule;
    std::function<void(User&)> acts;
    const char* shown;
  };
  const Row rows[] = {
      {"after the setup, lists that are no longer the selector's are refilled before a click on them acts",
       [](User& user) {
         user.Choose("lstGame", "Second");
         user.Click("cmdGoToGames");
         user.LookAt("frmDoWSetup");
         user.Click("OKButton");
         user.LookAt("frmMain");
         user.ClickEntry("lstNotActive", "Other");
       },
       "Beta Delta | Alpha Gamma @lstNotActive"},
      {"the focus goes from a button that its command has disabled to the list, and to no other button",
       [](User& user) {
         user.GoTo("cmdActivateAll");
         user.Press(Key::Space);
         user.Press(Key::Space);
       },
       "| Alpha Beta Gamma Delta @lstActive"},
      {"a key that is held down clicks once",
       [](User& user) {
         user.ClickEntry("lstNotActive", "Beta");
         user.GoTo("cmdDeleteMod");
         user.Hold(Key::Enter);
       },
       "Beta Delta | Alpha Gamma @message"},
      {"a wheel that is turned over the selector chooses nothing",
       [](User& user) {
         user.ClickEntry("lstActive", "Gamma");
         user.TurnWheel("lstGame");
         user.Click("cmdDeactivate1");
       },
       "Beta Gamma Delta | Alpha @cmdDeactivate1"},
      {"what is clicked while a command runs is dropped",
       [](User& user) { user.ClickWhile("cmdActivateAll", "lstActive", "cmdDeactivateAll"); },
       "| Alpha Beta Gamma Delta @lstActive"},
  };
  for (const Row& row : rows) {
    WriteFile(SettingsFile(), TwoGames());
    Use([&](User& user) {
      row.acts(user);
      EXPECT_EQ(Shown(user), row.shown) << row.rule;
    });
  }
}

TEST_F(Keys, ACharacterThatTheCodePageLacksDoesNotGetIntoAName) {
  Use([](User& user) {
    user.Click("cmdNewMod");
    user.LookAt("frmNew");
    user.Paste(u"\u00C4\u65E5\U0001F600\u20AC");
    EXPECT_EQ(user.TextOfFocus(), "\xC4\x80");
    user.Press(Key::Escape);
    user.LookAt("frmMain");
    user.Click("cmdGoToGames");
    user.LookAt("frmDoWSetup");
    user.Click("cmdnew");
    user.Paste(u"a\u65E5");
    EXPECT_EQ(user.TextOfFocus(), "a");
  });
}

}  // namespace
