#include "mods/mod_list.h"

#include "module_file/module_text.h"
#include "tests/support/game.h"

using namespace support;

namespace {

const std::string kGame = "Dawn of War";

// The scratch section after moving this mod.
std::string Scratch(const Mod& mod) { return Section("-1", mod); }

TEST(ModList, ARuleChangesItsSettingsAndNoOthers) {
  const auto activate = [](const char* name) -> Rule {
    return [=](auto& change) { SetActive(change, kGame, name, true); };
  };
  const auto move = [](const char* name, const Names& passed, bool isDone) -> Rule {
    return [=](auto& change) { EXPECT_EQ(MoveMod(change, kGame, name, passed), isDone); };
  };
  const auto edit = [](const char* name, const Mod& as, bool isDone) -> Rule {
    return [=](auto& change) { EXPECT_EQ(EditMod(change, kGame, name, as.name, as.folders), isDone); };
  };
  const auto remove = [](const char* name) -> Rule { return [=](auto& change) { DeleteMod(change, kGame, name); }; };
  const auto add = [](const Mod& mod) -> Rule {
    return [=](auto& change) { RegisterMod(change, kGame, mod.name, mod.folders); };
  };
  const std::string unnamed = Settings(1, {{"Alpha", "1"}});
  const Mod lessAlpha = {"Alpha", "1", kAlpha.folders, {"GammaSound"}};
  CheckRules({
      {"activate a mod in place", FourMods(), activate("Beta"),
       Settings(4, {kAlpha, {"Beta", "1", kBeta.folders}, kGamma, kDelta})},
      {"deactivate a mod with any flag", Settings(1, {{"Alpha", "2"}}),
       [](auto& change) { SetActive(change, kGame, "Alpha", false); }, Settings(1, {{"Alpha", "0"}})},
      {"of two with the same name, the first counts", Settings(2, {kBeta, kBeta}), activate("Beta"),
       Settings(2, {{"Beta", "1", kBeta.folders}, kBeta})},
      {"letter case counts", FourMods(), activate("beta"), FourMods()},
      {"two mods swap numbers; folders beyond a count stay", FourMods(), move("Alpha", {"Gamma"}, true),
       Settings(4, {kGamma, kBeta, lessAlpha, kDelta}) + Scratch(kAlpha)},
      {"moving past several equals that many single moves", FourMods(), move("Delta", {"Gamma", "Alpha"}, true),
       Settings(4, {{"Delta", "0", {}, kAlpha.folders}, kBeta, lessAlpha, kGamma}) + Scratch(kDelta)},
      {"not past an unregistered mod", FourMods(), move("Alpha", {"Gamma", "x"}, false), FourMods()},
      {"missing settings get their defaults; counts are normalized",
       With(With(unnamed, "DirCount=0", "DirCount=01"), "ModCount=1", "ModCount=2") +
           Text({"[Dawn of War.2]", "Active=03"}),
       move("Alpha", {"Unknown"}, true),
       Settings(2, {{"Unknown", "03"}}) + Text({"[Dawn of War.2]", "Active=1", "Name=Alpha", "DirCount=1", "Dir1="}) +
           Scratch({"Alpha", "1", {""}})},
      {"of two with the same name, both keep their contents", Settings(2, {kAlpha, kAlpha}),
       move("Alpha", {"Alpha"}, true), Settings(2, {kAlpha, kAlpha}) + Scratch(kAlpha)},
      {"mods after a deleted one move down", FourMods(), remove("Beta"),
       Settings(3, {kAlpha, kGamma, {"Delta", "0", {}, kGamma.folders}, kDelta})},
      {"deleting a missing mod removes no other", FourMods(), remove("x"), FourMods()},
      {"an edited mod keeps its place and flag; folders beyond its new count stay", FourMods(),
       edit("Gamma", {" G ", "", {"Zoo"}}, true),
       Settings(4, {kAlpha, kBeta, {" G ", "1", {"Zoo"}, {"GammaSound"}}, kDelta})},
      {"a missing mod is not edited", FourMods(), edit("gamma", {"G", "", {"Zoo"}}, false), FourMods()},
      {"a new mod is last, available, named as typed", FourMods(), add({" N\xE9w ", "", {"b", "Zoo"}}),
       Settings(5, {kAlpha, kBeta, kGamma, kDelta, {" N\xE9w ", "0", {"b", "Zoo"}}})},
      {"a new mod reuses a deleted one's number; its other keys stay", Settings(0, {{"Gone", "1", {"x", "y"}}}),
       add({"New", "", {"Zoo"}}), Settings(1, {{"New", "0", {"Zoo"}, {"y"}}})},
  });
}

TEST(ModList, ListsModsByTheirNumbers) {
  const Module1::Settings settings(
      Settings(4, {{"a", "2", {"there", "gone"}}, {"b", "x"}, {"c", "-1", {"there"}, {"gone"}}}));
  const ModLists lists = ListMods(settings, kGame, [](std::string_view folder) { return folder == "gone"; });
  EXPECT_EQ(lists.active.names, (Names{"a", "c"}));
  EXPECT_EQ(lists.active.lacksFolder, (std::vector<bool>{true, false}));
  EXPECT_EQ(lists.available.names, (Names{"b", "Unknown"}));
  EXPECT_TRUE(IsNameTaken(settings, kGame, "a") && IsNameTaken(settings, kGame, "a", "b"));
  EXPECT_FALSE(IsNameTaken(settings, kGame, "A") || IsNameTaken(settings, kGame, "a", "a"));
}

TEST(ModuleText, IsAnotherWhereActiveModsOrTheGamesFolderAre) {
  const std::string two = TwoGames();
  const std::string none = With(two, "[Games]\r\nCount=2", "[Games]\r\nCount=0");
  const struct {
    const char* rule;
    std::string before;
    std::string after;
    Names games;
  } rows[] = {
      {"a mod was activated", With(two, "Name=Other", "Active=1\r\nDirCount=1"), two, {"Second"}},
      {"an inactive mod has another folder", two, With(two, "BetaData", "x"), {}},
      {"the game is in another folder", With(two, "Path=", "Path=C:"), two, {kGame}},
      {"games return", none, two, {}},
      {"games return with other mods", With(none, "AlphaData", "x"), two, {kGame}},
      {"games are gone", With(two, "AlphaData", "x"), none, {}},
  };
  for (const auto& [rule, before, after, games] : rows)
    EXPECT_EQ(GamesWithOtherModules(Module1::Settings(before), Module1::Settings(after)), games) << rule;
}

TEST(ModuleText, HasTheFoldersOfTheActiveModsBetweenTheTemplates) {
  const Mod delta = {"Delta", "1", {" d 1", "?", "d%3%"}};
  const std::array<std::string, 5> rows[] = {
      {"the highest number first", FourMods(), "", "top",
       "top\r\nDataFolder.5 = GammaData\r\nDataFolder.6 = GammaSound\r\nDataFolder.7 = AlphaData\r\nend\r\n"},
      {"a missing folder has its line", With(Settings(1, {delta}), "Dir2=?\r\n", ""), "[Make]\nNextDirNum=2147483647",
       "", "DataFolder.2147483647 = d 1\r\nDataFolder.2147483648 = \r\nDataFolder.2147483649 = d%3%\r\nend\r\n"},
      {"a flag must be 1", Settings(3, {{"Alpha", "2", {"AlphaData"}}, {"Gamma", "+1", {"GammaData"}}, kBeta}),
       "[Make]\nNextDirNum=x", "", "DataFolder.5 = GammaData\r\nend\r\n"},
      {"templates keep every byte except line ends", Settings(0, {}), "",
       "top \r\r\n\r\na\nb\r" + std::string("\0\x1A\r", 3),
       "top \r\n\r\n\r\na\nb\r\n" + std::string("\0\x1A\r\n", 4) + "end\r\n"},
  };
  for (const auto& [rule, settings, make, header, text] : rows)
    EXPECT_EQ(ModuleText(Module1::Settings(settings, make), kGame, header, "end"), text) << rule;
}

}  // namespace
