// The price of the main window's commands, in the real window. Each is compared with the reads and writes that it makes
// itself, made once more by the system's bare calls right after it: the same number, of the same files.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <array>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>

#include "app/layouts.h"
#include "bench/raw_files.h"
#include "bench/sample.h"
#include "mods/frmMain.h"
#include "platform/application.h"
#include "tests/support/file_calls.h"

namespace {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

// A control of the main window, by its name.
template <typename Widget>
Widget& Control(const char* name) {
  for (const QWidget* const window : QApplication::topLevelWidgets()) {
    if (auto* const control = window->findChild<Widget*>(name)) return *control;
  }
  std::abort();
}

void SelectMiddle(const char* list) {
  auto& entries = Control<QListWidget>(list);
  entries.setCurrentRow((entries.count() - 1) / 2);
}

struct Command {
  const char* name;
  sample::Active before;
  std::function<void()> select;
  // Calls `start` when the command's own work begins.
  std::function<void(const frmMain& window, const std::function<void()>& start)> run;
};

auto Call(void (frmMain::*operation)() const) {
  return [operation](const frmMain& window, const std::function<void()>& start) {
    start();
    (window.*operation)();
  };
}

auto Click(const char* button) {
  return [button](const frmMain&, const std::function<void()>& start) {
    start();
    Control<QPushButton>(button).click();
  };
}

// What comes before the answer is the user's time.
auto ClickAndAnswerOk(const char* button) {
  return [button](const frmMain&, const std::function<void()>& start) {
    QTimer::singleShot(0, [start] {
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      start();
      box->button(QMessageBox::Ok)->click();
    });
    Control<QPushButton>(button).click();
  };
}

void SelectFirst(const char* list) { Control<QListWidget>(list).setCurrentRow(0); }

const std::array kCommands = {
    Command{"fill", sample::Active::EverySecond, [] {}, Call(&frmMain::ListMods)},
    Command{"activate one", sample::Active::EverySecond, [] { SelectMiddle("lstNotActive"); }, Click("cmdActivate1")},
    Command{"move one", sample::Active::EverySecond, [] { SelectMiddle("lstActive"); }, Click("cmdMoveDown")},
    Command{"delete the first", sample::Active::EverySecond, [] { SelectFirst("lstNotActive"); },
            ClickAndAnswerOk("cmdDeleteMod")},
    Command{"activate all", sample::Active::None, [] {}, Click("cmdActivateAll")},
    Command{"module file", sample::Active::All, [] {}, Call(&frmMain::MakeModule)},
};

void MakeTheSameCalls(const support::FileCalls& calls) {
  for (const auto& file : calls.files) {
    for (std::size_t i = 0; i < file.opensToRead; ++i) raw::Read(file.path);
    if (file.opensToWrite == 0) continue;
    const std::string bytes(file.bytesWritten / file.opensToWrite, 'x');
    const std::string path = file.path + ".limit";
    for (std::size_t i = 0; i < file.opensToWrite; ++i) raw::Replace(path, bytes);
  }
}

void Measure(benchmark::State& state, const Command& command, int mods) {
  using benchmark::Counter;
  frmMain window;
  window.Form_Load();
  support::FileCalls calls;
  double limit = 0;
  for ([[maybe_unused]] auto pass : state) {
    raw::Replace(support::SettingsFile(), sample::Settings(mods, command.before));
    window.ListMods();
    command.select();
    Clock::time_point start;
    command.run(window, [&] {
      support::StartCounting();
      start = Clock::now();
    });
    state.SetIterationTime(SecondsSince(start));
    calls = support::EndCounting();
    const auto limitStart = Clock::now();
    MakeTheSameCalls(calls);
    limit += SecondsSince(limitStart);
  }
  state.counters["limit"] = Counter(limit, Counter::kAvgIterations);
  state.counters["reads"] = static_cast<double>(calls.OpensToRead(""));
  state.counters["writes"] = static_cast<double>(calls.renames);
}

int Run(int argumentCount, char** arguments) {
  benchmark::Initialize(&argumentCount, arguments);
  argumentCount = 1;
  const platform::Application application(Layouts(), argumentCount, arguments);
  support::Reset();
  std::filesystem::create_directories(sample::GameFolder());
  for (const int mods : {10, 30, 100, 300, 1000}) {
    raw::Replace(support::SettingsFile(), sample::Settings(mods, sample::Active::All));
    for (const Command& command : kCommands) {
      auto* const row =
          benchmark::RegisterBenchmark((std::to_string(mods) + "/" + command.name).c_str(), Measure, command, mods);
      row->UseManualTime();
      const bool takesLong = mods >= 300 && command.name == std::string_view("activate all");
      if (takesLong) row->Iterations(1)->Repetitions(1);
    }
  }
  benchmark::RunSpecifiedBenchmarks();
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argumentCount, char** arguments) { return support::RunInOwnFolder(argumentCount, arguments, Run); }
