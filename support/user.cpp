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
#include <QPushButton>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>
#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <utility>

#include "app/layouts.h"
#include "mods/frmMain.h"
#include "platform/application.h"
#include "platform/qt/native.h"
#include "platform/qt/run.h"
#include "platform/qt/text.h"
#include "support/system.h"

namespace support {

using platform::FromQt;
using platform::ToQt;

// Hands the user's acts to the tool's thread and tells when the tool has come to rest.
class Hands {
 public:
  Hands() {
    connection_ = QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                                   [this] { NoteRest(); });
  }
  ~Hands() { QObject::disconnect(connection_); }
  Hands(const Hands&) = delete;
  Hands& operator=(const Hands&) = delete;
  Hands(Hands&&) = delete;
  Hands& operator=(Hands&&) = delete;

  const frmMain* mainWindow = nullptr;

  void AwaitStart() {
    std::unique_lock lock(mutex_);
    AwaitRest(lock);
  }

  void Do(const std::function<void()>& act) {
    if (HasEnded()) throw std::runtime_error("the tool has ended");
    DoOnce(act);
    DoOnce([] {});  // what the act has put off until the next event has happened as well
    if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
  }

  bool HasEnded() {
    const std::lock_guard lock(mutex_);
    return hasEnded_;
  }

  // In a copy of the process, which has this thread alone: nothing is left of the user who waits for what it does.
  void GoOnInCopy(const std::function<void(User&)>& acts) {
    QObject::disconnect(connection_);
    auto* const hands = new Hands;
    std::thread([acts, hands] {
      int exitCode = EXIT_SUCCESS;
      try {
        hands->AwaitStart();
        User self(*hands);
        acts(self);
      } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        exitCode = EXIT_FAILURE;
      }
      std::_Exit(exitCode);
    }).detach();
  }

  void NoteEnd() {
    const std::lock_guard lock(mutex_);
    hasEnded_ = true;
    changed_.notify_all();
  }

 private:
  void DoOnce(const std::function<void()>& act) {
    std::unique_lock lock(mutex_);
    if (hasEnded_) return;
    isStarted_ = isAtRest_ = false;
    const auto start = [this, act] { Start(act); };
    QMetaObject::invokeMethod(qApp, start, Qt::QueuedConnection);
    AwaitRest(lock);
  }

  void AwaitRest(std::unique_lock<std::mutex>& lock) {
    constexpr auto kPatience = std::chrono::seconds(60);
    if (!changed_.wait_for(lock, kPatience, [this] { return isAtRest_ || hasEnded_; })) {
      std::fputs("The tool hangs.\n", stderr);
      std::abort();
    }
  }

  void Start(const std::function<void()>& act) {
    {
      const std::lock_guard lock(mutex_);
      isStarted_ = true;
    }
    try {
      act();
    } catch (...) {
      failure_ = std::current_exception();
    }
  }

  void NoteRest() {
    const std::lock_guard lock(mutex_);
    if (!isStarted_) return;
    isAtRest_ = true;
    changed_.notify_all();
  }

  QMetaObject::Connection connection_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::exception_ptr failure_;
  bool isStarted_ = true;  // the tool's start is the first act
  bool isAtRest_ = false;
  bool hasEnded_ = false;
};

namespace {

template <typename Result>
Result See(User& user, const std::function<Result()>& look) {
  Result result{};
  user.Do([&] { result = look(); });
  return result;
}

[[noreturn]] void Fail(const std::string& what, std::string_view name) {
  throw std::runtime_error(what + " '" + std::string(name) + "'");
}

template <typename Widget>
Widget& As(QWidget& widget) {
  auto* const cast = qobject_cast<Widget*>(&widget);
  if (cast == nullptr) Fail("another kind of control:", FromQt(widget.objectName()));
  return *cast;
}

// A click at a point of a widget, given to its window as the display would: what is in the way gets it instead.
void ClickAt(QWidget& widget, QPoint point) {
  QWindow* const window = widget.window()->windowHandle();
  QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, widget.mapTo(widget.window(), point));
}

void Activate(QWidget& window) {
  if (window.isActiveWindow() || QApplication::activeModalWidget() != nullptr) return;
  window.activateWindow();
  QApplication::processEvents();
}

QDialog& ShownDialog() {
  auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
  if (dialog == nullptr) Fail("no dialog is shown", "");
  return *dialog;
}

