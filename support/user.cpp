#include "support/user.h"

#include <QAbstractButton>
#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QFontInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iterator>
#include <semaphore>
#include <stdexcept>
#include <thread>
#include <utility>

#include "app/layouts.h"
#include "mods/frmMain.h"
#include "platform/application.h"
#include "platform/qt/native.h"
#include "platform/qt/run.h"
#include "platform/qt/text.h"

namespace support {

using platform::FromQt;
using platform::ToQt;

namespace {

[[noreturn]] void Fail(const std::string& what, std::string_view name) {
  throw std::runtime_error(what + " '" + std::string(name) + "'");
}

constexpr std::chrono::milliseconds kPatience = std::chrono::minutes(1);

}  // namespace

// Hands the user's acts to the tool's thread and tells when the tool has come to rest.
class Hands {
 public:
  Hands() {
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &context_, [this] {
      if (std::exchange(isActing_, false)) rest_.release();
    });
  }

  void AwaitRest() {
    if (rest_.try_acquire_for(kPatience)) return;
    std::fputs("The tool hangs.\n", stderr);
    std::abort();
  }

  void Do(const std::function<void()>& act) {
    if (hasEnded_) throw std::runtime_error("the tool has ended");
    DoOnce(act);
    DoOnce([this] { NoteActive(); });  // what the act has put off until the next event has happened as well
    if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
  }

  // What the user has in front of them: a dialog, or else the active window, or the last one that was. There are
  // displays that make none active when that one goes.
  QWidget& Front() const {
    QWidgetList windows = {QApplication::activeModalWidget(), QApplication::activeWindow(), lastActive_};
    windows += QApplication::topLevelWidgets();
    const auto isInUse = [](const QWidget* widget) {
      return widget != nullptr && widget->isVisible() && widget->isEnabled();
    };
    const auto front = std::ranges::find_if(windows, isInUse);
    if (front == windows.end()) Fail("no window is", "shown");
    return **front;
  }

  bool HasEnded() const { return hasEnded_; }

  void NoteEnd() {
    hasEnded_ = true;
    rest_.release();
  }

 private:
  void DoOnce(const std::function<void()>& act) {
    if (hasEnded_) return;
    const auto start = [this, act] {
      isActing_ = true;
      try {
        act();
      } catch (...) {
        failure_ = std::current_exception();
      }
    };
    QMetaObject::invokeMethod(qApp, start, Qt::QueuedConnection);
    AwaitRest();
  }

  void NoteActive() {
    if (QApplication::activeModalWidget() == nullptr && QApplication::activeWindow() != nullptr)
      lastActive_ = QApplication::activeWindow();
  }

  QObject context_;  // the connection ends with it
  std::counting_semaphore<> rest_{0};
  std::exception_ptr failure_;
  QPointer<QWidget> lastActive_;
  bool isActing_ = true;  // the tool's start is the first act
  std::atomic<bool> hasEnded_ = false;
};

namespace {

template <typename Look>
auto See(User& user, const Look& look) {
  decltype(look()) result{};
  user.Do([&] { result = look(); });
  return result;
}

std::vector<QWidget*> Windows(std::string_view name) {
  std::vector<QWidget*> windows;
  std::ranges::copy_if(QApplication::topLevelWidgets(), std::back_inserter(windows), [&](const QWidget* window) {
    return window->isVisible() && FromQt(window->objectName()) == name;
  });
  return windows;
}

QWidget& Control(std::string_view name) {
  QWidgetList windows = QApplication::topLevelWidgets();
  if (QWidget* const active = QApplication::activeWindow()) windows.prepend(active);
  for (const QWidget* const window : windows) {
    auto* const control = window->isVisible() ? window->findChild<QWidget*>(ToQt(name)) : nullptr;
    if (control != nullptr) return *control;
  }
  Fail("no control", name);
}

QWidget* ShownDialog() { return QApplication::activeModalWidget(); }

void Activate(QWidget& window) {
  if (window.isActiveWindow() || ShownDialog() != nullptr) return;
  window.activateWindow();
  QApplication::processEvents();
}

// A click at a point of a widget, given to its window as the display would: what is in the way gets it instead.
void ClickAt(QWidget& widget, QPoint point, QTest::MouseAction action = QTest::MouseClick) {
  QWidget* const window = widget.window();
  Activate(*window);
  QTest::mouseEvent(action, window->windowHandle(), Qt::LeftButton, Qt::NoModifier, widget.mapTo(window, point));
}

void ClickOn(QWidget& widget) { ClickAt(widget, widget.rect().center()); }

QKeyCombination Combination(Key key) {
  constexpr std::array<QKeyCombination, 11> kKeys = {
      Qt::Key_Tab,          Qt::Key_Return,         Qt::Key_Escape, Qt::Key_Space,  Qt::Key_Up, Qt::Key_Down,
      Qt::ALT | Qt::Key_Up, Qt::ALT | Qt::Key_Down, Qt::Key_Delete, Qt::Key_Insert, Qt::Key_F5};
  return kKeys.at(static_cast<std::size_t>(key));
}

std::string CaptionOf(const QAbstractButton& button) { return FromQt(button.text().remove('&')); }

void ClickOnEntry(std::string_view list, std::string_view text, QTest::MouseAction action) {
  auto& box = dynamic_cast<QListWidget&>(Control(list));
  const auto found = box.findItems(ToQt(text), Qt::MatchExactly);
  if (found.isEmpty()) Fail("no entry", text);
  box.scrollToItem(found.front());
  ClickAt(*box.viewport(), box.visualItemRect(found.front()).center(), action);
}

}  // namespace

