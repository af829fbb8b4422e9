#include <gtest/gtest.h>

#include <initializer_list>
#include <span>
#include <string>
#include <vector>

#include "support/user.h"
#include "tests/support/game.h"

using namespace support;

namespace {

// What the mouse and the keyboard do, and above all what they do not: in the end the lists show `lists`, and the focus
// is there.
struct Pressed {
  const char* rule;
  std::vector<Act> acts;
  const char* lists;
  const char* focus;
};

void Try(std::span<const Pressed> rows) {
  for (const Pressed& row : rows) {
    SCOPED_TRACE(row.rule);
    ResetWithFourMods();
    WriteFile(SettingsFile(), TwoGames());
    Use([&](User& user) {
      for (const Act& act : row.acts) act(user);
      EXPECT_EQ(Shown(user, "lstNotActive") + " | " + Shown(user, "lstActive"), row.lists);
      EXPECT_EQ(user.ShownMessage() ? "message" : user.Focus(), row.focus);
    });
  }
}

TEST(Keys, NoClickDoesWhatWasNotMeant) {
  const Pressed rows[] = {
      {"after the setup, lists that are no longer the selector's are refilled before a click on them acts",
       {kChooseSecond, Click("cmdGoToGames"), Click("OKButton"), Select("lstNotActive", "Other")},
       "[Beta], Delta | Alpha, Gamma",
       "lstNotActive"},
      {"the focus goes from a button that its command has disabled to the list, and to no other button",
       {GoTo("cmdActivateAll"), Press(Key::Space), Press(Key::Space)},
       "() | [Alpha], Beta, Gamma, Delta",
       "lstActive"},
      {"a key that is held down clicks once",
       {Select("lstNotActive", "Beta"), GoTo("cmdDeleteMod"), [](User& user) { user.Hold(Key::Enter); }},
       "[Beta], Delta | Alpha, Gamma",
       "message"},
      {"a wheel that is turned over the selector chooses nothing",
       {Select("lstActive", "Gamma"), [](User& user) { user.TurnWheel("lstGame"); }, Click("cmdDeactivate1")},
       "Beta, Gamma, Delta | Alpha",
       "cmdDeactivate1"},
      {"what is clicked while a command runs is dropped",
       {[](User& user) { user.ClickWhile("cmdActivateAll", "lstActive", "cmdDeactivateAll"); }},
       "() | Alpha, Beta, Gamma, Delta",
       "lstActive"},
  };
  Try(rows);
}

TEST(Keys, AKeyActsOnTheListThatHasTheFocus) {
  const auto press = [](const char* list, const char* entry, std::initializer_list<Key> keys) {
    std::vector<Act> acts = {Select(list, entry)};
    for (const Key key : keys) acts.push_back(Press(key));
    return acts;
  };
  const Pressed rows[] = {
      {"Enter activates, and the next arrow goes on from there", press("lstNotActive", "Beta", {Key::Enter, Key::Down}),
       "[Delta] | Alpha, Beta, Gamma", "lstNotActive"},
      {"Enter with nothing selected does nothing", press("lstNotActive", "Beta", {Key::Enter, Key::Enter}),
       "Delta | Alpha, Beta, Gamma", "lstNotActive"},
      {"none does what its disabled button does not",
       press("lstActive", "Gamma", {Key::Enter, Key::Up, Key::AltDown, Key::Delete}), "Beta, Gamma, Delta | [Alpha]",
       "lstActive"},
      {"the first arrow selects the first entry",
       {GoTo("lstActive"), Press(Key::Down)},
       "Beta, Delta | [Alpha], Gamma",
       "lstActive"},
      {"F5 leaves the selector, and the lists follow", {kChooseSecond, Press(Key::F5)}, "Other | ()", "lstNotActive"},
      {"F5 anywhere else reads the files anew",
       {GoTo("cmdNewMod"), Write(With(TwoGames(), "Name=Beta", "Name=Renamed")), Press(Key::F5)},
       "Renamed, Delta | Alpha, Gamma",
       "cmdNewMod"},
  };
  Try(rows);
}

}  // namespace