Qt::Key ToQtKey(Key key) {
  switch (key) {
    case Key::Tab:
      return Qt::Key_Tab;
    case Key::BackTab:
      return Qt::Key_Backtab;
    case Key::Enter:
      return Qt::Key_Return;
    case Key::Escape:
      return Qt::Key_Escape;
    case Key::Space:
      return Qt::Key_Space;
    case Key::Up:
    case Key::AltUp:
      return Qt::Key_Up;
    case Key::Down:
    case Key::AltDown:
      return Qt::Key_Down;
    case Key::Delete:
      return Qt::Key_Delete;
    case Key::Insert:
      return Qt::Key_Insert;
    case Key::F5:
      return Qt::Key_F5;
  }
  return Qt::Key_unknown;
}

Qt::KeyboardModifiers ModifiersOf(Key key) {
  if (key == Key::BackTab) return Qt::ShiftModifier;
  return key == Key::AltUp || key == Key::AltDown ? Qt::AltModifier : Qt::NoModifier;
}

// Characters of any keyboard; which key they are on does not matter.
void TypeInto(QWidget& widget, const QString& text) {
  for (const QChar& character : text) {
    QTest::sendKeyEvent(QTest::Click, &widget, Qt::Key_unknown, QString(character), Qt::NoModifier);
  }
}

std::string CaptionOf(const QAbstractButton& button) { return FromQt(button.text().remove('&')); }

std::string IconOf(const QMessageBox& box) {
  constexpr std::array kNames = {"", "information", "exclamation", "critical", "question"};
  return kNames.at(static_cast<std::size_t>(box.icon()));
}

int FindEntry(const QAbstractItemModel& model, std::string_view text) {
  for (int row = 0; row < model.rowCount(); ++row) {
    if (FromQt(model.index(row, 0).data().toString()) == text) return row;
  }
  Fail("no entry", text);
}

void ClickEntryOf(QAbstractItemView& view, std::string_view text) {
  const QModelIndex entry = view.model()->index(FindEntry(*view.model(), text), 0);
  view.scrollTo(entry);
  ClickAt(*view.viewport(), view.visualRect(entry).center());
}

}  // namespace

QWidget& User::Window() const {
  int number = 0;
  for (QWidget* const widget : QApplication::topLevelWidgets()) {
    if (FromQt(widget->objectName()) == window_ && widget->isVisible() && number++ == which_) return *widget;
  }
  Fail("no window", window_);
}

QWidget& User::Control(std::string_view name) const {
  auto* const control = Window().findChild<QWidget*>(ToQt(name));
  if (control == nullptr) Fail("no control", name);
  return *control;
}

void User::LookAt(std::string_view window, int which) {
  window_ = window;
  which_ = which;
}

int User::CountWindows(std::string_view window) {
  return See<int>(*this, [&] {
    const auto windows = QApplication::topLevelWidgets();
    return static_cast<int>(std::ranges::count_if(
        windows, [&](QWidget* widget) { return widget->isVisible() && FromQt(widget->objectName()) == window; }));
  });
}

bool User::IsInUse() {
  return See<bool>(*this, [&] { return Window().isEnabled(); });
}

void User::Click(std::string_view control) {
  Do([&] {
    QWidget& widget = Control(control);
    Activate(Window());
    ClickAt(widget, widget.rect().center());
  });
}

void User::ClickEntry(std::string_view list, std::string_view text) {
  Do([&] {
    Activate(Window());
    ClickEntryOf(As<QListWidget>(Control(list)), text);
  });
}

void User::Choose(std::string_view dropDown, std::string_view text) {
  constexpr int kInterval = 1;  // milliseconds; for so long the list takes a click's end for that of the opening click
  Do([] { QApplication::setDoubleClickInterval(kInterval); });
  Click(dropDown);
  std::this_thread::sleep_for(std::chrono::milliseconds(20 * kInterval));
  Do([&] { ClickEntryOf(*As<QComboBox>(Control(dropDown)).view(), text); });
}

void User::OpenDropDown(std::string_view dropDown) {
  Click(dropDown);
  Do([&] {
    if (QApplication::activePopupWidget() == nullptr) Fail("nothing dropped down from", dropDown);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
  });
}

void User::Type(std::string_view text) {
  Do([&] {
    if (QApplication::activeModalWidget() == nullptr) Activate(Window());
    if (QApplication::focusWidget() == nullptr) Fail("no focus for", text);
    TypeInto(*QApplication::focusWidget(), ToQt(text));
  });
}

void User::Press(Key key) {
  Do([&] {
    if (QApplication::activeModalWidget() == nullptr) Activate(Window());
    if (QGuiApplication::focusWindow() == nullptr) Fail("no window has the focus for", "a key");
    QTest::keyClick(QGuiApplication::focusWindow(), ToQtKey(key), ModifiersOf(key));
  });
}

