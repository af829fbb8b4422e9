#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/game.h"
#include "support/user.h"

using namespace support;

namespace {

class DeletingAMod : public WithFourMods {};

TEST_F(DeletingAMod, MovesTheLaterOnesDown) {
  Use([](User& user) {
    user.ClickEntry("lstNotActive", "Beta");
    user.Click("cmdDeleteMod");
    EXPECT_EQ(user.ShownMessage(), (Message{"Delete Mod", "Really delete 'Beta'?", "", {"OK", "Cancel"}}));
    user.Press(Key::Enter);
    EXPECT_EQ(user.Entries("lstNotActive"), Names{"Delta"});
    EXPECT_EQ(user.Entries("lstActive"), (Names{"Alpha", "Gamma"}));
    EXPECT_EQ(user.Selected("lstNotActive") + user.Selected("lstActive"), "");
  });
  EXPECT_EQ(ReadFile(SettingsFile()), Text({"[Games]",          "Count=1",
                                            "DoW1=Dawn of War",  //
                                            "[Dawn of War]",    "Path=C:\\Games\\D\xF6W\\",
                                            "ModCount=3",  //
                                            "[Dawn of War.1]",  "Name=Alpha",
                                            "Active=1",         "DirCount=1",
                                            "Dir1=AlphaData",   "[Dawn of War.2]",
                                            "Name=Gamma",       "Active=1",
                                            "DirCount=2",       "Dir1=GammaData",
                                            "Dir2=GammaSound",  "[Dawn of War.3]",
                                            "Name=Delta",       "Active=0",
                                            "DirCount=0",       "Dir1=GammaData",
                                            "Dir2=GammaSound",  "[Dawn of War.4]",
                                            "Name=Delta",       "Active=0",
                                            "DirCount=0"}));
  EXPECT_FALSE(std::filesystem::exists(ModuleFile()));
}

TEST_F(DeletingAMod, TheLastOneCopiesNothing) {
  Use([](User& user) {
    user.ClickEntry("lstNotActive", "Delta");
    user.Click("cmdDeleteMod");
    user.Answer("OK");
  });
  EXPECT_EQ(ReadFile(SettingsFile()), With(FourMods(), "ModCount=4", "ModCount=3"));
}

TEST_F(DeletingAMod, NothingIsDeletedWithoutAYes) {
  const auto answers = {+[](User& user) { user.Answer("Cancel"); }, +[](User& user) { user.Press(Key::Escape); },
                        +[](User& user) { user.DismissDialog(); }};
  for (const auto& answer : answers) {
    Use([&](User& user) {
      user.ClickEntry("lstNotActive", "Beta");
      user.Click("cmdDeleteMod");
      answer(user);
      EXPECT_FALSE(user.ShownMessage());
      EXPECT_EQ(user.Selected("lstNotActive"), "Beta") << "not refilled";
    });
    EXPECT_EQ(ReadFile(SettingsFile()), FourMods());
  }
}

TEST_F(DeletingAMod, AsksNothingWhenThereIsNothingToDelete) {
  const std::string renamed = With(FourMods(), "Name=Beta", "Name=Renamed");
  Use([&](User& user) {
    user.Click("cmdDeleteMod");
    EXPECT_FALSE(user.ShownMessage()) << "without a selection";
    user.ClickEntry("lstNotActive", "Beta");
    WriteFile(SettingsFile(), renamed);
    user.Click("cmdDeleteMod");
    EXPECT_FALSE(user.ShownMessage()) << "without such a mod";
    EXPECT_EQ(user.Entries("lstNotActive"), (Names{"Renamed", "Delta"})) << "refilled";
  });
  EXPECT_EQ(ReadFile(SettingsFile()), renamed);
}

TEST_F(DeletingAMod, OneThatWentWhileTheUserWasAskedTakesNoOtherWithIt) {
  const std::string renamed = With(FourMods(), "Name=Beta", "Name=Renamed");
  Use([&](User& user) {
    user.ClickEntry("lstNotActive", "Beta");
    user.Click("cmdDeleteMod");
    WriteFile(SettingsFile(), renamed);
    user.Answer("OK");
    EXPECT_EQ(user.Entries("lstNotActive"), (Names{"Renamed", "Delta"}));
  });
  EXPECT_EQ(ReadFile(SettingsFile()), renamed);
}

TEST_F(DeletingAMod, ThePointerIsBusyOnceTheUserHasAnswered) {
  Use([](User& user) {
    user.ClickEntry("lstNotActive", "Beta");
    user.Click("cmdDeleteMod");
    EXPECT_TRUE(user.IsBusy("lstNotActive", [&] { user.Answer("OK"); }));
    user.ClickEntry("lstNotActive", "Delta");
    EXPECT_FALSE(user.IsBusy("lstActive", [&] { user.Click("cmdActivate1"); })) << "it is itself again";
  });
}

}  // namespace
