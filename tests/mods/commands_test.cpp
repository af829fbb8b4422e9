#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/user.h"
#include "tests/support/game.h"

using namespace support;

namespace {

// What a mod was before it was moved.
std::string Scratch(const Mod& mod) { return Section("-1", mod); }

TEST(Activation, AModKeepsItsPlaceInTheLoadOrder) {
  const Mod activeBeta = {"Beta", "1", kBeta.folders};
  const std::string renamed = With(FourMods(), "Name=Beta", "Name=Renamed");
  const Names asItWas = {"GammaData", "GammaSound", "AlphaData"};
  const Names all = {"GammaData", "GammaSound", "BetaData", "AlphaData"};
  const Row rows[] = {
      {"one is activated, by a double click",
       {DoubleClick("lstNotActive", "Beta")},
       "Delta | Alpha, Beta, Gamma",
       Settings(4, {kAlpha, activeBeta, kGamma, kDelta}),
       all},
      {"one is deactivated, by its key",
       {Click("lstActive", "Alpha"), Press(Key::Enter)},
       "Alpha, Beta, Delta | Gamma",
       With(FourMods(), "Name=Alpha\r\nActive=1", "Name=Alpha\r\nActive=0"),
       Names{"GammaData", "GammaSound"}},
      {"all are activated",
       {Click("cmdActivateAll")},
       "() | Alpha, Beta, Gamma, Delta",
       Settings(4, {kAlpha, activeBeta, kGamma, {"Delta", "1"}}),
       all},
      {"all are deactivated",
       {Click("cmdDeactivateAll")},
       "Alpha, Beta, Gamma, Delta | ()",
       Settings(4, {{"Alpha", "0", kAlpha.folders}, kBeta, {"Gamma", "0", kGamma.folders}, kDelta}),
       Names{}},
      {"the focus alone selects nothing",
       {Press(Key::Tab), Click("cmdActivate1")},
       "Beta, Delta | Alpha, Gamma",
       {},
       asItWas},
      {"one that is no longer registered is left alone",
       {Click("lstNotActive", "Beta"), Write(renamed), Click("cmdActivate1")},
       "Renamed, Delta | Alpha, Gamma",
       renamed,
       asItWas},
  };
  for (const Row& row : rows) Check(FourMods(), row);
  Check(Settings(4, {kAlpha, kBeta, kGamma, kBeta}), {"all but a mod that cannot be told from another",
                                                      {Click("cmdActivateAll")},
                                                      "Beta | Alpha, Beta, Gamma",
                                                      Settings(4, {kAlpha, activeBeta, kGamma, kBeta}),
                                                      all});
}

TEST(LoadOrder, AModIsExchangedWithTheNextActiveOne) {
  const std::string exchanged =
      Settings(4, {kGamma, kBeta, {"Alpha", "1", kAlpha.folders, {"GammaSound"}}, kDelta}) + Scratch(kAlpha);
  const std::string renamed = With(FourMods(), "Name=Gamma", "Name=Renamed");
  const std::string twins = Settings(2, {kAlpha, {"Alpha", "1", {"x"}}});
  const Row rows[] = {
      {"down",
       {Click("lstActive", "Alpha"), Click("cmdMoveDown")},
       "Beta, Delta | Gamma, [Alpha]",
       exchanged,
       Names{"AlphaData", "GammaData", "GammaSound"}},
      {"down and up again, by the keys, without another click on it",
       {Click("lstActive", "Alpha"), Press(Key::AltDown), Press(Key::AltUp)},
       "Beta, Delta | [Alpha], Gamma",
       Settings(4, {{"Alpha", "1", kAlpha.folders, {"GammaSound"}}, kBeta, kGamma, kDelta}) + Scratch(kAlpha),
       Names{"GammaData", "GammaSound", "AlphaData"}},
      {"not at the top", {Click("lstActive", "Alpha"), Click("cmdMoveUp")}, "Beta, Delta | [Alpha], Gamma"},
      {"not at the bottom", {Click("lstActive", "Gamma"), Click("cmdMoveDown")}, "Beta, Delta | Alpha, [Gamma]"},
      {"nothing is selected", {Click("cmdMoveUp"), Click("cmdMoveDown")}, "Beta, Delta | Alpha, Gamma"},
      {"not with one that is no longer registered",
       {Click("lstActive", "Alpha"), Write(renamed), Click("cmdMoveDown")},
       "Beta, Delta | [Alpha], Gamma",
       renamed},
  };
  for (const Row& row : rows) Check(FourMods(), row);

  const std::vector<Act> moveFirst = {Click("lstActive", "Alpha"), Click("cmdMoveDown")};
  Check(With(Settings(2, {{"Alpha", "1"}}), "DirCount=0", "DirCount=01") + Text({"[Dawn of War.2]", "Active=03"}),
        {"what is missing is written with its default, and the count plain", moveFirst, "() | Unknown, [Alpha]",
         Settings(2, {{"Unknown", "03"}}) + Text({"[Dawn of War.2]", "Active=1", "Name=Alpha", "DirCount=1", "Dir1="}) +
             Scratch({"Alpha", "1", {""}}),
         Names{""}});
  Check(twins, {"twins are one mod, and keep their contents", moveFirst, "() | [Alpha], [Alpha]",
                twins + Scratch(kAlpha), Names{"x", "AlphaData"}});
}

TEST(DeletingAMod, TheLaterOnesMoveDown) {
  const Message question = {"Delete Mod", "Really delete 'Beta'?", "", {"OK", "Cancel"}};
  const Act selectBeta = Click("lstNotActive", "Beta");
  const Act click = Click("cmdDeleteMod");
  const std::string renamed = With(FourMods(), "Name=Beta", "Name=Renamed");
  const Row rows[] = {
      {"one in the middle",
       {selectBeta, Press(Key::Delete), Sees(question), Press(Key::Enter)},
       "Delta | Alpha, Gamma",
       Settings(3, {kAlpha, kGamma, {"Delta", "0", {}, kGamma.folders}, kDelta})},
      {"the last one",
       {Click("lstNotActive", "Delta"), click, Answer("OK")},
       "Beta | Alpha, Gamma",
       Settings(3, {kAlpha, kBeta, kGamma, kDelta})},
      {"not for Cancel", {selectBeta, click, Answer("Cancel")}, "[Beta], Delta | Alpha, Gamma"},
      {"not for the close box", {selectBeta, click, Close()}, "[Beta], Delta | Alpha, Gamma"},
      {"nothing is selected", {click}, "Beta, Delta | Alpha, Gamma"},
      {"no question about one that is no longer registered",
       {selectBeta, Write(renamed), click},
       "Renamed, Delta | Alpha, Gamma",
       renamed},
      {"one that went while the user was asked takes no other with it",
       {selectBeta, click, Write(renamed), Answer("OK")},
       "Renamed, Delta | Alpha, Gamma",
       renamed},
  };
  for (const Row& row : rows) Check(FourMods(), row);
  const std::string second = Text({"[Dawn of War.2]"});
  const Message ofMarkup = {"Delete Mod", "Really delete '<b>x'?", "", question.buttons};
  Check(Settings(2, {{"<b>x", "0"}}) + second, {"a name is plain text, and what is missing is written with its default",
                                                {Click("lstNotActive", "<b>x"), click, Sees(ofMarkup), Answer("OK")},
                                                "Unknown | ()",
                                                Settings(1, {{"Unknown", "0"}}) + second});
}

TEST(Commands, ThePointerIsBusyWhileManyModsChangeAndNoLonger) {
  const auto changes = [](bool isBusy, const std::string& list, const Act& act) {
    const Act look = [=] { EXPECT_EQ(IsPointerBusy(), isBusy); };
    return Watch(list, look, act);
  };
  Try(FourMods(),
      {"",
       {changes(true, "lstActive", Click("cmdActivateAll")), changes(true, "lstNotActive", Click("cmdDeactivateAll")),
        Click("lstNotActive", "Delta"), Click("cmdDeleteMod"), changes(true, "lstNotActive", Answer("OK")),
        Click("lstNotActive", "Beta"), changes(false, "lstNotActive", Click("cmdActivate1"))},
       "Alpha, Gamma | Beta"});
}

}  // namespace