void User::GoTo(std::string_view control) {
  constexpr int kMostControls = 16;
  for (int i = 0; i < kMostControls; ++i) {
    if (Focus() == control) return;
    Press(Key::Tab);
  }
  Fail("the Tab key does not come to", control);
}

bool User::IsBusy(std::string_view list, const std::function<void()>& act) {
  int changes = 0;
  int busyChanges = 0;
  std::unique_ptr<QObject> connected;
  Do([&] {
    const QAbstractItemModel* const model = As<QListWidget>(Control(list)).model();
    const auto note = [&] {
      const QCursor* const pointer = QApplication::overrideCursor();
      ++changes;
      busyChanges += pointer != nullptr && pointer->shape() == Qt::WaitCursor ? 1 : 0;
    };
    connected = std::make_unique<QObject>();
    QObject::connect(model, &QAbstractItemModel::rowsInserted, connected.get(), note);
    QObject::connect(model, &QAbstractItemModel::rowsRemoved, connected.get(), note);
  });
  act();
  Do([&] { connected.reset(); });
  return changes > 0 && busyChanges == changes;
}

void User::CloseWindow() {
  Do([&] { Window().windowHandle()->close(); });
}

void User::SwitchToAnotherProgram() {
  Do([&] {
    QWidget other;
    other.show();
    other.activateWindow();
    QApplication::processEvents();
    if (QApplication::activeWindow() != &other) Fail("cannot leave", window_);
    other.hide();
    Window().activateWindow();
    QApplication::processEvents();
  });
}

std::vector<std::string> User::Entries(std::string_view list) {
  return See<std::vector<std::string>>(*this, [&] {
    auto* const dropDown = qobject_cast<QComboBox*>(&Control(list));
    const QAbstractItemModel& model =
        dropDown != nullptr ? *dropDown->model() : *As<QListWidget>(Control(list)).model();
    std::vector<std::string> texts;
    for (int row = 0; row < model.rowCount(); ++row) texts.push_back(FromQt(model.index(row, 0).data().toString()));
    return texts;
  });
}

std::string User::Selected(std::string_view list) {
  return See<std::string>(*this, [&] {
    if (auto* const dropDown = qobject_cast<QComboBox*>(&Control(list))) return FromQt(dropDown->currentText());
    const auto selected = As<QListWidget>(Control(list)).selectedItems();
    return selected.isEmpty() ? std::string() : FromQt(selected.front()->text());
  });
}

bool User::IsEnabled(std::string_view control) {
  return See<bool>(*this, [&] { return Control(control).isEnabled(); });
}

std::string User::Focus() {
  return See<std::string>(*this, [] {
    const QWidget* const focused = QApplication::focusWidget();
    return focused == nullptr ? std::string() : FromQt(focused->objectName());
  });
}

std::string User::ActiveWindow() {
  return See<std::string>(*this, [] {
    const QWidget* const active = QApplication::activeWindow();
    return active == nullptr ? std::string() : FromQt(active->objectName());
  });
}

std::string User::EmptyText(std::string_view list) {
  return See<std::string>(*this, [&] {
    auto* const native = dynamic_cast<platform::NativeListBox*>(&Control(list));
    return native == nullptr ? std::string() : FromQt(native->emptyText);
  });
}

std::string User::Font(std::string_view control) {
  return See<std::string>(*this, [&] { return FromQt(QFontInfo(Control(control).font()).family()); });
}

std::string User::TextOfFocus() {
  return See<std::string>(*this, [] {
    const auto* const box = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    return box == nullptr ? std::string() : FromQt(box->text());
  });
}