void User::Click(std::string_view control) {
  Do([&] { ClickOn(Control(control)); });
}

void User::ClickEntry(std::string_view list, std::string_view text) {
  Do([&] { ClickOnEntry(list, text, QTest::MouseClick); });
}

void User::Type(std::string_view text) {
  Do([&] {
    Activate(hands_->Front());
    QWidget* const focused = QApplication::focusWidget();
    if (focused == nullptr) Fail("no focus for", text);
    // Characters of any keyboard; which key they are on does not matter.
    for (const QChar& character : ToQt(text))
      QTest::sendKeyEvent(QTest::Click, focused, Qt::Key_unknown, QString(character), Qt::NoModifier);
  });
}

void User::Press(Key key) {
  Do([&] {
    Activate(hands_->Front());
    if (QGuiApplication::focusWindow() == nullptr) Fail("no window has the focus for", "a key");
    const QKeyCombination keys = Combination(key);
    QTest::keyClick(QGuiApplication::focusWindow(), keys.key(), keys.keyboardModifiers());
  });
}

void User::GoTo(std::string_view control) {
  constexpr int kMostControls = 16;
  Do([&] { Activate(*Control(control).window()); });
  for (int i = 0; i < kMostControls; ++i) {
    if (Focus() == control) return;
    Press(Key::Tab);
  }
  Fail("the Tab key does not come to", control);
}

void User::SwitchToAnotherProgram() {
  Do([&] {
    QWidget& window = hands_->Front();
    QWidget other;
    other.show();
    Activate(other);
    if (!other.isActiveWindow()) Fail("cannot leave", FromQt(window.objectName()));
    Activate(window);
  });
}

void User::Hold(Key key) {
  Press(key);
  Do([&] {
    QKeyEvent again(QEvent::KeyPress, Combination(key).key(), Qt::NoModifier, "", true);
    QApplication::sendEvent(hands_->Front().windowHandle(), &again);
  });
}

void User::Paste(std::u16string_view text) {
  Do([&] {
    QApplication::clipboard()->setText(QString::fromStdU16String(std::u16string(text)));
    QTest::keyClick(QGuiApplication::focusWindow(), Qt::Key_V, Qt::ControlModifier);
  });
}

void User::DoubleClickEntry(std::string_view list, std::string_view text) {
  Do([&] { ClickOnEntry(list, text, QTest::MouseDClick); });
}

void User::TurnWheel(std::string_view control) {
  Do([&] {
    const QWidget& widget = Control(control);
    const QPointF point = widget.mapTo(widget.window(), widget.rect().center());
    const QPoint notch(0, -QWheelEvent::DefaultDeltasPerStep);
    QWheelEvent event(point, point, {}, notch, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);  // as one from the display, which may give the focus as well
    QApplication::instance()->notify(widget.window()->windowHandle(), &event);
  });
}

void User::ClickWhile(std::string_view button, std::string_view list, std::string_view other) {
  // In this order: the toolkit's own click lets events in on some systems.
  const auto meanwhile = [other] {
    QWidget& control = Control(other);
    QWindow* const window = control.window()->windowHandle();
    window->close();
    QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, control.mapTo(control.window(), control.rect().center()));
  };
  const auto later = [&] { QMetaObject::invokeMethod(qApp, meanwhile, Qt::QueuedConnection); };
  Watch(list, later, [&] { Click(button); });
}

bool User::IsBusy(std::string_view list, const std::function<void()>& act) {
  bool isBusy = false;
  const auto look = [&] {
    const QCursor* const pointer = QApplication::overrideCursor();
    isBusy = pointer != nullptr && pointer->shape() == Qt::WaitCursor;
  };
  Watch(list, look, act);
  return isBusy;
}

void User::Watch(std::string_view list, const std::function<void()>& look, const std::function<void()>& act) {
  const QObject context;  // the connections end with it
  Do([&] {
    const QAbstractItemModel* const model = dynamic_cast<QListWidget&>(Control(list)).model();
    QObject::connect(model, &QAbstractItemModel::rowsInserted, &context, look, Qt::DirectConnection);
    QObject::connect(model, &QAbstractItemModel::rowsRemoved, &context, look, Qt::DirectConnection);
  });
  act();
}

