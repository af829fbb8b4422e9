#include "installations/game_list.h"

#include "tests/support/game.h"

using namespace support;

TEST(GameList, ARuleChangesItsSettingsAndNoOthers) {
  const std::string three = Text({"[Games]", "Count=3", "DoW1=A", "DoW2=B", "DoW3=C", "[B]", "ModCount=7"});
  const auto edition = [](const std::string& folder) -> Rule {
    return [=](auto& change) { TryGame(change, "X", folder); };
  };
  const auto add = [](const char* name) -> Rule { return [=](auto& change) { AddGame(change, name, "D:\\x\\"); }; };
  const auto remove = [](int n, const char* name) -> Rule {
    return [=](auto& change) { RemoveGame(change, n, name); };
  };
  CheckRules({
      {"an edition is registered with a separator", "", edition("D:\\x"),
       Text({"[Games]", "DoW1=X", "Count=1", "[X]", "Path=D:\\x\\", "AutoPath=1"})},
      {"not without a registry entry", "", edition(""), ""},
      {"not with a folder longer than a setting", "", edition(std::string(254, 'x')), ""},
      {"the last game is removed", three, add("X"),
       With(With(three, "Count=3", "Count=4"), "DoW3=C", "DoW3=C\r\nDoW4=X") +
           Text({"[X]", "Path=D:\\x\\", "AutoPath=0"})},
      {"the first game is removed", "", add("X"),
       Text({"[Games]", "Count=1", "DoW1=X", "[X]", "Path=D:\\x\\", "AutoPath=0"})},
      {"a game is removed although its number has changed; later ones move up", three, remove(1, "B"),
       With(With(three, "[Games]\r\nCount=3", "[Games]\r\nCount=2"), "DoW2=B", "DoW2=C")},
      {"of two with the same name, the one asked about", With(three, "DoW1=A", "DoW1=B"), remove(2, "B"),
       With(With(With(three, "DoW1=A", "DoW1=B"), "Count=3", "Count=2"), "DoW2=B", "DoW2=C")},
      {"not beyond the count", With(three, "Count=3", "Count=2"), remove(3, "C"), With(three, "Count=3", "Count=2")},
  });
}

TEST(GameList, TellsTheFoldersOfGames) {
  const Module1::Settings settings(Text({"[Games]", "Count=2", "DoW2=B", "[B]", "Path=D:\\b\\"}));
  EXPECT_EQ(GameEntries(settings), (Names{"Unknown (C:\\)", "B (D:\\b\\)"}));
  EXPECT_EQ(settings.InstallFolder("B"), "D:\\b\\");
  EXPECT_EQ(settings.InstallFolder("b"), "");
}
