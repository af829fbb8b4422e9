#include "tests/support/game.h"

using namespace support;

// The commands of the main window, from a click or a key to the files. Their rules are tried in mod_list_test.cpp.
namespace {

const Mod kActiveBeta = {"Beta", "1", kBeta.folders};
const Act kSeesBusy = [] { EXPECT_TRUE(IsPointerBusy()); };
const Act kSeesNotBusy = [] { EXPECT_FALSE(IsPointerBusy()); };

TEST(Commands, ActivateModsAndWriteTheModuleFile) {
  const Names all = {"GammaData", "GammaSound", "BetaData", "AlphaData"};
  Check(FourMods(), "one is activated, by a double click", {DoubleClick("lstNotActive", "Beta")},
        "Delta | Alpha, Beta, Gamma", Settings(4, {kAlpha, kActiveBeta, kGamma, kDelta}), all);
  Try(FourMods(), "one is deactivated, by its key", {Click("lstActive", "Alpha"), Press("Return")},
      "Alpha, Beta, Delta | Gamma");
  Check(FourMods(), "all are activated, while the pointer is busy",
        {Watch("lstActive", kSeesBusy, Click("cmdActivateAll")), kSeesNotBusy}, "() | Alpha, Beta, Gamma, Delta",
        Settings(4, {kAlpha, kActiveBeta, kGamma, {"Delta", "1"}}), all);
  Try(FourMods(), "all are deactivated", {Click("cmdDeactivateAll")}, "Alpha, Beta, Gamma, Delta | ()");
  Try(Settings(4, {kBeta, kBeta, kDelta, kAlpha}), "all but a mod that cannot be told from another",
      {Click("cmdActivateAll")}, "Beta | Beta, Delta, Alpha");
  const Message message = Failed("Make Module", kUnread, "1 of 2 mods were activated.");
  Try(FourMods(), "what stops in the middle says how far it came",
      {Watch("lstNotActive", Write(kUnreadable), Click("cmdActivateAll")), Sees(message), Answer("OK")},
      "(" + message.text.substr(0, message.text.find('\n')) + ") | ()");
}

TEST(Commands, MoveTheSelectedMod) {
  const std::string renamed = With(FourMods(), "Name=Gamma", "Name=Renamed");
  const Act makeReadOnly = [] { fs::permissions(SettingsFile(), fs::perms(0444)); };
  const Message unsaved = Failed("Make Module", " could not be written: Permission denied.", "Nothing was changed.");
  Check(FourMods(), "by its key", {Click("lstActive", "Gamma"), Press("Alt+Up")}, "Beta, Delta | [Gamma], Alpha",
        Settings(4, {kGamma, kBeta, {"Alpha", "1", kAlpha.folders, {"GammaSound"}}, kDelta}) + Section("-1", kGamma),
        Names{"AlphaData", "GammaData", "GammaSound"});
  Check(FourMods(), "not without one, nor beyond the ends",
        {Click("cmdMoveUp"), Click("cmdMoveDown"), Click("lstActive", "Alpha"), Click("cmdMoveUp"),
         Shows("lstActive", "[Alpha], Gamma"), Click("lstActive", "Gamma"), Click("cmdMoveDown")},
        "Beta, Delta | Alpha, [Gamma]");
  Check(FourMods(), "not with one that is no longer registered",
        {Click("lstActive", "Alpha"), Write(renamed), Click("cmdMoveDown")}, "Beta, Delta | [Alpha], Gamma", renamed);
  Check(FourMods(), "one that could not be saved stays in its place, selected",
        {Click("lstActive", "Alpha"), makeReadOnly, Click("cmdMoveDown"), Sees(unsaved), Answer("OK")},
        "Beta, Delta | [Alpha], Gamma");
}

TEST(Commands, DeleteTheSelectedModWhenTheUserSaysSo) {
  const Message question = {"Delete Mod", "Really delete '<b>x'?", "", {"OK", "Cancel"}};
  const Mod markup = {"<b>x", "0"};
  const std::string three = Settings(3, {kAlpha, markup, kGamma});
  const Act select = Click("lstNotActive", "<b>x");
  const Act click = Click("cmdDeleteMod");
  const std::string renamed = With(three, "Name=<b>x", "Name=Renamed");
  Try(three, "by its key, and a name is plain text",
      {select, Press("Del"), Sees(question), Watch("lstNotActive", kSeesBusy, Press("Return"))}, "() | Alpha, Gamma");
  Check(three, "no question about one that is no longer registered", {select, Write(renamed), click},
        "Renamed | Alpha, Gamma", renamed);
  Check(three, "one that went while the user was asked takes no other with it",
        {select, click, Write(renamed), Answer("OK")}, "Renamed | Alpha, Gamma", renamed);
}

}  // namespace
