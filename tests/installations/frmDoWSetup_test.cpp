#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/paths.h"
#include "tests/support/game.h"
#include "support/system.h"
#include "support/user.h"

namespace fs = std::filesystem;
using namespace support;

namespace {

class Setup : public testing::Test {
 protected:
  void SetUp() override {
    Reset();
    WriteFile(DriveC() / "Games" / u8"D\u00F6W" / "W40K.EXE", "");
    WriteFile(elsewhere_, "");
  }

  static void Open(User& user) {
    user.LookAt("frmMain");
    user.Click("cmdGoToGames");
    user.LookAt("frmDoWSetup");
  }

  // Picks a file in the file dialog by typing its name.
  static void Pick(User& user, const fs::path& name) {
    EXPECT_EQ(user.DialogTitle(), "Select DoW Path");
    user.TypeFileName(name);
    user.Press(Key::Enter);
  }

  // A game outside the prefix, and the Windows path of its folder.
  const fs::path elsewhere_ = Root() / "elsewhere" / "W40k.exe";
  const std::string onZ_ = *platform::ToWindowsPath({elsewhere_.parent_path().native()}) + "\\";
};

const std::string kTwoGames = Text({"[Games]", "Count=2", "DoW1=First", "DoW2=Second", "[Second]", "Path=D:\\two\\"});

TEST_F(Setup, TheFirstStartRegistersWhatTheRegistryKnows) {
  struct Row {
    const char* rule;
    std::vector<Installation> registry;
    Names lines;
    std::string settings;
  };
  const Row rows[] = {
      {"none", {}, {}, ""},
      {"all, in their order, each folder with one backslash at its end",
       {{"Dawn of War Beta", "D:\\"}, {"Dawn of War Demo", "C:\\Demo"}, {"DAWN OF WAR", "C:\\D\xF6W\\"}},
       {"Dawn of War (C:\\D\xF6W\\)", "Dawn of War Demo (C:\\Demo\\)", "Dawn of War Beta (D:\\)"},
       Text({"[Games]", "DoW1=Dawn of War", "Count=3", "DoW2=Dawn of War Demo", "DoW3=Dawn of War Beta",
             "[Dawn of War]", "Path=C:\\D\xF6W\\", "AutoPath=1", "[Dawn of War Demo]", "Path=C:\\Demo\\", "AutoPath=1",
             "[Dawn of War Beta]", "Path=D:\\", "AutoPath=1"})},
      {"one, as the first",
       {{"Dawn of War Demo", "C:\\Demo"}},
       {"Dawn of War Demo (C:\\Demo\\)"},
       Text({"[Games]", "DoW1=Dawn of War Demo", "Count=1", "[Dawn of War Demo]", "Path=C:\\Demo\\", "AutoPath=1"})},
      {"empty and overlong folders are none",
       {{"Dawn of War", ""}, {"Dawn of War Demo", std::string(1024, 'x')}},
       {},
       ""},
      {"the 64-bit view is not asked", {{"Dawn of War", "C:\\x", View::Bits64}}, {}, ""},
  };
  for (const Row& row : rows) {
    fs::remove(SettingsFile());
    SetRegistry(row.registry);
    Use([&](User& user) {
      EXPECT_EQ(user.CountWindows("frmMain"), 0) << "before the dialog has ended: " << row.rule;
      user.LookAt("frmDoWSetup");
      EXPECT_EQ(user.Focus(), "OKButton") << row.rule;
      EXPECT_EQ(user.Entries("lstGames"), row.lines) << row.rule;
      user.Click("OKButton");
      EXPECT_EQ(user.CountWindows("frmDoWSetup"), 0) << row.rule;
      user.LookAt("frmMain");
      EXPECT_EQ(user.Entries("lstGame").size(), row.lines.size()) << row.rule;
    });
    EXPECT_EQ(ReadFile(SettingsFile()), row.settings) << row.rule;
  }
}

TEST_F(Setup, IsNotOpenedAtTheStartOnceGamesWereCounted) {
  SetRegistry({{"Dawn of War", "C:\\DoW"}});
  for (const std::string count : {"0", "1", "", "damaged"}) {
    WriteFile(SettingsFile(), "[Games]\r\nCount=" + count + "\r\n");
    Use([&](User& user) {
      EXPECT_EQ(user.CountWindows("frmDoWSetup"), 0) << count;
      EXPECT_EQ(user.CountWindows("frmMain"), 1) << count;
      Open(user);
      EXPECT_EQ(user.Entries("lstGames"), count == "1" ? Names{"Unknown (C:\\)"} : Names{}) << count;
    });
    EXPECT_EQ(ReadFile(SettingsFile()), "[Games]\r\nCount=" + count + "\r\n") << "nothing is registered: " << count;
  }
}

TEST_F(Setup, TheMainWindowIsOutOfUseUntilTheDialogHasEnded) {
  WriteFile(SettingsFile(), kTwoGames);
  Use([](User& user) {
    Open(user);
    user.LookAt("frmMain");
    EXPECT_FALSE(user.IsInUse());
    user.Click("cmdGoToGames");
    EXPECT_EQ(user.ActiveWindow(), "frmDoWSetup") << "it comes back in front of the window that covered it";
    user.CloseWindow();
    EXPECT_EQ(user.CountWindows("frmMain"), 1) << "it refuses to be closed";
    EXPECT_EQ(user.CountWindows("frmDoWSetup"), 1) << "and opens no second dialog";
    user.LookAt("frmDoWSetup");
    user.Click("OKButton");
    user.LookAt("frmMain");
    EXPECT_TRUE(user.IsInUse());
    user.AwaitActiveWindow();
    EXPECT_EQ(user.ActiveWindow(), "frmMain");
    EXPECT_EQ(user.Focus(), "lstGame");
  });
}

TEST_F(Setup, OkReloadsTheSelectorAndClosingDoesNot) {
  struct Row {
    const char* name;
    void (*leave)(User& user);
    bool isReloaded;
  };
  const Row rows[] = {
      {"OK", [](User& user) { user.Click("OKButton"); }, true},
      {"Enter", [](User& user) { user.Press(Key::Enter); }, true},
      {"the close box", [](User& user) { user.CloseWindow(); }, false},
      {"Escape", [](User& user) { user.Press(Key::Escape); }, false},
  };
  for (const Row& row : rows) {
    WriteFile(SettingsFile(), kTwoGames);
    Use([&](User& user) {
      user.Choose("lstGame", "Second");
      Open(user);
      row.leave(user);
      EXPECT_EQ(user.CountWindows("frmDoWSetup"), 0) << row.name;
      user.LookAt("frmMain");
      EXPECT_EQ(user.Selected("lstGame"), row.isReloaded ? "First" : "Second") << row.name;
    });
    EXPECT_EQ(ReadFile(SettingsFile()), kTwoGames) << row.name;
  }
}

TEST_F(Setup, AGameIsRegisteredByNameAndExecutable) {
  WriteFile(SettingsFile(), "");
  SetRegistry({{"<b>x</b> & y", "c:\\games\\D\xD6w"}});
  Use([&](User& user) {
    user.LookAt("frmDoWSetup");
    user.Click("cmdnew");
    EXPECT_EQ(user.DialogTitle(), "New");
    EXPECT_EQ(user.DialogText(), "Installation Name:");
    EXPECT_EQ(user.TextOfFocus(), "Dawn of War");
    user.Type("<b>x</b> & y");
    user.Press(Key::Enter);
    Pick(user, "W40K.EXE");  // in the registry's folder, where the dialog has started
    EXPECT_EQ(user.Entries("lstGames"), Names{"<b>x</b> & y (C:\\Games\\D\xF6W\\)"});
    user.Click("cmdnew");
    user.Type("<B>x</B> & y");
    user.Press(Key::Enter);
    Pick(user, elsewhere_);
    EXPECT_EQ(user.Entries("lstGames").back(), "<B>x</B> & y (" + onZ_ + ")");
  });
  EXPECT_EQ(ReadFile(SettingsFile()), Text({"[Games]", "Count=2", "DoW1=<b>x</b> & y", "DoW2=<B>x</B> & y",  //
                                            "[<b>x</b> & y]"}) +
                                          "Path=" + onZ_ + Text({"", "AutoPath=0"}))
      << "names that differ in letter case alone share a section";
}

TEST_F(Setup, NothingIsWrittenForACancelOrATakenName) {
  WriteFile(SettingsFile(), kTwoGames);
  Use([](User& user) {
    Open(user);
    user.Click("cmdnew");
    user.Press(Key::Escape);
    EXPECT_EQ(user.DialogTitle(), "") << "no name";
    user.Click("cmdnew");
    user.Type("Second");
    user.Press(Key::Enter);
    EXPECT_EQ(user.ShownMessage(), (Message{"New", "Please enter a unique name.", "information", {"OK"}}));
    user.Answer("OK");
    EXPECT_EQ(user.DialogTitle(), "") << "a taken name";
    user.Click("cmdnew");
    user.Type("Third");
    user.Press(Key::Enter);
    EXPECT_EQ(user.DialogTitle(), "Select DoW Path");
    user.DismissDialog();
    EXPECT_EQ(user.DialogTitle(), "") << "no file";
    EXPECT_EQ(user.Entries("lstGames").size(), 2U);
  });
  EXPECT_EQ(ReadFile(SettingsFile()), kTwoGames);
}

TEST_F(Setup, AFolderThatTheSettingsCannotHoldIsRefused) {
  constexpr auto kSeparator = static_cast<char>(fs::path::preferred_separator);
  const std::string tooLong(120, 'x');
  struct Row {
    fs::path folder;
    std::string said;
  };
  const Row rows[] = {{DriveC() / u8"\u017Bycie", "?ycie" + std::string(1, kSeparator) + "W40k.exe cannot be used"},
                      {DriveC() / tooLong / tooLong / "0123456789", "more than 254 characters"}};
  for (const Row& row : rows) {
    WriteFile(row.folder / "W40k.exe", "");
    WriteFile(SettingsFile(), kTwoGames);
    Use([&](User& user) {
      Open(user);
      user.Click("cmdnew");
      user.Type("Third");
      user.Press(Key::Enter);
      Pick(user, row.folder / "W40k.exe");
      ASSERT_TRUE(user.ShownMessage());
      EXPECT_NE(user.ShownMessage()->text.find(row.said), std::string::npos) << user.ShownMessage()->text;
      user.Answer("OK");
      EXPECT_EQ(user.DialogTitle(), "Select DoW Path") << "the choice goes on";
      user.Press(Key::Escape);
    });
    EXPECT_EQ(ReadFile(SettingsFile()), kTwoGames);
  }
}

TEST_F(Setup, WhatAnotherProgramChangedMeanwhileStays) {
  const std::string three = Text({"[Games]", "Count=3", "DoW1=New", "DoW2=First", "DoW3=Second"});
  WriteFile(SettingsFile(), kTwoGames);
  Use([&](User& user) {
    Open(user);
    user.ClickEntry("lstGames", "First (C:\\)");
    user.Click("cmdDelete");
    WriteFile(SettingsFile(), three);
    user.Answer("Yes");
    EXPECT_EQ(ReadFile(SettingsFile()), With(With(three, "Count=3", "Count=2"), "DoW2=First", "DoW2=Second"));

    user.Click("cmdnew");
    user.Type("Third");
    user.Press(Key::Enter);
    WriteFile(SettingsFile(), three);
    Pick(user, elsewhere_);
    EXPECT_EQ(user.Entries("lstGames"), (Names{"New (C:\\)", "First (C:\\)", "Second (C:\\)", "Third (" + onZ_ + ")"}));

    user.Click("cmdnew");
    user.Type("Fourth");
    user.Press(Key::Enter);
    const std::string taken = With(three, "DoW1=New", "DoW1=Fourth");
    WriteFile(SettingsFile(), taken);
    Pick(user, elsewhere_);
    user.Answer("OK");
    EXPECT_EQ(ReadFile(SettingsFile()), taken) << "a name is given once";
  });
}

TEST_F(Setup, RemovingAGameMovesTheLaterOnesUpAndKeepsItsMods) {
  const std::string three =
      With(FourMods(), "Count=1\r\nDoW1=Dawn of War", "Count=3\r\nDoW1=A\r\nDoW2=Dawn of War\r\nDoW3=C");
  WriteFile(SettingsFile(), three);
  Use([](User& user) {
    Open(user);
    user.Click("cmdDelete");
    EXPECT_FALSE(user.ShownMessage()) << "nothing is selected";
    for (const char* const refusal : {"No", "Escape", "the close box"}) {
      user.ClickEntry("lstGames", "Dawn of War (C:\\Games\\D\xF6W\\)");
      user.Click("cmdDelete");
      EXPECT_EQ(user.ShownMessage(), (Message{"Delete", "Really Delete 'Dawn of War'?", "", {"Yes", "No"}}));
      if (refusal == std::string("No")) user.Answer("No");
      if (refusal == std::string("Escape")) user.Press(Key::Escape);
      if (refusal == std::string("the close box")) user.DismissDialog();
      EXPECT_EQ(user.Entries("lstGames").size(), 3U) << refusal;
    }
  });
  EXPECT_EQ(ReadFile(SettingsFile()), three);
  Use([](User& user) {
    Open(user);
    user.ClickEntry("lstGames", "Dawn of War (C:\\Games\\D\xF6W\\)");
    user.Click("cmdDelete");
    user.Answer("Yes");
    EXPECT_EQ(user.Entries("lstGames"), (Names{"A (C:\\)", "C (C:\\)"}));
  });
  EXPECT_EQ(ReadFile(SettingsFile()),
            With(With(three, "[Games]\r\nCount=3", "[Games]\r\nCount=2"), "DoW2=Dawn of War", "DoW2=C"));
}

TEST_F(Setup, ADamagedCountIsNotCountedOn) {
  WriteFile(SettingsFile(), Text({"[Games]", "Count=-7"}));
  Use([&](User& user) {
    Open(user);
    user.Click("cmdnew");
    user.Press(Key::Enter);
    Pick(user, elsewhere_);
    EXPECT_EQ(user.Entries("lstGames"), Names{"Dawn of War (" + onZ_ + ")"});
  });
}

TEST_F(Setup, TheWaitSleepsAndEndsWhenTheToolIsAskedToQuit) {
  double used = 0;
  bool isEnded = false;
  const int exitCode = Use([&](User& user) {
    user.LookAt("frmDoWSetup");
    EXPECT_EQ(user.Focus(), "OKButton");
    const double before = ProcessorSeconds();
    std::this_thread::sleep_for(std::chrono::seconds(1));
    used = ProcessorSeconds() - before;
    AskToQuit();
    for (int i = 0; i < 500 && !isEnded; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      isEnded = user.HasEnded();
    }
  });
  EXPECT_LT(used, 0.05);
  EXPECT_TRUE(isEnded);
  EXPECT_EQ(exitCode, 0);
}

// From the first start to the deleted game, in one go.
TEST_F(Setup, TheWholeRoad) {
  SetRegistry({{"Dawn of War", "C:\\Games\\D\xF6W"}, {"Dawn of War Demo", "C:\\Demo"}});
  for (const char* const name : {"Maps", "Sound"}) fs::create_directories(GameFolder() / "W40k" / name);
  Use([](User& user) {
    user.LookAt("frmDoWSetup");
    user.Press(Key::Enter);
    user.LookAt("frmMain");
    EXPECT_EQ(user.Entries("lstGame"), (Names{"Dawn of War", "Dawn of War Demo"}));
    for (const char* const name : {"One", "Two", "Three"}) {
      user.LookAt("frmMain");
      user.Click("cmdNewMod");
      user.LookAt("frmNew");
      user.Type(name);
      user.ClickEntry("lstDirs", name == std::string("One") ? "Maps" : "Sound");
      user.Click("OKButton");
    }
    user.LookAt("frmMain");
    user.Click("cmdActivateAll");
    user.ClickEntry("lstActive", "One");
    user.Click("cmdMoveDown");
    EXPECT_EQ(ReadFile(ModuleFile()), Module({"DataFolder.5 = Sound", "DataFolder.6 = Maps", "DataFolder.7 = Sound"}));
    user.ClickEntry("lstActive", "Two");
    user.Click("cmdDeactivate1");
    user.ClickEntry("lstNotActive", "Two");
    user.Click("cmdDeleteMod");
    user.Answer("OK");
    EXPECT_EQ(user.Entries("lstActive"), (Names{"One", "Three"}));
    EXPECT_EQ(ReadFile(ModuleFile()), Module({"DataFolder.5 = Sound", "DataFolder.6 = Maps"}));
    user.Click("cmdGoToGames");
    user.LookAt("frmDoWSetup");
    user.ClickEntry("lstGames", "Dawn of War (C:\\Games\\D\xF6W\\)");
    user.Click("cmdDelete");
    user.Answer("Yes");
    user.Click("OKButton");
    user.LookAt("frmMain");
    EXPECT_EQ(user.Entries("lstGame"), Names{"Dawn of War Demo"});
    EXPECT_EQ(user.Entries("lstActive"), (Names{"One", "Three"})) << "until the focus leaves the selector";
    user.Click("lstGame");
    user.Press(Key::Escape);
    user.Press(Key::Tab);
    EXPECT_EQ(user.Entries("lstActive"), Names{});
  });
  EXPECT_EQ(ReadFile(SettingsFile()), Text({"[Games]",
                                            "DoW1=Dawn of War Demo",
                                            "Count=1",
                                            "DoW2=Dawn of War Demo",  //
                                            "[Dawn of War]",
                                            "Path=C:\\Games\\D\xF6W\\",
                                            "AutoPath=1",
                                            "ModCount=2",  //
                                            "[Dawn of War Demo]",
                                            "Path=C:\\Demo\\",
                                            "AutoPath=1",  //
                                            "[Dawn of War.1]",
                                            "Name=One",
                                            "Active=1",
                                            "DirCount=1",
                                            "Dir1=Maps",  //
                                            "[Dawn of War.2]",
                                            "Name=Three",
                                            "Active=1",
                                            "DirCount=1",
                                            "Dir1=Sound",  //
                                            "[Dawn of War.3]",
                                            "Name=Three",
                                            "Active=1",
                                            "DirCount=1",
                                            "Dir1=Sound",  //
                                            "[Dawn of War.-1]",
                                            "Name=One",
                                            "Active=1",
                                            "DirCount=1",
                                            "Dir1=Maps"}));
}

TEST_F(Setup, TheRoadByKeyboardAlone) {
  SetRegistry({{"Dawn of War", "C:\\Games\\D\xF6W"}});
  for (const char* const name : {"Maps", "Sound"}) fs::create_directories(GameFolder() / "W40k" / name);
  Use([&](User& user) {
    const auto press = [&](std::string_view button) {
      user.GoTo(button);
      user.Press(Key::Enter);
    };
    user.LookAt("frmDoWSetup");
    user.Press(Key::Enter);
    for (const char* const name : {"One", "Two", "Three"}) {
      user.LookAt("frmMain");
      press("cmdNewMod");
      user.LookAt("frmNew");
      user.Type(name);
      user.GoTo("lstDirs");
      user.Press(Key::Down);
      user.Press(Key::Space);
      user.Press(Key::Enter);
    }
    user.LookAt("frmMain");
    user.GoTo("lstNotActive");
    user.Press(Key::Space);
    press("cmdActivate1");
    press("cmdActivateAll");
    user.GoTo("lstActive");
    user.Press(Key::Space);
    press("cmdMoveDown");
    EXPECT_EQ(user.Entries("lstActive"), (Names{"Two", "One", "Three"}));
    press("cmdMoveDown");
    user.Press(Key::BackTab);
    user.Press(Key::Enter);
    EXPECT_EQ(user.Entries("lstActive"), (Names{"Two", "One", "Three"})) << "up again";
    EXPECT_EQ(user.Selected("lstActive"), "One");
    press("cmdDeactivate1");
    press("cmdDeactivateAll");
    EXPECT_EQ(ReadFile(ModuleFile()), Module({}));
    user.GoTo("lstNotActive");
    user.Press(Key::Down);
    user.Press(Key::Down);
    press("cmdDeleteMod");
    user.Press(Key::Enter);
    EXPECT_EQ(user.Entries("lstNotActive"), (Names{"Two", "Three"}));
    press("cmdGoToGames");
    user.LookAt("frmDoWSetup");
    press("cmdnew");
    user.Type("Second");
    user.Press(Key::Enter);
    Pick(user, elsewhere_);
    user.GoTo("lstGames");
    user.Press(Key::Space);
    press("cmdDelete");
    user.Press(Key::Enter);
    EXPECT_EQ(user.Entries("lstGames"), Names{"Second (" + onZ_ + ")"});
    user.Press(Key::Escape);
  });
  EXPECT_EQ(ReadFile(SettingsFile()), Text({"[Games]",          "DoW1=Second",
                                            "Count=1",          "DoW2=Second",  //
                                            "[Dawn of War]",    "Path=C:\\Games\\D\xF6W\\",
                                            "AutoPath=1",       "ModCount=2",  //
                                            "[Dawn of War.1]",  "Name=Two",
                                            "Active=0",         "DirCount=1",
                                            "Dir1=Sound",  //
                                            "[Dawn of War.2]",  "Name=Three",
                                            "Active=0",         "DirCount=1",
                                            "Dir1=Sound",  //
                                            "[Dawn of War.3]",  "Name=Three",
                                            "Active=0",         "DirCount=1",
                                            "Dir1=Sound",  //
                                            "[Dawn of War.-1]", "Name=One",
                                            "Active=1",         "DirCount=1",
                                            "Dir1=Sound",  //
                                            "[Second]"}) +
                                          "Path=" + onZ_ + Text({"", "AutoPath=0"}));
}

}  // namespace
