#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <ostream>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "mods/frmMain.h"
#include "platform/files.h"
#include "tests/faults/file_operations.h"
#include "tests/support/game.h"
#include "support/linux/prefix.h"
#include "tests/support/plain_profile.h"
#include "support/system.h"
#include "support/user.h"

// Every command, in the real windows, with each of its file operations going wrong in turn, in every way that it can.
// To be killed, the process is copied just before the command.
namespace fs = std::filesystem;
using faults::Bit;
using faults::Effect;
using faults::Fault;
using faults::Operation;
using support::ExecutableFolder;
using support::GameFolder;
using support::Key;
using support::ModuleFile;
using support::SettingsFile;
using support::User;
using Content = std::optional<std::string>;  // of a file; nothing when it is missing

namespace {

struct Command {
  const char* name;
  std::function<void(User&)> prepare;
  std::function<void(User&)> act;
  bool isWholeChange = false;  // reaches the settings file at once, or not at all
  bool startsWithoutSettings = false;
  bool isInPlace = false;  // in folders that take no new files
};

void PrintTo(const Command& command, std::ostream* out) { *out << command.name; }

// Answers every message by its default button. A failure of the module file is said once, not more.
void AnswerAll(User& user) {
  int failures = 0;
  while (const auto message = user.ShownMessage()) {
    if (message->title == "Make Module" && ++failures > 1) throw std::runtime_error("said twice: " + message->text);
    user.Answer(message->buttons.front());
  }
}

std::function<void(User&)> Select(const char* list, const char* entry) {
  return [=](User& user) { user.ClickEntry(list, entry); };
}

std::function<void(User&)> Click(const char* button) {
  return [=](User& user) {
    user.Click(button);
    AnswerAll(user);
  };
}

void MakeANewMod(User& user) {
  user.Click("cmdNewMod");
  AnswerAll(user);
  if (user.CountWindows("frmNew") == 0) return;  // the game's folder could not be found out
  user.LookAt("frmNew");
  const auto folders = user.Entries("lstDirs");
  if (!folders.empty()) {
    user.Type("Epsilon");
    user.ClickEntry("lstDirs", folders.front());
    user.Click("OKButton");
    AnswerAll(user);
  }
  if (user.CountWindows("frmNew") > 0) user.CloseWindow();
}

void OpenTheSetup(User& user) {
  user.Click("cmdGoToGames");
  user.LookAt("frmDoWSetup");
}

void AddAGame(User& user) {
  OpenTheSetup(user);
  user.Click("cmdnew");
  user.Type("Fourth");
  user.Press(Key::Enter);
  AnswerAll(user);
  if (user.DialogTitle() == "Select DoW Path") {
    user.Press(Key::Enter);  // the file that it offers, in the current folder
    AnswerAll(user);
    if (!user.DialogTitle().empty()) user.DismissDialog();
  }
  user.Click("OKButton");
}

void RemoveAGame(User& user) {
  OpenTheSetup(user);
  const auto games = user.Entries("lstGames");
  if (!games.empty()) {
    user.ClickEntry("lstGames", games.front());
    user.Click("cmdDelete");
    AnswerAll(user);
  }
  user.Click("OKButton");
}

// The tool's start once more, in the running program.
void StartTheTool(User& user) {
  const auto mainWindow = std::make_shared<std::optional<frmMain>>();
  user.Do([mainWindow] {
    mainWindow->emplace();
    (*mainWindow)->Form_Load();
    (*mainWindow)->Show();
  });
  if (user.CountWindows("frmDoWSetup") > 0) {
    user.LookAt("frmDoWSetup");
    user.Click("OKButton");
  }
  user.Do([mainWindow] { mainWindow->reset(); });
}

std::string ThreeGames() {
  return support::With(support::FourMods(), "Count=1\r\nDoW1=Dawn of War",
                       "Count=3\r\nDoW1=Dawn of War\r\nDoW2=Second\r\nDoW3=Third") +
         support::Text({"[Second]", "Path=C:\\Second\\", "ModCount=1", "[Second.1]", "Name=Omega", "Active=1",
                        "DirCount=1", "Dir1=OmegaData", "[Third]", "Path=C:\\Third\\"});
}

// What the user owns: the games with their folders, and the mods with theirs.
std::set<std::string> Belongings(const Content& settings) {
  const support::PlainProfile profile(settings.value_or(""));
  const auto text = [&](const std::string& section, const std::string& key) {
    return profile.Find(section, key).value_or("");
  };
  const auto number = [&](const std::string& section, const std::string& key) {
    return std::atoi(text(section, key).c_str());
  };
  std::set<std::string> belongings;
  for (int i = 1; i <= number("Games", "Count"); ++i) {
    const std::string game = text("Games", "DoW" + std::to_string(i));
    belongings.insert(game + " in " + text(game, "Path"));
    for (int n = 1; n <= number(game, "ModCount"); ++n) {
      const std::string section = game + "." + std::to_string(n);
      std::string mod = game + ": " + text(section, "Name");
      for (int j = 1; j <= number(section, "DirCount"); ++j) mod += "|" + text(section, "Dir" + std::to_string(j));
      belongings.insert(mod);
    }
  }
  return belongings;
}

Content Read(const fs::path& file) { return fs::exists(file) ? Content(support::ReadFile(file)) : std::nullopt; }

void Write(const fs::path& file, const Content& content) {
  content ? support::WriteFile(file, *content) : static_cast<void>(fs::remove(file));
}

fs::path States(const fs::path& file) { return support::Root() / "states" / file.filename(); }
fs::path Away() { return support::Root() / "away"; }

// Keeps what a file was replaced by.
void KeepState(const char* path) {
  const fs::path states = States(path);
  fs::create_directories(states);
  const auto number = std::distance(fs::directory_iterator(states), fs::directory_iterator());
  fs::copy_file(path, states / std::to_string(number));
}

bool IsOneOf(const std::vector<Content>& contents, const Content& content) {
  return std::ranges::find(contents, content) != contents.end();
}

// A way in which operations of some kinds go wrong.
struct Way {
  const char* name;
  Fault fault;
  std::uint32_t operations;
};

constexpr std::uint32_t kAll = ~0U;
constexpr std::uint32_t kTakingRoom =
    Bit(Operation::Create) | Bit(Operation::Write) | Bit(Operation::Flush) | Bit(Operation::Rename);
constexpr std::uint32_t kByName = Bit(Operation::Open) | Bit(Operation::Create) | Bit(Operation::Look) |
                                  Bit(Operation::Change) | Bit(Operation::Rename) | Bit(Operation::Unlink);
constexpr std::uint32_t kOfData = Bit(Operation::Open) | Bit(Operation::Read) | Bit(Operation::Write) |
                                  Bit(Operation::Flush) | Bit(Operation::Truncate) | Bit(Operation::Close);

constexpr Way kKills[] = {
    {"killed", {.effect = Effect::Kill}, kAll},
    {"killed halfway", {.effect = Effect::Kill, .isHalfway = true}, Bit(Operation::Write)},
};
// A process that is killed leaves the same files whatever watches its memory, and copies are slow where something does.
#ifdef __SANITIZE_ADDRESS__
constexpr int kKillAtEvery = 8;
#else
constexpr int kKillAtEvery = 1;
#endif
constexpr Way kFailures[] = {
    {"no space left", {.effect = Effect::Fail, .reason = ENOSPC, .lasting = kTakingRoom}, kTakingRoom},
    {"no space left halfway",
     {.effect = Effect::Fail, .reason = ENOSPC, .isHalfway = true, .lasting = kTakingRoom},
     Bit(Operation::Write)},
    {"no permission", {.effect = Effect::Fail, .reason = EACCES}, kByName},
    {"input/output error", {.effect = Effect::Fail, .reason = EIO}, kOfData},
    {"folder gone", {.effect = Effect::MoveFolderAway}, kByName},
};

class Faults : public testing::TestWithParam<Command> {
 protected:
  void SetUp() override {
    support::Reset();
    fs::create_directories(GameFolder() / "W40k" / "Maps");
    support::WriteFile(support::Root() / "W40k.exe", "");
    fs::current_path(support::Root());
    support::SetRegistry({{"Dawn of War", "C:\\Games\\D\xF6W"}});
    support::WriteFile(SettingsFile(), GetParam().startsWithoutSettings ? "[Games]\r\nCount=0\r\n" : ThreeGames());
    fs::permissions(SettingsFile(), fs::perms(0640));
    oldModule_ = support::Module({"DataFolder.5 = GammaData", "DataFolder.6 = GammaSound", "DataFolder.7 = AlphaData"});
    if (!GetParam().startsWithoutSettings) oldSettings_ = ThreeGames();
  }

