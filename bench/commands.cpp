// The cost of the main window's commands, in the real windows. The baseline is unavoidable work: read each needed file
// once, replace files, list the game's folder, and fill the lists from memory.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <array>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "app/layouts.h"
#include "bench/raw_files.h"
#include "bench/sample.h"
#include "mods/frmMain.h"
#include "platform/application.h"
#include "platform/window.h"

namespace {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

template <typename Widget>
Widget& Control(const char* window, const char* name) {
  for (const QWidget* const one : QApplication::topLevelWidgets()) {
    auto* const control = one->objectName() == window ? one->findChild<Widget*>(name) : nullptr;
    if (control != nullptr) return *control;
  }
  std::abort();
}

QPushButton& Button(const char* name) { return Control<QPushButton>("frmMain", name); }
QListWidget& List(const char* name) { return Control<QListWidget>("frmMain", name); }

struct Command {
  const char* name;
  sample::Active before;
  std::function<void()> prepare;
  // Calls `start` when the command's own work begins.
  std::function<void(frmMain& window, const std::function<void()>& start)> run;
  int settingsWritten = 0;  // number of writes; per mod if `isForEach`
  int modulesWritten = 0;
  bool isForEach = false;
};

auto Click(const char* button) {
  return [button](frmMain&, const std::function<void()>& start) {
    start();
    Button(button).click();
  };
}

// The time before the answer is the user's.
void AnswerOk(const std::function<void()>& start) {
  auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
  if (box == nullptr) return QTimer::singleShot(0, [start] { AnswerOk(start); });
  start();
  box->button(QMessageBox::Ok)->click();
}

auto ClickAndAnswerOk(const char* button) {
  return [button](frmMain&, const std::function<void()>& start) {
    QTimer::singleShot(0, [start] { AnswerOk(start); });
    Button(button).click();
  };
}

auto Select(const char* list, double place) {
  return [=] {
    auto& entries = List(list);
    entries.setCurrentRow(static_cast<int>((entries.count() - 1) * place));
  };
}

void OpenNewMod() {
  Button("cmdNewMod").click();
  Control<QLineEdit>("frmNew", "txtName").setText("New");
  auto& folders = Control<QListWidget>("frmNew", "lstDirs");
  for (int row = 0; row < folders.count(); ++row) {
    if (folders.item(row)->text().startsWith("Folder ")) folders.item(row)->setSelected(true);
  }
}

void ConfirmNewMod(frmMain& /*window*/, const std::function<void()>& start) {
  auto& button = Control<QPushButton>("frmNew", "OKButton");
  start();
  button.click();
}

constexpr std::array kLists = {"lstNotActive", "lstActive"};

// Otherwise unchanged entries would be skipped.
void EmptyLists() {
  for (const char* const list : kLists) List(list).clear();
}

void Fill(frmMain& window, const std::function<void()>& start) {
  start();
  window.ListMods();
}

const Command kFill = {"fill", sample::Active::EverySecond, EmptyLists, Fill};
const Command kActivate = {
    "activate one", sample::Active::EverySecond, Select("lstNotActive", 0.5), Click("cmdActivate1"), 1, 1};
const Command kMove = {"move one", sample::Active::EverySecond, Select("lstActive", 0.5), Click("cmdMoveDown"), 1, 1};
const Command kDelete = {"delete the first", sample::Active::EverySecond, Select("lstNotActive", 0),
                         ClickAndAnswerOk("cmdDeleteMod"), 1};
const Command kNew = {"new mod", sample::Active::EverySecond, OpenNewMod, ConfirmNewMod, 1};
const Command kActivateAll = {"activate all", sample::Active::None, [] {}, Click("cmdActivateAll"), 1, 1, true};

using Texts = std::array<std::vector<std::string>, 2>;

Texts EntriesNow() {
  Texts texts;
  for (std::size_t i = 0; i < kLists.size(); ++i) {
    const auto& list = List(kLists[i]);
    for (int row = 0; row < list.count(); ++row) texts[i].push_back(list.item(row)->text().toStdString());
  }
  return texts;
}

double Limit(const Command& command, std::size_t mods) {
  const std::string settingsFile = support::SettingsFile();
  const std::string moduleFile = sample::GameFolder() / "Ulvane.module";
  const std::string settings = support::ReadFile(settingsFile);
  const std::string module = support::ReadFile(moduleFile);
  const Texts texts = EntriesNow();
  std::array<QListWidget*, kLists.size()> lists = {};
  for (std::size_t i = 0; i < lists.size(); ++i) lists[i] = &List(kLists[i]);

  const auto start = Clock::now();
  raw::Read(settingsFile);
  for (const char* const file : {"Make.ini", "HEADER", "FOOTER"}) {
    if (command.modulesWritten > 0) raw::Read(support::ExecutableFolder() / file);
  }
  for (std::size_t pass = 0; pass < (command.isForEach ? mods : 1); ++pass) {
    raw::List(sample::GameFolder() / "W40k");
    for (std::size_t i = 0; i < lists.size(); ++i) {
      lists[i]->clear();
      for (const std::string& text : texts[i]) lists[i]->addItem(QString::fromStdString(text));
    }
    // The module file has one mod in the first pass, all in the last.
    const std::size_t moduleSize = command.isForEach ? module.size() * (pass + 1) / mods : module.size();
    if (command.settingsWritten > 0) raw::Replace(settingsFile + ".limit", settings);
    if (command.modulesWritten > 0) raw::Replace(moduleFile + ".limit", module.substr(0, moduleSize));
  }
  return SecondsSince(start);
}

void Measure(benchmark::State& state, const Command& command, int mods, int folders) {
  frmMain window;
  raw::Replace(support::SettingsFile(), sample::Settings(mods, command.before, folders));
  window.Form_Load();
  double limit = 0;
  for ([[maybe_unused]] auto pass : state) {
    raw::Replace(support::SettingsFile(), sample::Settings(mods, command.before, folders));
    window.ListMods();
    command.prepare();
    platform::DoEvents();
    Clock::time_point start;
    command.run(window, [&] { start = Clock::now(); });
    state.SetIterationTime(SecondsSince(start));
    platform::DoEvents();  // removes a closed dialog
    limit += Limit(command, static_cast<std::size_t>(mods));
  }
  state.counters["limit"] = benchmark::Counter(limit, benchmark::Counter::kAvgIterations);
}

void AddFolders(int count) {
  const auto base = sample::GameFolder() / "W40k";
  for (int i = 0; i < count; ++i) std::filesystem::create_directories(base / ("Folder " + std::to_string(i)));
}

void Register(const Command& command, const std::string& subject, int mods, int folders = 2) {
  auto* const row =
      benchmark::RegisterBenchmark((subject + "/" + command.name).c_str(), [=, &command](benchmark::State& state) {
        sample::MakeFolders(mods);
        if (&command == &kNew) AddFolders(folders);
        Measure(state, command, mods, &command == &kNew ? 2 : folders);
      });
  row->UseManualTime();
  const bool takesLong = command.isForEach && mods >= 100;
  if (takesLong) row->Iterations(1)->Repetitions(mods >= 1000 ? 1 : 3);
  if (mods >= 10'000 || folders >= 1000) row->Iterations(1);
}

int Run(int argumentCount, char** arguments) {
  benchmark::Initialize(&argumentCount, arguments);
  argumentCount = 1;
  const platform::Application application(Layouts(), argumentCount, arguments);
  const platform::Window open("frmDoWSetup");  // keeps the tool running after its last dialog
  open.Show();
  support::Reset();
  std::filesystem::create_directories(sample::GameFolder());
  for (const int mods : {10, 30, 100, 300, 1000}) {
    for (const Command* const command : {&kFill, &kActivate, &kMove, &kDelete, &kNew, &kActivateAll}) {
      Register(*command, std::to_string(mods), mods);
    }
  }
  for (const int many : {1000, 10'000}) {
    const std::string subject = "many " + std::to_string(many);
    Register(kNew, subject, 10, many);
    Register(kDelete, subject, many);
    Register(kMove, subject, 10, many);
  }
  benchmark::RunSpecifiedBenchmarks();
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argumentCount, char** arguments) { return support::RunInOwnFolder(argumentCount, arguments, Run); }
