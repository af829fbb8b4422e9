#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/game.h"
#include "support/user.h"

using namespace support;

namespace {

class LoadOrder : public WithFourMods {};

// Alpha and Gamma exchanged, with the available Beta between them left where it was. Gamma's second folder stays
// behind, beyond the count.
std::string Exchanged() {
  return Text({"[Games]",          "Count=1",
               "DoW1=Dawn of War",  //
               "[Dawn of War]",    "Path=C:\\Games\\D\xF6W\\",
               "ModCount=4",  //
               "[Dawn of War.1]",  "Name=Gamma",
               "Active=1",         "DirCount=2",
               "Dir1=GammaData",   "Dir2=GammaSound",
               "[Dawn of War.2]",  "Name=Beta",
               "Active=0",         "DirCount=1",
               "Dir1=BetaData",    "[Dawn of War.3]",
               "Name=Alpha",       "Active=1",
               "DirCount=1",       "Dir1=AlphaData",
               "Dir2=GammaSound",  "[Dawn of War.4]",
               "Name=Delta",       "Active=0",
               "DirCount=0"});
}

TEST_F(LoadOrder, DownAndUpExchangeAModWithTheNextActiveOne) {
  Use([](User& user) {
    user.ClickEntry("lstActive", "Alpha");
    user.Click("cmdMoveDown");
    EXPECT_EQ(user.Entries("lstActive"), (Names{"Gamma", "Alpha"}));
    EXPECT_EQ(user.Selected("lstActive"), "Alpha");
    EXPECT_EQ(ReadFile(SettingsFile()),
              Exchanged() + Text({"[Dawn of War.-1]", "Name=Alpha", "Active=1", "DirCount=1", "Dir1=AlphaData"}));
    EXPECT_EQ(ReadFile(ModuleFile()),
              Module({"DataFolder.5 = AlphaData", "DataFolder.6 = GammaData", "DataFolder.7 = GammaSound"}));

    user.Click("cmdMoveUp");
    EXPECT_EQ(user.Entries("lstActive"), (Names{"Alpha", "Gamma"}));
    EXPECT_EQ(user.Selected("lstActive"), "Alpha") << "so it can be moved on and on";
    EXPECT_EQ(ReadFile(ModuleFile()),
              Module({"DataFolder.5 = GammaData", "DataFolder.6 = GammaSound", "DataFolder.7 = AlphaData"}));
  });
}

TEST_F(LoadOrder, NothingHappensAtTheEndsOrWithoutASelection) {
  struct Row {
    const char* selected;
    const char* button;
  };
  const Row rows[] = {{"Alpha", "cmdMoveUp"}, {"Gamma", "cmdMoveDown"}, {"", "cmdMoveUp"}, {"", "cmdMoveDown"}};
  for (const Row& row : rows) {
    Use([&](User& user) {
      const std::string selected = row.selected;
      if (!selected.empty()) user.ClickEntry("lstActive", selected);
      user.Click(row.button);
      EXPECT_EQ(user.Selected("lstActive"), selected) << "not refilled: " << row.button;
    });
    EXPECT_EQ(ReadFile(SettingsFile()), FourMods()) << row.selected << row.button;
    EXPECT_FALSE(std::filesystem::exists(ModuleFile())) << row.selected << row.button;
  }
}

TEST_F(LoadOrder, AModThatIsNoLongerRegisteredIsNotMoved) {
  const std::string renamed = With(FourMods(), "Name=Gamma", "Name=Renamed");
  Use([&](User& user) {
    user.ClickEntry("lstActive", "Alpha");
    WriteFile(SettingsFile(), renamed);
    user.Click("cmdMoveDown");
    EXPECT_EQ(user.Entries("lstActive"), (Names{"Alpha", "Gamma"}));
  });
  EXPECT_EQ(ReadFile(SettingsFile()), renamed);
}

TEST_F(LoadOrder, WhatIsMissingIsWrittenWithItsDefaultAndTheCountPlain) {
  WriteFile(SettingsFile(), Text({"[Games]", "Count=1", "DoW1=G", "[G]", "Path=C:\\Games\\D\xF6W\\", "ModCount=2",
                                  "[G.1]", "Name=a", "Active=1", "DirCount=01", "[G.2]", "Active=03"}));
  Use([](User& user) {
    user.ClickEntry("lstActive", "a");
    user.Click("cmdMoveDown");
    EXPECT_EQ(user.Entries("lstActive"), (Names{"Unknown", "a"}));
  });
  EXPECT_EQ(ReadFile(SettingsFile()),
            Text({"[Games]",    "Count=1",      "DoW1=G",    "[G]",        "Path=C:\\Games\\D\xF6W\\",
                  "ModCount=2",                                                      //
                  "[G.1]",      "Name=Unknown", "Active=03", "DirCount=0",           //
                  "[G.2]",      "Active=1",     "Name=a",    "DirCount=1", "Dir1=",  //
                  "[G.-1]",     "Name=a",       "Active=1",  "DirCount=1", "Dir1="}));
}

TEST_F(LoadOrder, TwinsAreOneModAndKeepTheirContents) {
  const std::string twins = With(FourMods(), "Name=Gamma", "Name=Alpha");
  WriteFile(SettingsFile(), twins);
  Use([](User& user) {
    user.ClickEntry("lstActive", "Alpha");
    user.Click("cmdMoveDown");
  });
  EXPECT_EQ(ReadFile(SettingsFile()),
            twins + Text({"[Dawn of War.-1]", "Name=Alpha", "Active=1", "DirCount=1", "Dir1=AlphaData"}));
  EXPECT_TRUE(std::filesystem::exists(ModuleFile()));
}

}  // namespace
