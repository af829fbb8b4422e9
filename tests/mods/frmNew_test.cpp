#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/game.h"
#include "support/user.h"

namespace fs = std::filesystem;
using namespace support;

namespace {

class NewMod : public testing::Test {
 protected:
  void SetUp() override {
    ResetWithFourMods();
    for (const char8_t* const name : {u8"Data", u8"data2", u8"B\u00E4r", u8"b", u8".hidden", u8"Zoo"}) {
      fs::create_directories(GameFolder() / "w40K" / name);
    }
  }

  static void Open(User& user) {
    user.LookAt("frmMain");
    user.Click("cmdNewMod");
    user.LookAt("frmNew");
  }
};

const Message kEmptyName = {"New Mod", "Please enter a name for the mod.", "exclamation", {"OK"}};
const Message kTakenName = {"New Mod", "Please enter a unique name.", "information", {"OK"}};
const Message kNoGame = {"New Mod", "Please set up a game first.", "exclamation", {"OK"}};

TEST_F(NewMod, IsAppendedAsTheLastAvailableMod) {
  Use([](User& user) {
    Open(user);
    EXPECT_EQ(user.Focus(), "txtName");
    EXPECT_EQ(user.Entries("lstDirs"), (Names{"b", "B\xE4r", "Data", "data2", "Zoo"}));
    user.Type(" N\xE9w & <i>");
    for (const char* const folder : {"Zoo", "data2", "Data", "b", "Data"}) user.ClickEntry("lstDirs", folder);
    user.Click("OKButton");
    EXPECT_EQ(user.CountWindows("frmNew"), 0);
    user.LookAt("frmMain");
    EXPECT_EQ(user.Entries("lstNotActive"), (Names{"Beta", "Delta", "N\xE9w & <i>"}));
  });
  EXPECT_EQ(ReadFile(SettingsFile()),
            With(FourMods(), "ModCount=4", "ModCount=5") + Text({"[Dawn of War.5]", "Name= N\xE9w & <i>", "Active=0",
                                                                 "DirCount=3", "Dir1=b", "Dir2=data2", "Dir3=Zoo"}));
  EXPECT_FALSE(fs::exists(ModuleFile())) << "an available mod changes nothing in it";
}

TEST_F(NewMod, KeysOfAnEarlierModOfItsNumberStayBeyondTheCount) {
  const std::string before = With(FourMods(), "ModCount=4", "ModCount=3");
  WriteFile(SettingsFile(), With(before, "Name=Delta\r\nActive=0\r\nDirCount=0",
                                 "Name=Delta\r\nActive=1\r\nDirCount=2\r\nDir1=x\r\nDir2=y"));
  Use([](User& user) {
    Open(user);
    user.Type("New");
    user.ClickEntry("lstDirs", "Zoo");
    user.Press(Key::Enter);
  });
  EXPECT_EQ(ReadFile(SettingsFile()), With(FourMods(), "Name=Delta\r\nActive=0\r\nDirCount=0",
                                           "Name=New\r\nActive=0\r\nDirCount=1\r\nDir1=Zoo\r\nDir2=y"));
}

TEST_F(NewMod, ANameMustBeThereAndUnique) {
  struct Row {
    const char* name;
    const Message* refusal;  // null: it is accepted
  };
  const Row rows[] = {{"", &kEmptyName},      {"  ", &kEmptyName}, {"Beta", &kTakenName},
                      {"Alpha", &kTakenName}, {"beta", nullptr},   {" Beta", nullptr}};
  for (const Row& row : rows) {
    WriteFile(SettingsFile(), FourMods());
    Use([&](User& user) {
      Open(user);
      user.Type(row.name);
      user.Click("OKButton");
      const auto shown = user.ShownMessage();
      EXPECT_EQ(shown, row.refusal == nullptr ? std::nullopt : std::optional(*row.refusal)) << row.name;
      if (shown) user.Press(Key::Escape);
      EXPECT_FALSE(user.ShownMessage()) << row.name;
      EXPECT_EQ(user.CountWindows("frmNew"), shown ? 1 : 0) << row.name;
      if (!shown) return;
      user.Type("x");
      EXPECT_TRUE(user.TextOfFocus().ends_with("x")) << "the name can be put right at once: " << row.name;
    });
    const std::string after = row.refusal == nullptr
                                  ? With(FourMods(), "ModCount=4", "ModCount=5") + Text({"[Dawn of War.5]"}) +
                                        "Name=" + row.name + Text({"", "Active=0", "DirCount=0"})
                                  : FourMods();
    EXPECT_EQ(ReadFile(SettingsFile()), after) << row.name;
  }
}

TEST_F(NewMod, CancelEscapeAndTheCloseBoxWriteNothing) {
  Use([](User& user) {
    for (const auto& leave :
         {std::function([&] { user.Click("CancelButton"); }), std::function([&] { user.Press(Key::Escape); }),
          std::function([&] { user.CloseWindow(); })}) {
      Open(user);
      user.Type("New");
      leave();
      EXPECT_EQ(user.CountWindows("frmNew"), 0);
    }
  });
  EXPECT_EQ(ReadFile(SettingsFile()), FourMods());
}

TEST_F(NewMod, SeveralDialogsAreIndependentAndWriteToTheGameThenSelected) {
  WriteFile(SettingsFile(), With(FourMods(), "[Games]\r\nCount=1\r\n", "[Games]\r\nCount=2\r\nDoW2=Second\r\n"));
  Use([](User& user) {
    Open(user);
    Open(user);
    EXPECT_EQ(user.CountWindows("frmNew"), 2);
    user.LookAt("frmNew", 0);
    user.Click("txtName");
    user.Type("Twin");
    user.LookAt("frmNew", 1);
    user.Click("txtName");
    user.Type("Twin");
    user.Click("OKButton");
    EXPECT_EQ(user.CountWindows("frmNew"), 1);
    user.LookAt("frmNew");
    user.Click("OKButton");
    EXPECT_EQ(user.ShownMessage(), kTakenName);
    user.Answer("OK");
    user.LookAt("frmMain");
    user.Choose("lstGame", "Second");
    user.LookAt("frmNew");
    user.Click("OKButton");
    user.LookAt("frmMain");
    EXPECT_EQ(user.Entries("lstNotActive"), Names{"Twin"}) << "the second game's";
  });
  const std::string written = ReadFile(SettingsFile());
  EXPECT_NE(written.find("[Dawn of War.5]\r\nName=Twin"), std::string::npos);
  EXPECT_NE(written.find("[Second]\r\nModCount=1\r\n[Second.1]\r\nName=Twin"), std::string::npos);
}

TEST_F(NewMod, NeedsAGame) {
  WriteFile(SettingsFile(), Text({"[Games]", "Count=0"}));
  Use([](User& user) {
    user.Click("cmdNewMod");
    EXPECT_EQ(user.ShownMessage(), kNoGame);
    user.Answer("OK");
    EXPECT_EQ(user.CountWindows("frmNew"), 0);
  });
  WriteFile(SettingsFile(), FourMods());
  Use([](User& user) {
    Open(user);
    user.Type("New");
    WriteFile(SettingsFile(), Text({"[Games]", "Count=0"}));
    user.Press(Key::Enter);
    EXPECT_EQ(user.ShownMessage(), kNoGame) << "it went while the dialog was open";
    user.Answer("OK");
  });
  EXPECT_EQ(ReadFile(SettingsFile()), Text({"[Games]", "Count=0"}));
}

TEST_F(NewMod, AMissingFolderGivesAnEmptyListAndAModAllTheSame) {
  fs::remove_all(GameFolder());
  Use([](User& user) {
    Open(user);
    EXPECT_EQ(user.Entries("lstDirs"), Names{});
    EXPECT_EQ(user.EmptyText("lstDirs"), "Folder not found:\nC:\\Games\\D\xF6W\\W40k");
    user.Type("New");
    user.Press(Key::Enter);
    user.LookAt("frmMain");
    EXPECT_EQ(user.Entries("lstNotActive").back(), "New");
  });
}

TEST_F(NewMod, AFolderWithoutItsLastBackslashIsTheSameFolder) {
  WriteFile(SettingsFile(), With(FourMods(), "D\xF6W\\", "D\xF6W"));
  Use([](User& user) {
    Open(user);
    EXPECT_EQ(user.Entries("lstDirs").size(), 5U);
  });
}

TEST_F(NewMod, TenThousandFoldersAreListed) {
  for (int i = 0; i < 10'000; ++i) fs::create_directory(GameFolder() / "w40K" / std::to_string(i));
  Use([](User& user) {
    Open(user);
    EXPECT_EQ(user.Entries("lstDirs").size(), 10'005U);
  });
}

TEST_F(NewMod, TheToolEndsWithItsLastDialog) {
  bool isEnded = false;
  Use([&](User& user) {
    Open(user);
    user.LookAt("frmMain");
    user.CloseWindow();
    user.LookAt("frmNew");
    EXPECT_EQ(user.Focus(), "txtName") << "the tool goes on without its main window";
    user.Type("New");
    user.Click("OKButton");
    isEnded = user.HasEnded();
  });
  EXPECT_TRUE(isEnded);
  EXPECT_NE(ReadFile(SettingsFile()).find("Name=New"), std::string::npos);
}

}  // namespace
