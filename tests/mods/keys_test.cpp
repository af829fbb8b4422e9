#include "tests/support/game.h"

using namespace support;

// What the mouse and the keyboard do, and above all what they do not; of two games.
TEST(Keys, NoClickDoesWhatWasNotMeant) {
  Try(TwoGames(), "after the setup, lists that are no longer the selector's are refilled before a click on them acts",
      {kChooseSecond, Click("cmdGoToGames"), Click("OKButton"), Focused("lstGame"), Click("lstNotActive", "Other")},
      "[Beta], Delta | Alpha, Gamma");
  Try(TwoGames(), "the focus goes from a button that its command has disabled to the list, and to no other button",
      {GoTo("cmdActivateAll"), Press("Space"), Press("Space"), Focused("lstActive")},
      "() | [Alpha], Beta, Gamma, Delta");
  Try(TwoGames(), "also after the last mod was deleted",
      {kChooseSecond, Press("Tab"), Click("lstNotActive", "Other"), Click("cmdDeleteMod"), Answer("OK"), Press("Down"),
       Focused("lstNotActive")},
      "() | ()");
  Try(TwoGames(), "a key that is held down clicks once",
      {Click("lstNotActive", "Beta"), GoTo("cmdDeleteMod"), Press("Return"), Repeat("Return"), Close()},
      "[Beta], Delta | Alpha, Gamma");
  Try(TwoGames(), "also where its window was closed meanwhile",
      {GoTo("lstActive"), Press("Ins"), Press("Esc"), Repeat("Ins")}, kFourShown);
  Try(TwoGames(), "nor does one that was pressed before the question was asked",
      {Click("lstNotActive", "Beta"), Together(Soon(Soon(Press("Return"))), Click("cmdDeleteMod")), Answer("Cancel")},
      "[Beta], Delta | Alpha, Gamma");
  Try(TwoGames(), "nor does a screen reader behind a message",
      {Click("cmdNewMod"), Click("OKButton"), Perform("Press", "CancelButton"), Perform("Increase", "lstGame"),
       Answer("OK"), Click("CancelButton"), Shows("lstGame", "[Dawn of War], Second")},
      kFourShown);
  Try(TwoGames(), "a wheel that is turned over the selector chooses nothing",
      {TurnWheel("lstGame"), Shows("lstGame", "[Dawn of War], Second"), GoTo("lstActive"), TurnWheel("lstGame"),
       Focused("lstActive")},
      kFourShown);
  Try(TwoGames(), "a button that a screen reader presses acts on what it has selected, from the start",
      {Select("lstNotActive", "Beta"), Perform("Press", "cmdActivate1")}, "Delta | Alpha, Beta, Gamma");
  Try(TwoGames(), "what is clicked while a command runs is dropped",
      {Watch("lstActive", Soon(Together(Close(), Click("cmdDeactivateAll"))), Click("cmdActivateAll")),
       Focused("lstActive")},
      "() | Alpha, Beta, Gamma, Delta");
}

TEST(Keys, AKeyActsOnTheListThatHasTheFocus) {
  const auto fifty = [](const char* name) { return Settings(50, std::vector<Mod>(50, {name, "0"})); };
  const auto isAtTop = [](bool expected) -> Act { return [=] { EXPECT_EQ(IsAtTop("lstNotActive"), expected); }; };
  const std::string changed = With(With(TwoGames(), "Name=Other", "Name=Renamed"), "DoW1=Dawn of War", "DoW1=New");
  Try(TwoGames(), "where one is taken from the middle of a list, the next arrow goes on",
      {Click("cmdActivateAll"), Click("lstActive", "Gamma"), Press("Return"), Press("Down")},
      "Gamma | Alpha, Beta, [Delta]");
  Try(TwoGames(), "none does what its disabled button does not",
      {Click("lstActive", "Gamma"), Press("Return"), Press("Up"), Press("Alt+Down"), Press("Del"),
       Focused("lstActive")},
      "Beta, Gamma, Delta | [Alpha]");
  Try(TwoGames(), "a key that moves moves again while it is held down",
      {Click("cmdActivateAll"), Click("lstActive", "Alpha"), Press("Alt+Down"), Repeat("Alt+Down")},
      "() | Beta, Gamma, [Alpha], Delta");
  Try(TwoGames(), "the first arrow selects the first entry", {GoTo("lstActive"), Press("Down")},
      "Beta, Delta | [Alpha], Gamma");
  Try(TwoGames(), "and so does a key that clicks", {kChooseSecond, Press("Ins"), Press("Esc")}, "Other | ()");
  Try(TwoGames(), "a screen reader chooses another entry with the focus",
      {GoTo("lstActive"), Perform("Decrease", "lstGame"), Perform("Increase", "lstGame"), Press("Tab")}, "Other | ()");
  Try(TwoGames(), "and opens the list of entries",
      {kChooseSecond, Perform("Decrease", "lstGame"), Perform("ShowMenu", "lstGame"), Press("Down"), Press("Esc"),
       Press("Tab")},
      kFourShown);
  Try(TwoGames(), "typing finds a mod, and Enter acts on it", {GoTo("lstNotActive"), Type("ELT"), Press("Return")},
      "Beta | Alpha, Gamma, Delta");
  Try(TwoGames(), "the arrows go to other matches until Escape",
      {GoTo("lstActive"), Type("am"), Press("Backspace"), Press("Down"), Shows("lstActive", "Alpha, [Gamma]"),
       Press("Esc"), Press("Up"), Type("x"), Press("Shift+F3")},
      "Beta, Delta | [Alpha], Gamma");
  Try(TwoGames(), "F5 reads games and mods again, and keeps the game",
      {kChooseSecond, Write(changed), Press("F5"), Focused("lstGame"), Shows("lstGame", "New, [Second]")},
      "Renamed | ()");
  Try(TwoGames(), "of which another one is chosen where it is gone",
      {GoTo("cmdNewMod"), Write(changed), Press("F5"), Focused("cmdNewMod"), Shows("lstGame", "[New], Second")},
      "() | ()");
  Try(TwoGames(), "with other mods in it, a list is at its top again",
      {Write(fifty("a")), Press("F5"), GoTo("lstNotActive"), Press("End"), isAtTop(false), Write(fifty("b")),
       Press("F5"), isAtTop(true), Write(FourMods()), Press("F5")},
      kFourShown);
  Check(FourMods(), "Enter with nothing selected does nothing, and makes no module file",
        {GoTo("lstNotActive"), Press("Return")}, kFourShown);
}