  // Everything as before the command, whatever a try has left.
  void PutBack() const {
    if (fs::exists(Away())) fs::rename(Away(), GameFolder());
    for (const fs::path& folder : {ExecutableFolder(), GameFolder()}) fs::remove(folder / ".gantrel-new");
    Write(SettingsFile(), oldSettings_);
    if (oldSettings_) fs::permissions(SettingsFile(), fs::perms(0640));
    Write(ModuleFile(), oldModule_);
  }

  // The command with the fault, in windows that show how things are.
  void Try(User& user, const Fault& fault, void (*afterRename)(const char*) = nullptr) const {
    faults::Start(fault, foldersTakeNoFiles_, GameFolder().c_str(), Away().c_str(), afterRename);
    GetParam().act(user);
    faults::Stop();
    user.LookAt("frmMain");
    if (!user.IsInUse()) throw std::runtime_error("the main window is out of use");
  }

  void GetReady(User& user) const {
    PutBack();
    user.RefillMainWindow();
    if (GetParam().prepare) GetParam().prepare(user);
  }

  // Returns how the process ended.
  int TryInACopy(User& user, const Fault& fault) const {
    PutBack();
    return user.DoInACopy([this, fault](User& itself) { Try(itself, fault); });
  }

  // Tries a way at each operation that it is about, and checks what is left. Returns at how many.
  int TryAll(const Way& way, const std::vector<Operation>& operations,
             const std::function<void(const Fault&, const std::string&)>& tryOne) {
    int count = 0;
    const int step = way.fault.effect == Effect::Kill ? kKillAtEvery : 1;
    for (int at = 0; at < std::ssize(operations) && !HasFailure(); at += step) {
      const Operation operation = operations[static_cast<std::size_t>(at)];
      if ((way.operations & Bit(operation)) == 0) continue;
      Fault fault = way.fault;
      fault.at = at;
      if (GetParam().isInPlace) fault.lasting = 0;  // the old bytes have room where they were
      const std::string what = std::string(way.name) + " at operation " + std::to_string(at) + ", " +
                               std::string(faults::Name(operation)) + ": ";
      tryOne(fault, what);
      const bool mayLeaveOne = fault.effect != Effect::Fail || operation == Operation::Unlink;
      Check(what, mayLeaveOne ? 1 : 0);
      ++count;
    }
    return count;
  }

