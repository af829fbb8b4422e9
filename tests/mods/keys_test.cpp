#include "tests/support/game.h"

using namespace support;

// Mouse and keyboard with two games: what they do, and above all what they must not do.
TEST(Keys, NoClickDoesWhatWasNotMeant) {
  Try(TwoGames(), "after the setup, outdated lists are refilled before a click acts",
      {kChooseSecond, Click("cmdGoToGames"), Click("OKButton"), Focused("lstGame"), Click("lstNotActive", "Other")},
      "[Beta], Delta | Alpha, Gamma");
  Try(TwoGames(), "a button disabled by its command passes the focus to the list, not to another button",
      {GoTo("cmdActivateAll"), Press("Space"), Press("Space"), Focused("lstActive")},
      "() | [Alpha], Beta, Gamma, Delta");
  Try(TwoGames(), "the same after deleting the last mod",
      {kChooseSecond, Press("Tab"), Click("lstNotActive", "Other"), Click("cmdDeleteMod"), Answer("OK"), Press("Down"),
       Focused("lstNotActive")},
      "() | ()");
  Try(TwoGames(), "a held key clicks once",
      {Click("lstNotActive", "Beta"), GoTo("cmdDeleteMod"), Press("Return"), Repeat("Return"), Close()},
      "[Beta], Delta | Alpha, Gamma");
  Try(TwoGames(), "a held key clicks once even if its window closes",
      {GoTo("lstActive"), Press("Ins"), Press("Esc"), Repeat("Ins")}, kFourShown);
  Try(TwoGames(), "a key pressed before the question does not answer it",
      {Click("lstNotActive", "Beta"), Together(Soon(Soon(Press("Return"))), Click("cmdDeleteMod")), Answer("Cancel")},
      "[Beta], Delta | Alpha, Gamma");
  Try(TwoGames(), "a screen reader cannot act behind a message",
      {Click("cmdNewMod"), Click("OKButton"), Perform("Press", "CancelButton"), Perform("Increase", "lstGame"),
       Answer("OK"), Click("CancelButton"), Shows("lstGame", "[Dawn of War], Second")},
      kFourShown);
  Try(TwoGames(), "the wheel over the selector chooses nothing",
      {TurnWheel("lstGame"), Shows("lstGame", "[Dawn of War], Second"), GoTo("lstActive"), TurnWheel("lstGame"),
       Focused("lstActive")},
      kFourShown);
  Try(TwoGames(), "a screen reader's press acts on its selection, from the start",
      {Select("lstNotActive", "Beta"), Perform("Press", "cmdActivate1")}, "Delta | Alpha, Beta, Gamma");
  Try(TwoGames(), "clicks during a command are dropped",
      {Watch("lstActive", Soon(Together(Close(), Click("cmdDeactivateAll"))), Click("cmdActivateAll")),
       Focused("lstActive")},
      "() | Alpha, Beta, Gamma, Delta");
}

TEST(Keys, AKeyActsOnTheListThatHasTheFocus) {
  const auto fifty = [](const char* name) { return Settings(50, std::vector<Mod>(50, {name, "0"})); };
  const auto isAtTop = [](bool expected) -> Act { return [=] { EXPECT_EQ(IsAtTop("lstNotActive"), expected); }; };
  const std::string changed = With(With(TwoGames(), "Name=Other", "Name=Renamed"), "DoW1=Dawn of War", "DoW1=New");
  Try(TwoGames(), "after a removal from the middle, an arrow continues there",
      {Click("cmdActivateAll"), Click("lstActive", "Gamma"), Press("Return"), Press("Down")},
      "Gamma | Alpha, Beta, [Delta]");
  Try(TwoGames(), "no key runs a disabled button's command",
      {Click("lstActive", "Gamma"), Press("Return"), Press("Up"), Press("Alt+Down"), Press("Del"),
       Focused("lstActive")},
      "Beta, Gamma, Delta | [Alpha]");
  Try(TwoGames(), "a held move key repeats",
      {Click("cmdActivateAll"), Click("lstActive", "Alpha"), Press("Alt+Down"), Repeat("Alt+Down")},
      "() | Beta, Gamma, [Alpha], Delta");
  Try(TwoGames(), "the first arrow selects the first entry", {GoTo("lstActive"), Press("Down")},
      "Beta, Delta | [Alpha], Gamma");
  Try(TwoGames(), "a key that clicks refills the lists first", {kChooseSecond, Press("Ins"), Press("Esc")},
      "Other | ()");
  Try(TwoGames(), "a screen reader's choice takes the focus",
      {GoTo("lstActive"), Perform("Decrease", "lstGame"), Perform("Increase", "lstGame"), Press("Tab")}, "Other | ()");
  Try(TwoGames(), "a screen reader opens the drop-down list",
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
  Try(TwoGames(), "if the match is gone, another is selected",
      {GoTo("cmdNewMod"), Write(changed), Press("F5"), Focused("cmdNewMod"), Shows("lstGame", "[New], Second")},
      "() | ()");
  Try(TwoGames(), "with other mods, a list scrolls to its top",
      {Write(fifty("a")), Press("F5"), GoTo("lstNotActive"), Press("End"), isAtTop(false), Write(fifty("b")),
       Press("F5"), isAtTop(true), Write(FourMods()), Press("F5")},
      kFourShown);
  Check(FourMods(), "Enter with nothing selected does nothing, and makes no module file",
        {GoTo("lstNotActive"), Press("Return")}, kFourShown);
}