void User::AwaitActiveWindow() {
  constexpr int kPatience = 200;
  for (int i = 0; i < kPatience; ++i) {
    if (See<bool>(*this, [] { return QApplication::activeWindow() != nullptr; })) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  Fail("no window became active", "");
}

std::optional<Message> User::ShownMessage() {
  return See<std::optional<Message>>(*this, []() -> std::optional<Message> {
    const auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return std::nullopt;
    const QPushButton* const defaultButton = box->defaultButton();
    Message message{FromQt(box->windowTitle()), FromQt(box->text()), IconOf(*box), {CaptionOf(*defaultButton)}};
    for (const QAbstractButton* const button : box->buttons()) {
      if (button != defaultButton) message.buttons.push_back(CaptionOf(*button));
    }
    return message;
  });
}

void User::Answer(std::string_view button) {
  Do([&] {
    for (auto* const candidate : ShownDialog().findChildren<QAbstractButton*>()) {
      if (CaptionOf(*candidate) == button && candidate->isVisible()) {
        return ClickAt(*candidate, candidate->rect().center());
      }
    }
    Fail("no button", button);
  });
}

void User::DismissDialog() {
  Do([] { ShownDialog().windowHandle()->close(); });
}

void User::TypeFileName(const std::filesystem::path& name) {
  Do([&] {
    auto* const box = ShownDialog().findChild<QLineEdit*>();
    if (box == nullptr) Fail("no box for a file name", "");
    box->setFocus();
    box->selectAll();
    TypeInto(*box, QString::fromStdU16String(name.u16string()));
  });
}

std::string User::DialogText() {
  return See<std::string>(*this, [] {
    const auto* const label = ShownDialog().findChild<QLabel*>();
    return label == nullptr ? std::string() : FromQt(label->text());
  });
}

std::string User::DialogTitle() {
  return See<std::string>(*this, [] {
    const QWidget* const dialog = QApplication::activeModalWidget();
    return dialog == nullptr ? std::string() : FromQt(dialog->windowTitle());
  });
}

void User::SavePicture(const std::filesystem::path& file) {
  Do([&] {
    if (!Window().grab().save(QString::fromStdU16String(file.u16string()))) Fail("cannot save", file.string());
  });
}

void User::SaveDialogPicture(const std::filesystem::path& file) {
  Do([&] {
    if (!ShownDialog().grab().save(QString::fromStdU16String(file.u16string()))) Fail("cannot save", file.string());
  });
}

bool User::HasEnded() { return hands_->HasEnded(); }

void User::Do(const std::function<void()>& act) { hands_->Do(act); }

void User::RefillMainWindow() {
  LookAt("frmMain");
  Do([&] {
    Activate(Window());
    Control("lstGame").setFocus();
    hands_->mainWindow->RefreshGames();
    hands_->mainWindow->ListMods();
  });
}

int User::DoInACopy(const std::function<void(User&)>& acts) {
  std::optional<int> status;
  Do([&] {
    status = CopyProcess();
    if (!status) hands_->GoOnInCopy(acts);
  });
  return *status;
}

void User::DoubleClickEntry(std::string_view list, std::string_view text) {
  Do([&] {
    auto& view = As<QListWidget>(Control(list));
    const QPoint point = view.visualItemRect(view.item(FindEntry(*view.model(), text))).center();
    QTest::mouseDClick(Window().windowHandle(), Qt::LeftButton, Qt::NoModifier,
                       view.viewport()->mapTo(&Window(), point));
  });
}

void User::Hold(Key key) {
  Press(key);
  constexpr int kTimes = 3;
  for (int i = 0; i < kTimes; ++i) {
    Do([&] {
      QKeyEvent again(QEvent::KeyPress, ToQtKey(key), Qt::NoModifier, key == Key::Space ? " " : "", true);
      if (QWindow* const window = QGuiApplication::focusWindow()) QApplication::sendEvent(window, &again);
    });
  }
}

void User::TurnWheel(std::string_view control) {
  Do([&] {
    const QWidget& widget = Control(control);
    const QPointF point = widget.mapTo(&Window(), widget.rect().center());
    const QPoint notch(0, -QWheelEvent::DefaultDeltasPerStep);
    QWheelEvent event(point, point, {}, notch, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);  // as one from the display, which may give the focus as well
    QApplication::instance()->notify(Window().windowHandle(), &event);
  });
}

void User::Paste(std::u16string_view text) {
  Do([&] {
    QApplication::clipboard()->setText(QString::fromStdU16String(std::u16string(text)));
    QTest::keyClick(QGuiApplication::focusWindow(), Qt::Key_V, Qt::ControlModifier);
  });
}

void User::ClickWhile(std::string_view button, std::string_view list, std::string_view other) {
  QMetaObject::Connection connection;
  Do([&] {
    const auto meanwhile = [window = Window().windowHandle(), control = &Control(other)] {
      ClickAt(*control, control->rect().center());
      window->close();
    };
    connection = QObject::connect(As<QListWidget>(Control(list)).model(), &QAbstractItemModel::rowsInserted,
                                  [=] { QMetaObject::invokeMethod(qApp, meanwhile, Qt::QueuedConnection); });
  });
  Click(button);
  if (!HasEnded()) Do([&] { QObject::disconnect(connection); });
}

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
      itsHands.AwaitStart();
      User self(itsHands);
      self.AwaitActiveWindow();
      acts(self);
    } catch (...) {
      failure = std::current_exception();
    }
    QMetaObject::invokeMethod(qApp, platform::Quit, Qt::QueuedConnection);
  });
  int exitCode = EXIT_FAILURE;
  {
    frmMain mainWindow;
    itsHands.mainWindow = &mainWindow;
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