  // Without a fault: the states that the command may leave, and its operations.
  std::vector<Operation> Rehearse(User& user) {
    GetReady(user);
    Try(user, {}, KeepState);
    const Content newSettings = Read(SettingsFile());
    settings_ = StatesOf(SettingsFile(), oldSettings_);
    modules_ = StatesOf(ModuleFile(), oldModule_);
    EXPECT_EQ(record_.unflushedRenames, 0) << "a file took the name before its bytes were on the disk";
    EXPECT_EQ(settings_.back(), newSettings) << "written past the test";
    EXPECT_TRUE(!GetParam().isWholeChange || settings_.size() <= 2) << "the change reaches the file in pieces";

    // Whatever the command was to take away is gone in the end; all else is there in between as well.
    std::set<std::string> kept;
    std::ranges::set_intersection(Belongings(oldSettings_), Belongings(newSettings), std::inserter(kept, kept.end()));
    for (const Content& state : settings_) {
      EXPECT_TRUE(std::ranges::includes(Belongings(state), kept)) << "lost in between: " << state.value_or("");
    }
    const std::string header = support::ReadFile(ExecutableFolder() / "HEADER");
    const std::string footer = support::ReadFile(ExecutableFolder() / "FOOTER");
    for (const Content& state : modules_) {
      EXPECT_TRUE(state->starts_with(header) && state->ends_with(footer)) << "a part of a module: " << *state;
    }
    if (GetParam().isInPlace) {
      foldersTakeNoFiles_ = true;
      GetReady(user);
      Try(user, {});
      EXPECT_EQ(Read(SettingsFile()), newSettings) << "in place";
    }
    return {record_.operations.begin(), record_.operations.begin() + record_.count};
  }

