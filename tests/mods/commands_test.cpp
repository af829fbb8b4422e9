#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/paths.h"
#include "support/user.h"
#include "tests/support/game.h"

namespace fs = std::filesystem;
using namespace support;

// The commands of the main window, from a click or a key to the files. Their rules are tried in mod_list_test.cpp.
namespace {

const Mod kActiveBeta = {"Beta", "1", kBeta.folders};
const std::string kAsBefore = "Beta, Delta | Alpha, Gamma";
const std::string kRenamed = With(FourMods(), "Name=Beta", "Name=Renamed");

const Act kSpoilSettings = [] {
  fs::remove(SettingsFile());
  fs::create_directory(SettingsFile());
};

Message Unread(const std::string& title, const std::string& outcome) {
  const std::string file = platform::Shown(SettingsFile());
  return {title, file + " could not be read: Is a directory.\n\n" + outcome, "critical", {"OK"}};
}

TEST(Commands, ActivateModsAndWriteTheModuleFile) {
  const Names asItWas = {"GammaData", "GammaSound", "AlphaData"};
  const Names all = {"GammaData", "GammaSound", "BetaData", "AlphaData"};
  const Row rows[] = {
      {"one is activated, by a double click",
       {DoubleClick("lstNotActive", "Beta")},
       "Delta | Alpha, Beta, Gamma",
       Settings(4, {kAlpha, kActiveBeta, kGamma, kDelta}),
       all},
      {"one is deactivated, by its key",
       {Click("lstActive", "Alpha"), Press(Key::Enter)},
       "Alpha, Beta, Delta | Gamma",
       With(FourMods(), "Name=Alpha\r\nActive=1", "Name=Alpha\r\nActive=0"),
       Names{"GammaData", "GammaSound"}},
      {"all are activated",
       {Click("cmdActivateAll")},
       "() | Alpha, Beta, Gamma, Delta",
       Settings(4, {kAlpha, kActiveBeta, kGamma, {"Delta", "1"}}),
       all},
      {"all are deactivated",
       {Click("cmdDeactivateAll")},
       "Alpha, Beta, Gamma, Delta | ()",
       Settings(4, {{"Alpha", "0", kAlpha.folders}, kBeta, {"Gamma", "0", kGamma.folders}, kDelta}),
       Names{}},
      {"the focus alone selects nothing", {Press(Key::Tab), Click("cmdActivate1")}, kAsBefore, {}, asItWas},
      {"one that is no longer registered is left alone",
       {Click("lstNotActive", "Beta"), Write(kRenamed), Click("cmdActivate1")},
       "Renamed, Delta | Alpha, Gamma",
       kRenamed,
       asItWas},
  };
  for (const Row& row : rows) Check(FourMods(), row);
  Check(Settings(4, {kBeta, kBeta, kDelta, kAlpha}), {"all but a mod that cannot be told from another",
                                                      {Click("cmdActivateAll")},
                                                      "Beta | Beta, Delta, Alpha",
                                                      Settings(4, {kActiveBeta, kBeta, {"Delta", "1"}, kAlpha}),
                                                      Names{"AlphaData", "BetaData"}});
  const Message message = Unread("Make Module", "1 of 2 mods were activated.");
  Try(FourMods(), {"what stops in the middle says how far it came",
                   {Watch("lstNotActive", kSpoilSettings, Click("cmdActivateAll")), Sees(message), Answer("OK")},
                   "(" + message.text.substr(0, message.text.find('\n')) + ") | ()"});
}

TEST(Commands, MoveTheSelectedMod) {
  const Names moved = {"AlphaData", "GammaData", "GammaSound"};
  const Mod lessAlpha = {"Alpha", "1", kAlpha.folders, {"GammaSound"}};
  const std::string renamed = With(FourMods(), "Name=Gamma", "Name=Renamed");
  const Row rows[] = {
      {"down",
       {Click("lstActive", "Alpha"), Click("cmdMoveDown")},
       "Beta, Delta | Gamma, [Alpha]",
       Settings(4, {kGamma, kBeta, lessAlpha, kDelta}) + Section("-1", kAlpha),
       moved},
      {"down and up again, by the keys, without another click on it",
       {Click("lstActive", "Alpha"), Press(Key::AltDown), Press(Key::AltUp)},
       "Beta, Delta | [Alpha], Gamma",
       Settings(4, {lessAlpha, kBeta, kGamma, kDelta}) + Section("-1", kAlpha),
       Names{"GammaData", "GammaSound", "AlphaData"}},
      {"not at the top", {Click("lstActive", "Alpha"), Click("cmdMoveUp")}, "Beta, Delta | [Alpha], Gamma"},
      {"not at the bottom", {Click("lstActive", "Gamma"), Click("cmdMoveDown")}, "Beta, Delta | Alpha, [Gamma]"},
      {"nothing is selected", {Click("cmdMoveUp"), Click("cmdMoveDown")}, kAsBefore},
      {"not with one that is no longer registered",
       {Click("lstActive", "Alpha"), Write(renamed), Click("cmdMoveDown")},
       "Beta, Delta | [Alpha], Gamma",
       renamed},
  };
  for (const Row& row : rows) Check(FourMods(), row);
}

TEST(Commands, DeleteTheSelectedModWhenTheUserSaysSo) {
  const Message question = {"Delete Mod", "Really delete '<b>x'?", "", {"OK", "Cancel"}};
  const Mod markup = {"<b>x", "0"};
  const std::string three = Settings(3, {kAlpha, markup, kGamma});
  const Act select = Click("lstNotActive", "<b>x");
  const Act click = Click("cmdDeleteMod");
  const std::string renamed = With(three, "Name=<b>x", "Name=Renamed");
  const Row rows[] = {
      {"by its key, and a name is plain text",
       {select, Press(Key::Delete), Sees(question), Press(Key::Enter)},
       "() | Alpha, Gamma",
       Settings(2, {kAlpha, kGamma, kGamma})},
      {"not for Cancel", {select, click, Answer("Cancel")}, "[<b>x] | Alpha, Gamma"},
      {"not for the close box", {select, click, Close()}, "[<b>x] | Alpha, Gamma"},
      {"nothing is selected", {click}, "<b>x | Alpha, Gamma"},
      {"no question about one that is no longer registered",
       {select, Write(renamed), click},
       "Renamed | Alpha, Gamma",
       renamed},
      {"one that went while the user was asked takes no other with it",
       {select, click, Write(renamed), Answer("OK")},
       "Renamed | Alpha, Gamma",
       renamed},
  };
  for (const Row& row : rows) Check(three, row);
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

TEST(Commands, SayWhatCouldNotBeRead) {
  const Message start = Unread("Gantrel", "Nothing was changed.");
  const std::string lists = "(" + start.text.substr(0, start.text.find('\n')) + ") | ()";
  Reset();
  fs::create_directory(SettingsFile());
  const Act look = [&] { EXPECT_EQ(Shown("lstNotActive") + " | " + Shown("lstActive"), lists); };
  EXPECT_FALSE(Use({Sees(start), Answer("OK"), look}));
}

}  // namespace
