#include "platform/application.h"

#include <QApplication>
#include <QEvent>
#include <QIcon>
#include <QSocketNotifier>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "platform/busy_pointer.h"
#include "platform/events.h"
#include "platform/qt/run.h"
#include "platform/quit_requests.h"

// The toolkit's macro must stand outside all namespaces.
static void LoadIcon() { Q_INIT_RESOURCE(icon); }

namespace platform {
namespace {

// The desktop asks by this event, at the end of its session for one. The toolkit would ask every window to close first,
// and stay when one refuses.
struct QuitEventFilter : QObject {
  bool eventFilter(QObject* receiver, QEvent* event) override {
    if (event->type() != QEvent::Quit) return QObject::eventFilter(receiver, event);
    Quit();
    return true;
  }
};

struct Running {
  Running(std::span<const WindowLayout> itsLayouts, int& argumentCount, char** arguments)
      : layouts(itsLayouts), application(argumentCount, arguments) {}

  std::span<const WindowLayout> layouts;
  QApplication application;
  QuitEventFilter quitEventFilter;
  std::unique_ptr<QSocketNotifier> quitRequests;
  int openWindows = 0;
  bool isQuitting = false;
};

// As the toolkit has one application object for the whole program, so has the platform.
std::unique_ptr<Running> running;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

}  // namespace

Application::Application(std::span<const WindowLayout> layouts, int& argumentCount, char** arguments) {
  running = std::make_unique<Running>(layouts, argumentCount, arguments);
  // Control sizes are given, so the look must be one that fits them; colours still follow the desktop.
  QApplication::setStyle("Fusion");
  LoadIcon();
  QApplication::setWindowIcon(QIcon(":/gantrel.png"));
  QGuiApplication::setDesktopFileName("gantrel");
  qApp->installEventFilter(&running->quitEventFilter);
  // At the end of its session, Windows tells only this much while the program waits in an event loop of its own.
  QObject::connect(qApp, &QCoreApplication::aboutToQuit, Quit);
  if (const int descriptor = QuitRequestDescriptor(); descriptor >= 0) {
    running->quitRequests = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    QObject::connect(running->quitRequests.get(), &QSocketNotifier::activated,
                     [notifier = running->quitRequests.get()] {
                       notifier->setEnabled(false);
                       Quit();
                     });
  }
}

Application::~Application() { running.reset(); }

int Application::Run() {
  if (IsQuitting() || running->openWindows == 0) return EXIT_SUCCESS;
  return QApplication::exec();
}

const WindowLayout& FindLayout(std::string_view name) {
  const auto found = std::ranges::find(running->layouts, name, &WindowLayout::name);
  if (found == running->layouts.end()) StopForUnknownName("window", name);
  return *found;
}

void StopForUnknownName(std::string_view kind, std::string_view name) {
  std::fprintf(stderr, "gantrel: the layouts have no %s '%s'\n", std::string(kind).c_str(), std::string(name).c_str());
  std::abort();
}

void NoteWindowOpened() { ++running->openWindows; }

void NoteWindowClosed() {
  if (--running->openWindows == 0) QCoreApplication::exit(EXIT_SUCCESS);
}

void Quit() {
  running->isQuitting = true;
  QCoreApplication::exit(EXIT_SUCCESS);
}

bool IsQuitting() { return running->isQuitting; }

BusyPointer::BusyPointer() { QApplication::setOverrideCursor(Qt::WaitCursor); }

BusyPointer::~BusyPointer() { QApplication::restoreOverrideCursor(); }

void DoEvents() { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); }

void WaitUntil(const std::function<bool()>& isDone) {
  while (!isDone() && !IsQuitting()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

}  // namespace platform