int User::CountWindows(std::string_view window) {
  return See(*this, [&] { return static_cast<int>(Windows(window).size()); });
}

std::vector<std::string> User::Entries(std::string_view list) {
  return See(*this, [&] {
    const QWidget& control = Control(list);
    const auto* const dropDown = qobject_cast<const QComboBox*>(&control);
    const auto* const model =
        dropDown != nullptr ? dropDown->model() : dynamic_cast<const QListWidget&>(control).model();
    std::vector<std::string> texts;
    for (int row = 0; row < model->rowCount(); ++row) texts.push_back(FromQt(model->index(row, 0).data().toString()));
    return texts;
  });
}

std::string User::Selected(std::string_view list) {
  return See(*this, [&] {
    if (auto* const dropDown = qobject_cast<QComboBox*>(&Control(list))) return FromQt(dropDown->currentText());
    const auto selected = dynamic_cast<QListWidget&>(Control(list)).selectedItems();
    return selected.isEmpty() ? std::string() : FromQt(selected.front()->text());
  });
}

bool User::IsEnabled(std::string_view control) {
  return See(*this, [&] { return Control(control).isEnabled(); });
}

std::string User::EmptyText(std::string_view list) {
  return See(*this, [&] {
    const auto* const box = dynamic_cast<platform::NativeListBox*>(&Control(list));
    return box == nullptr ? std::string() : FromQt(box->emptyText);
  });
}

std::string User::Font(std::string_view control) {
  return See(*this, [&] { return FromQt(QFontInfo(Control(control).font()).family()); });
}

std::string User::Focus() {
  return See(*this, [] {
    const auto isActive = [] { return QApplication::activeWindow() != nullptr; };
    if (!QTest::qWaitFor(isActive, static_cast<int>(kPatience.count()))) Fail("no window became", "active");
    const QWidget* const focused = QApplication::focusWidget();
    return focused == nullptr ? std::string() : FromQt(focused->objectName());
  });
}

std::string User::TextOfFocus() {
  return See(*this, [] {
    const auto* const box = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    return box == nullptr ? std::string() : FromQt(box->text());
  });
}

std::optional<Message> User::ShownMessage() {
  return See(*this, []() -> std::optional<Message> {
    if (ShownDialog() == nullptr) return std::nullopt;
    constexpr std::array kIcons = {"", "information", "exclamation", "critical", "question"};
    const auto* const box = qobject_cast<QMessageBox*>(ShownDialog());
    Message message;
    message.title = FromQt(ShownDialog()->windowTitle());
    message.text = FromQt(box != nullptr ? box->text() : ShownDialog()->findChild<QLabel*>()->text());
    if (box != nullptr) message.icon = kIcons.at(static_cast<std::size_t>(box->icon()));
    for (const bool isDefault : {true, false}) {
      for (const QPushButton* const button : ShownDialog()->findChildren<QPushButton*>()) {
        if (button->isDefault() == isDefault) message.buttons.push_back(CaptionOf(*button));
      }
    }
    return message;
  });
}

void User::Answer(std::string_view button) {
  Do([&] {
    for (auto* const candidate : hands_->Front().findChildren<QAbstractButton*>()) {
      const bool isMeant = CaptionOf(*candidate) == button && candidate->isVisible();
      if (isMeant) return ClickOn(*candidate);
    }
    Fail("no button", button);
  });
}

void User::CloseWindow(std::string_view window) {
  Do([&] { (window.empty() ? hands_->Front() : *Windows(window).at(0)).windowHandle()->close(); });
}

void User::SavePicture(const std::filesystem::path& file) {
  Do([&] {
    const bool isSaved = hands_->Front().grab().save(QString::fromStdU16String(file.u16string()));
    if (!isSaved) Fail("cannot save", file.string());
  });
}

bool User::HasEnded() { return hands_->HasEnded(); }

void User::Do(const std::function<void()>& act) { hands_->Do(act); }

int Use(const std::function<void(User&)>& acts) {
  int argumentCount = 1;
  std::string programName = "gantrel";
  std::array<char*, 2> arguments = {programName.data(), nullptr};
  // Only the toolkit's own dialogs can be clicked on here; where the system has some, they are looked at by eye.
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  const platform::Application application(Layouts(), argumentCount, arguments.data());
  Hands itsHands;
  std::exception_ptr failure;
  std::thread user([&] {
    try {
      itsHands.AwaitRest();
      User self(itsHands);
      self.Focus();
      acts(self);
    } catch (...) {
      failure = std::current_exception();
    }
    QMetaObject::invokeMethod(qApp, platform::Quit, Qt::QueuedConnection);
  });
  int exitCode = EXIT_FAILURE;
  {
    frmMain mainWindow;
    mainWindow.Form_Load();
    mainWindow.Show();
    exitCode = platform::Application::Run();
  }
  itsHands.NoteEnd();
  user.join();
  if (failure) std::rethrow_exception(failure);
  return exitCode;
}

}  // namespace support