  static std::vector<Content> StatesOf(const fs::path& file, const Content& old) {
    std::vector<Content> states = {old};
    for (int i = 0; fs::exists(States(file) / std::to_string(i)); ++i) {
      states.emplace_back(support::ReadFile(States(file) / std::to_string(i)));
    }
    return states;
  }

  // What every try must leave, and how many left-over files beside the user's it may.
  void Check(const std::string& what, int mostLeftOvers) {
    const fs::path game = fs::exists(Away()) ? Away() : GameFolder();
    EXPECT_TRUE(IsOneOf(settings_, Read(SettingsFile()))) << what << Read(SettingsFile()).value_or("no settings");
    EXPECT_TRUE(IsOneOf(modules_, Read(game / "Ulvane.module")))
        << what << Read(game / "Ulvane.module").value_or("none");
    EXPECT_TRUE(!oldSettings_ || fs::status(SettingsFile()).permissions() == fs::perms(0640)) << what;
    int leftOvers = 0;
    for (const fs::path& folder : {ExecutableFolder(), game}) {
      for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        EXPECT_TRUE(known_.contains(name) || name == ".gantrel-new") << what << name;
        if (name == ".gantrel-new") ++leftOvers;
      }
    }
    EXPECT_LE(leftOvers, mostLeftOvers) << what;
    if (leftOvers == 0) return;
    for (const fs::path& file : {SettingsFile(), game / "Ulvane.module"}) {
      EXPECT_FALSE(platform::ReplaceFile({file.native()}, "next")) << what;
      EXPECT_FALSE(fs::exists(file.parent_path() / ".gantrel-new")) << what << "is not taken over by the next write";
    }
  }

  const faults::Record& record_ = faults::Prepare();
  Content oldSettings_;
  Content oldModule_;
  std::vector<Content> settings_;  // what may be in the file afterwards
  std::vector<Content> modules_;
  bool foldersTakeNoFiles_ = false;
  const std::set<std::string> known_ = {"Ulvane.ini", "Ulvane.module", "Make.ini",    "HEADER",
                                        "FOOTER",     "W40k",          "gantrel-test"};
};

void NoteCount(const std::string& line) { std::ofstream(GANTREL_FAULT_COUNTS, std::ios::app) << line << '\n'; }

TEST_P(Faults, LoseNothing) {
  support::Use([&](User& user) {
    const std::vector<Operation> operations = Rehearse(user);
    int failures = 0;
    for (const Way& way : kFailures) {
      failures += TryAll(way, operations, [&](const Fault& fault, const std::string& /*what*/) {
        GetReady(user);
        Try(user, fault);
      });
    }
    GetReady(user);
    int kills = 0;
    for (const Way& way : kKills) {
      if (GetParam().isInPlace) break;  // an end in the middle of that cannot be made good
      kills += TryAll(way, operations, [&](const Fault& fault, const std::string& what) {
        const int status = TryInACopy(user, fault);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << what << "not killed, but " << status;
      });
    }
    if (HasFailure()) return;
    NoteCount(std::string(GetParam().name) + ": " + std::to_string(operations.size()) + " file operations, killed at " +
              std::to_string(kills) + " points, failed at " + std::to_string(failures));
  });
}

// Made for real, and met as an ordinary user. `make` returns whether this machine allows it.
struct Condition {
  const char* name;
  bool isWritten;  // the settings, all the same
  bool (*make)();
};

fs::path SmallDisk() { return support::Root() / "small"; }

bool Permit(const fs::path& path, unsigned int mode) {
  fs::permissions(path, fs::perms(mode));
  return true;
}

// The file itself is elsewhere, behind a link.
void MoveBehindLink(const fs::path& file, const fs::path& folder) {
  fs::create_directories(folder);
  fs::copy_file(file, folder / file.filename());
  fs::remove(file);
  fs::create_symlink(folder / file.filename(), file);
  Permit(folder, 0777);
  Permit(file, 0666);
}

