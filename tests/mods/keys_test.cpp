#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

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

// The available mods and the active ones, a selected one in brackets, and the control with the focus.
std::string Shown(User& user) {
  const auto list = [&](std::string_view name) {
    std::string text;
    const std::string selected = user.Selected(name);
    for (const std::string& entry : user.Entries(name)) text += entry == selected ? "[" + entry + "] " : entry + " ";
    return text;
  };
  const std::string shown = list("lstNotActive") + "| " + list("lstActive");
  return shown + "@" + (user.ShownMessage() ? "message" : user.CountWindows("frmNew") > 0 ? "frmNew" : user.Focus());
}

struct Row {
  const char* rule;
  std::function<void(User&)> acts;
  const char* shown;
};

void Try(std::span<const Row> rows) {
  for (const Row& row : rows) {
    WriteFile(SettingsFile(), TwoGames());
    Use([&](User& user) {
      row.acts(user);
      EXPECT_EQ(Shown(user), row.shown) << row.rule;
    });
  }
}

TEST_F(Keys, NoClickDoesWhatWasNotMeant) {
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
       "[Beta] Delta | Alpha Gamma @lstNotActive"},
      {"the focus goes from a button that its command has disabled to the list, and to no other button",
       [](User& user) {
         user.GoTo("cmdActivateAll");
         user.Press(Key::Space);
         user.Press(Key::Space);
       },
       "| [Alpha] Beta Gamma Delta @lstActive"},
      {"a key that is held down clicks once",
       [](User& user) {
         user.ClickEntry("lstNotActive", "Beta");
         user.GoTo("cmdDeleteMod");
         user.Hold(Key::Enter);
       },
       "[Beta] Delta | Alpha Gamma @message"},
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
  Try(rows);
}

TEST_F(Keys, AKeyActsOnTheListThatHasTheFocus) {
  const auto press = [](const char* list, const char* entry, std::initializer_list<Key> keys) {
    return [=, keys = std::vector(keys)](User& user) {
      user.ClickEntry(list, entry);
      for (const Key key : keys) user.Press(key);
    };
  };
  const Row rows[] = {
      {"Enter activates, and the next arrow goes on from there", press("lstNotActive", "Beta", {Key::Enter, Key::Down}),
       "[Delta] | Alpha Beta Gamma @lstNotActive"},
      {"Enter with nothing selected does nothing", press("lstNotActive", "Beta", {Key::Enter, Key::Enter}),
       "Delta | Alpha Beta Gamma @lstNotActive"},
      {"a double click activates", [](User& user) { user.DoubleClickEntry("lstNotActive", "Delta"); },
       "Beta | Alpha Gamma Delta @lstNotActive"},
      {"Enter deactivates", press("lstActive", "Gamma", {Key::Enter}), "Beta Gamma Delta | Alpha @lstActive"},
      {"Alt+Down moves down", press("lstActive", "Alpha", {Key::AltDown}), "Beta Delta | Gamma [Alpha] @lstActive"},
      {"Alt+Up moves up", press("lstActive", "Gamma", {Key::AltUp}), "Beta Delta | [Gamma] Alpha @lstActive"},
      {"none does what its disabled button does not",
       press("lstActive", "Gamma", {Key::Enter, Key::Up, Key::AltDown, Key::Delete}),
       "Beta Gamma Delta | [Alpha] @lstActive"},
      {"Delete asks", press("lstNotActive", "Beta", {Key::Delete}), "[Beta] Delta | Alpha Gamma @message"},
      {"Insert opens the new-mod dialog", press("lstNotActive", "Beta", {Key::Insert}),
       "[Beta] Delta | Alpha Gamma @frmNew"},
      {"the first arrow selects the first entry",
       [](User& user) {
         user.GoTo("lstActive");
         user.Press(Key::Down);
       },
       "Beta Delta | [Alpha] Gamma @lstActive"},
      {"F5 leaves the selector, and the lists follow",
       [](User& user) {
         user.Choose("lstGame", "Second");
         user.Press(Key::F5);
       },
       "Other | @lstNotActive"},
      {"F5 anywhere else reads the files anew",
       [](User& user) {
         user.GoTo("cmdNewMod");
         WriteFile(SettingsFile(), With(TwoGames(), "Name=Beta", "Name=Renamed"));
         user.Press(Key::F5);
       },
       "Renamed Delta | Alpha Gamma @cmdNewMod"},
  };
  Try(rows);
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
