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

// Qt requires this macro outside all namespaces.
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
    // A held-down key clicks only once, even if the first click opened a dialog.
    const bool clicksAgain = key != nullptr && IsPressed(*key) && IsRepeat(*key) && Clicks(key->key());
    if (clicksAgain || (IsDroppingInput() && IsPressed(*event))) return true;
    if (event->type() != QEvent::Quit) return QObject::eventFilter(receiver, event);
    // The desktop sends this event, such as at the end of the session. Qt would first ask every window to close, and
    // stay if one refuses.
    Quit();
    return true;
  }

  std::pair<int, quint64> released;  // the last key, and its time
};

// Active while the display is opened. Replaces Qt's misleading "reinstall the application" text.
void TellWhyNoDisplay(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  static std::string reason;  // the first; later ones are consequences
  const std::string_view subject = context.category == nullptr ? "" : context.category;
  const bool isAboutDisplays = subject.empty() || subject.starts_with("qt.qpa");
  if (reason.empty() && (isAboutDisplays || type == QtFatalMsg))
    reason = message.section('\n', 0, 0).trimmed().toStdString();
  if (type != QtFatalMsg) return;
  std::fprintf(stderr, "gantrel: there is no display (%s)\n", reason.c_str());
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

// One per program, like Qt's application object.
Running* running = nullptr;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

// When the display disconnects, Qt calls exit() from the middle of any code. Destroying Qt's objects there would crash;
// the system frees everything.
void EndWithoutDisplay() {
  if (running == nullptr) return;
  std::fputs("gantrel: the display connection was lost\n", stderr);
  std::_Exit(EXIT_FAILURE);
}

QtMessageHandler qtsOwn = nullptr;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

// On Wayland, Qt calls _exit(), which runs no handlers, right after this message.
void ListenForEndOfDisplay(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  qtsOwn(type, context, message);
  if (message.startsWith("The Wayland connection ")) EndWithoutDisplay();
}

// Signals first: threads that Qt starts must inherit the blocked ones.
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
  // Write nothing outside the program's folder; Qt's file dialog would use a settings file shared by all Qt programs.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null");
  // Control sizes are fixed, so the style must fit them; colours still follow the desktop.
  QApplication::setStyle(new Style);
  ChooseFonts();
  TellScreenReaders();
  LoadIcon();
  QApplication::setWindowIcon(QIcon(":/gantrel.png"));
  QGuiApplication::setDesktopFileName("gantrel");
  qApp->installEventFilter(&running->eventFilter);
  // At the end of a Windows session, a nested event loop gets only this signal.
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

// At start-up the setup dialog closes before the main window opens.
void NoteWindowClosed() {
  if (--running->openWindows == 0 && running->isInMainLoop) Quit();
}

void DropPendingInput() {
  constexpr int kLongest = 100;  // milliseconds
  running->isDroppingInput = true;
  QCoreApplication::processEvents(QEventLoop::AllEvents, kLongest);
  // On Windows, Qt delivers system events after posted ones. Does not wait: the program is not idle yet.
  bool isDelivered = false;
  const auto note = [&isDelivered] { isDelivered = true; };
  QMetaObject::invokeMethod(qApp, note, Qt::QueuedConnection);
  while (!isDelivered) QCoreApplication::processEvents();
  running->isDroppingInput = false;
}

// Queued: pending events may destroy windows, even the one whose handler is running.
void DropInputAfterHandler() {
  running->isDroppingInput = true;
  QMetaObject::invokeMethod(qApp, DropPendingInput, Qt::QueuedConnection);
}

bool IsDroppingInput() { return running->isDroppingInput; }

// X11 repeats keys as release and press of the same time, which Qt does not always detect.
bool IsRepeat(const QKeyEvent& press) {
  const bool isOneTime = press.timestamp() != 0 && QGuiApplication::platformName() == "xcb" &&
                         running->eventFilter.released == std::pair(press.key(), press.timestamp());
  return press.isAutoRepeat() || isOneTime;
}

// In some versions of Qt, ending the loops emits aboutToQuit again.
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