bool FillASmallDisk() {
  fs::create_directories(SmallDisk());
  if (mount("none", SmallDisk().c_str(), "tmpfs", 0, "size=64k") != 0) return false;
  MoveBehindLink(SettingsFile(), SmallDisk());
  MoveBehindLink(ModuleFile(), SmallDisk());
  std::ofstream filler(SmallDisk() / "filler");
  while (filler << 'x' << std::flush) continue;
  return true;
}

const Condition kConditions[] = {
    {"a read-only settings file", false,
     [] { return Permit(ExecutableFolder(), 0777) && Permit(SettingsFile(), 0444); }},
    {"a settings file that cannot be read", false,
     [] { return Permit(ExecutableFolder(), 0777) && Permit(SettingsFile(), 0222); }},
    {"a folder that takes no new file", true,
     [] { return Permit(SettingsFile(), 0666) && Permit(ExecutableFolder(), 0555); }},
    {"a link", true, [] { return MoveBehindLink(SettingsFile(), support::Root() / "behind"), true; }},
    {"a full disk", false, FillASmallDisk},
};

void BecomeOrdinaryUser() {
  constexpr uid_t kNobody = 65534;
  if (geteuid() == 0 && setresuid(kNobody, kNobody, kNobody) != 0) throw std::runtime_error("is still root");
}

class FaultsOnRealDisks : public Faults {};

TEST_P(FaultsOnRealDisks, LoseNothing) {
  support::Use([&](User& user) {
    Rehearse(user);
    int tried = 0;
    for (const Condition& condition : kConditions) {
      SetUp();
      GetReady(user);
      if (!condition.make()) {
        NoteCount(std::string(GetParam().name) + ": this machine does not allow " + condition.name);
        continue;
      }
      const bool wasLink = fs::is_symlink(SettingsFile());
      const int status = user.DoInACopy([](User& itself) {
        BecomeOrdinaryUser();
        GetParam().act(itself);
      });
      EXPECT_EQ(status, 0) << condition.name;
      EXPECT_EQ(fs::is_symlink(SettingsFile()), wasLink) << condition.name;
      for (const fs::path& file : {SettingsFile(), fs::weakly_canonical(SettingsFile())}) {
        EXPECT_FALSE(fs::exists(file.parent_path() / ".gantrel-new")) << condition.name;
      }
      Permit(SettingsFile(), 0600);
      EXPECT_EQ(Read(SettingsFile()), condition.isWritten ? settings_.back() : settings_.front()) << condition.name;
      EXPECT_TRUE(IsOneOf(modules_, Read(ModuleFile()))) << condition.name;
      Permit(ExecutableFolder(), 0755);
      umount(SmallDisk().c_str());
      ++tried;
    }
    if (!HasFailure()) NoteCount(std::string(GetParam().name) + ": tried on " + std::to_string(tried) + " real disks");
  });
}

const Command kCommands[] = {
    {"Activate", Select("lstNotActive", "Beta"), Click("cmdActivate1")},
    {"ActivateAll", {}, Click("cmdActivateAll")},
    {"Move", Select("lstActive", "Gamma"), Click("cmdMoveUp"), true},
    {"Delete", Select("lstNotActive", "Beta"), Click("cmdDeleteMod"), true},
    {"NewMod", {}, MakeANewMod},
    {"AddGame", {}, AddAGame},
    {"RemoveGame", {}, RemoveAGame},
    {"Start", {}, StartTheTool},
};
const Command kUnusualCommands[] = {
    {"FirstStart", {}, StartTheTool, false, true},
    {"NewModInPlace", {}, MakeANewMod, false, false, true},
    {"DeleteInPlace", Select("lstNotActive", "Beta"), Click("cmdDeleteMod"), true, false, true},
};

std::string NameOf(const testing::TestParamInfo<Command>& row) { return row.param.name; }

INSTANTIATE_TEST_SUITE_P(Commands, Faults, testing::ValuesIn(kCommands), NameOf);
INSTANTIATE_TEST_SUITE_P(UnusualCommands, Faults, testing::ValuesIn(kUnusualCommands), NameOf);
INSTANTIATE_TEST_SUITE_P(Commands, FaultsOnRealDisks, testing::ValuesIn(kCommands), NameOf);

}  // namespace
