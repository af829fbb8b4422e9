#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/game.h"
#include "support/user.h"

using namespace support;

namespace {

class Activation : public WithFourMods {};

TEST_F(Activation, AModKeepsItsPlaceInTheLoadOrder) {
  Use([](User& user) {
    user.ClickEntry("lstNotActive", "Beta");
    user.Click("cmdActivate1");
    EXPECT_EQ(user.Entries("lstActive"), (Names{"Alpha", "Beta", "Gamma"}));
    EXPECT_EQ(user.Entries("lstNotActive"), Names{"Delta"});
    EXPECT_EQ(user.Selected("lstActive") + user.Selected("lstNotActive"), "");
  });
  EXPECT_EQ(ReadFile(SettingsFile()), With(FourMods(), "Name=Beta\r\nActive=0", "Name=Beta\r\nActive=1"));
  EXPECT_EQ(ReadFile(ModuleFile()), Module({"DataFolder.5 = GammaData", "DataFolder.6 = GammaSound",
                                            "DataFolder.7 = BetaData", "DataFolder.8 = AlphaData"}));
}

TEST_F(Activation, DeactivatingTakesTheFoldersOut) {
  WriteFile(SettingsFile(), With(FourMods(), "Name=Alpha\r\nActive=1", "Name=Alpha\r\nActive=2"));
  Use([](User& user) {
    user.ClickEntry("lstActive", "Alpha");
    user.Click("cmdDeactivate1");
    EXPECT_EQ(user.Entries("lstNotActive"), (Names{"Alpha", "Beta", "Delta"}));
  });
  EXPECT_EQ(ReadFile(SettingsFile()), With(FourMods(), "Name=Alpha\r\nActive=1", "Name=Alpha\r\nActive=0"));
  EXPECT_EQ(ReadFile(ModuleFile()), Module({"DataFolder.5 = GammaData", "DataFolder.6 = GammaSound"}));
}

TEST_F(Activation, AllEmptyAndFillTheLists) {
  Use([](User& user) {
    user.Click("cmdActivateAll");
    EXPECT_EQ(user.Entries("lstActive"), (Names{"Alpha", "Beta", "Gamma", "Delta"}));
    EXPECT_EQ(user.Entries("lstNotActive"), Names{});
    EXPECT_EQ(ReadFile(ModuleFile()), Module({"DataFolder.5 = GammaData", "DataFolder.6 = GammaSound",
                                              "DataFolder.7 = BetaData", "DataFolder.8 = AlphaData"}));
    user.Click("cmdDeactivateAll");
    EXPECT_EQ(user.Entries("lstActive"), Names{});
    EXPECT_EQ(user.Entries("lstNotActive"), (Names{"Alpha", "Beta", "Gamma", "Delta"}));
    EXPECT_EQ(ReadFile(ModuleFile()), Module({}));
  });
}

TEST_F(Activation, NothingSelectedStillRewritesTheModuleFile) {
  Use([](User& user) { user.Click("cmdActivate1"); });
  EXPECT_EQ(ReadFile(SettingsFile()), FourMods());
  EXPECT_EQ(ReadFile(ModuleFile()),
            Module({"DataFolder.5 = GammaData", "DataFolder.6 = GammaSound", "DataFolder.7 = AlphaData"}));
}

TEST_F(Activation, AModThatIsNoLongerRegisteredIsLeftAlone) {
  Use([](User& user) {
    user.ClickEntry("lstNotActive", "Beta");
    WriteFile(SettingsFile(), With(FourMods(), "Name=Beta", "Name=Renamed"));
    user.Click("cmdActivate1");
    EXPECT_EQ(user.Entries("lstNotActive"), (Names{"Renamed", "Delta"}));
  });
  EXPECT_EQ(ReadFile(SettingsFile()), With(FourMods(), "Name=Beta", "Name=Renamed"));
}

TEST_F(Activation, AllStopsAtAModThatCannotBeToldFromAnother) {
  const std::string twins = With(With(FourMods(), "Name=Beta", "Name=Twin"), "Name=Delta", "Name=Twin");
  WriteFile(SettingsFile(), twins);
  Use([](User& user) {
    user.Click("cmdActivateAll");
    EXPECT_EQ(user.Entries("lstActive"), (Names{"Alpha", "Twin", "Gamma"}));
    EXPECT_EQ(user.Entries("lstNotActive"), Names{"Twin"});
  });
}

TEST_F(Activation, ThePointerIsBusyWhileAllAreActivated) {
  Use([](User& user) {
    user.ClickEntry("lstActive", "Alpha");  // leaves the selector, which refills the lists
    EXPECT_TRUE(user.IsBusy("lstActive", [&] { user.Click("cmdActivateAll"); }));
    EXPECT_TRUE(user.IsBusy("lstNotActive", [&] { user.Click("cmdDeactivateAll"); }));
    user.ClickEntry("lstNotActive", "Beta");
    EXPECT_FALSE(user.IsBusy("lstActive", [&] { user.Click("cmdActivate1"); })) << "it is itself again";
  });
}

}  // namespace
