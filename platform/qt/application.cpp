#include "platform/application.h"

#include <QApplication>
#include <QEvent>
#include <QEventLoop>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMetaObject>
#include <QMessageLogContext>
#include <QSettings>
#include <QSocketNotifier>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

#include "platform/qt/accessible.h"
#include "platform/qt/fonts.h"
#include "platform/qt/run.h"
#include "platform/qt/style.h"

// Qt's macro must stand outside all namespaces.
static void LoadIcon() { Q_INIT_RESOURCE(icon); }

namespace platform {
namespace {

bool IsPressed(const QEvent& event) {
  switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
      return true;
    default:
      return false;
  }
}

bool Clicks(int key) {
  constexpr std::array kClicking = {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape, Qt::Key_Space};
  if (key == Qt::Key_Space && qobject_cast<QLineEdit*>(QApplication::focusWidget()) != nullptr) return false;
  return std::ranges::find(kClicking, key) != kClicking.end();
}

struct EventFilter : QObject {
  bool eventFilter(QObject* receiver, QEvent* event) override {
    const auto* const key = dynamic_cast<const QKeyEvent*>(event);
    if (key != nullptr && key->type() == QEvent::KeyRelease) released = {key->key(), key->timestamp()};
    // Keys that click are to click once, however long they are held down, also where the first click has opened a
    // dialog.
    const bool clicksAgain = key != nullptr && IsPressed(*key) && IsRepeat(*key) && Clicks(key->key());
    if (clicksAgain || (IsDroppingInput() && IsPressed(*event))) return true;
    if (event->type() != QEvent::Quit) return QObject::eventFilter(receiver, event);
    // The desktop asks by this event, at the end of its session for one. Qt would ask every window to close
    // first, and stay when one refuses.
    Quit();
    return true;
  }

  std::pair<int, quint64> released;  // the last key, and when
};

// While the display is opened. In its own words Qt would have the user install it again.
void TellWhyNoDisplay(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  static std::string reason;  // the first; what follows comes of it
  const std::string_view subject = context.category == nullptr ? "" : context.category;
  const bool isAboutDisplays = subject.empty() || subject.starts_with("qt.qpa");
  if (reason.empty() && (isAboutDisplays || type == QtFatalMsg))
    reason = message.section('\n', 0, 0).trimmed().toStdString();
  if (type != QtFatalMsg) return;
  std::fprintf(stderr, "gantrel: there is no display to show its windows on (%s)\n", reason.c_str());
  std::_Exit(EXIT_FAILURE);
}

}  // namespace

struct Running {
  Running(std::span<const WindowLayout> itsLayouts, int& argumentCount, char** arguments)
      : layouts(itsLayouts), application(argumentCount, arguments) {}

  std::span<const WindowLayout> layouts;
  QApplication application;
  EventFilter eventFilter;
  std::unique_ptr<QSocketNotifier> quitRequests;
  int openWindows = 0;
  bool isInMainLoop = false;
  bool isDroppingInput = false;
  bool isQuitting = false;
};

namespace {

// As Qt has one application object for the whole program, so has the platform.
Running* running = nullptr;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

// Qt leaves by exit() when the display goes, from the middle of whatever it does. Taking down what lives on
// there, and again at the end of main, would be a fault; the system takes it all.
void EndWithoutDisplay() {
  if (running == nullptr) return;
  std::fputs("gantrel: the display has gone\n", stderr);
  std::_Exit(EXIT_FAILURE);
}

QtMessageHandler qtsOwn = nullptr;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

// On Wayland Qt leaves by _exit(), which calls nobody, right after it has said so.
void ListenForEndOfDisplay(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  qtsOwn(type, context, message);
  if (message.startsWith("The Wayland connection ")) EndWithoutDisplay();
}

// Signals first: a thread that Qt starts is to have the same ones blocked.
std::unique_ptr<Running> OpenDisplay(std::span<const WindowLayout> layouts, int& argumentCount, char** arguments) {
  const QtMessageHandler before = qInstallMessageHandler(TellWhyNoDisplay);
  const int quitRequests = QuitRequestDescriptor();
  auto opened = std::make_unique<Running>(layouts, argumentCount, arguments);
  if (quitRequests >= 0) {
    opened->quitRequests = std::make_unique<QSocketNotifier>(quitRequests, QSocketNotifier::Read);
    QObject::connect(opened->quitRequests.get(), &QSocketNotifier::activated, [notifier = opened->quitRequests.get()] {
      notifier->setEnabled(false);
      Quit();
    });
  }
  if (qtsOwn == nullptr) qtsOwn = before;
  qInstallMessageHandler(ListenForEndOfDisplay);
  return opened;
}

}  // namespace

Application::Application(std::span<const WindowLayout> layouts, int& argumentCount, char** arguments)
    : running_(OpenDisplay(layouts, argumentCount, arguments)) {
  running = running_.get();
  [[maybe_unused]] static const int registered = std::atexit(EndWithoutDisplay);
  // Nothing is kept outside the program's folder; Qt's file dialog would, in a file for all of its programs.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null");
  // Control sizes are given, so the look must be one that fits them; colours still follow the desktop.
  QApplication::setStyle(new Style);
  ChooseFonts();
  TellScreenReaders();
  LoadIcon();
  QApplication::setWindowIcon(QIcon(":/gantrel.png"));
  QGuiApplication::setDesktopFileName("gantrel");
  qApp->installEventFilter(&running->eventFilter);
  // At the end of its session, Windows tells only this much while the program waits in an event loop of its own.
  QObject::connect(qApp, &QCoreApplication::aboutToQuit, Quit);
}

Application::~Application() {
  running_.reset();
  running = nullptr;
}

int Application::Run() {
  if (IsQuitting() || running->openWindows == 0) return EXIT_SUCCESS;
  running->isInMainLoop = true;
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

// At start-up the setup dialog closes before the main window was opened.
void NoteWindowClosed() {
  if (--running->openWindows == 0 && running->isInMainLoop) Quit();
}

void DropPendingInput() {
  constexpr int kLongest = 100;  // milliseconds
  running->isDroppingInput = true;
  QCoreApplication::processEvents(QEventLoop::AllEvents, kLongest);
  // On Windows Qt puts what the system had for it behind what was posted. Without waiting: the program is not
  // at rest yet.
  bool isDelivered = false;
  const auto note = [&isDelivered] { isDelivered = true; };
  QMetaObject::invokeMethod(qApp, note, Qt::QueuedConnection);
  while (!isDelivered) QCoreApplication::processEvents();
  running->isDroppingInput = false;
}

// From the event loop, since a window may be destroyed by what is pending, and it may be the one whose handler this is.
void DropInputAfterHandler() {
  running->isDroppingInput = true;
  QMetaObject::invokeMethod(qApp, DropPendingInput, Qt::QueuedConnection);
}

bool IsDroppingInput() { return running->isDroppingInput; }

// X11 sends a release and a press of one time, which Qt does not always see to belong together.
bool IsRepeat(const QKeyEvent& press) {
  const bool isOneTime = press.timestamp() != 0 && QGuiApplication::platformName() == "xcb" &&
                         running->eventFilter.released == std::pair(press.key(), press.timestamp());
  return press.isAutoRepeat() || isOneTime;
}

// Ending the loops says once more that the program is about to quit, in some versions of Qt.
void Quit() {
  if (std::exchange(running->isQuitting, true)) return;
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
