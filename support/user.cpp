#include "support/user.h"

#include <QAbstractButton>
#include <QAbstractEventDispatcher>
#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFontInfo>
#include <QHelpEvent>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPalette>
#include <QPixmap>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTextDocumentFragment>
#include <QTimer>
#include <QToolTip>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>
#include <array>
#include <deque>
#include <exception>
#include <memory>
#include <set>
#include <stdexcept>
#include <utility>

#include "app/tool.h"
#include "platform/qt/native.h"
#include "platform/qt/run.h"
#include "platform/qt/text.h"

namespace support {

using platform::FromQt;
using platform::ToQt;

namespace {

[[noreturn]] void Fail(const std::string& what, const std::string& name) {
  throw std::runtime_error(what + " '" + name + "'");
}

// Does one act after the other, each when the tool has come to rest.
class Hands {
 public:
  // Once the tool's event loops can run.
  void Begin() {
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &context_, [this] {
      if (std::exchange(isWaiting_, true)) return;
      const auto goOn = [this] {
        isWaiting_ = false;
        GoOn();
      };
      QMetaObject::invokeMethod(&context_, goOn, Qt::QueuedConnection);
    });
  }

  void DoNext(const std::vector<Act>& acts) { acts_.insert(acts_.begin(), acts.begin(), acts.end()); }

  void Wait(std::chrono::milliseconds time) {
    isWaiting_ = true;
    QTimer::singleShot(time, &context_, [this] { isWaiting_ = false; });
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

  // Whether the last act was done. Rethrows what the last one has thrown.
  bool AreDone() const {
    if (failure_) std::rethrow_exception(failure_);
    return areDone_;
  }

 private:
  void GoOn() {
    // What the last act has put off until the next event happens before the next act.
    if (std::exchange(isSettling_, false)) return NoteActive();
    areDone_ = acts_.empty();
    if (areDone_) return platform::Quit();
    const Act act = std::move(acts_.front());
    acts_.pop_front();
    isSettling_ = true;
    try {
      act();
    } catch (...) {
      failure_ = std::current_exception();
      acts_.clear();
    }
  }

  void NoteActive() {
    if (QApplication::activeModalWidget() == nullptr && QApplication::activeWindow() != nullptr)
      lastActive_ = QApplication::activeWindow();
  }

  QObject context_;  // what was connected and put off ends with it
  std::deque<Act> acts_;
  std::exception_ptr failure_;
  QPointer<QWidget> lastActive_;
  bool isWaiting_ = false;  // for an event
  bool isSettling_ = false;
  bool areDone_ = false;
};

Hands* hands = nullptr;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): of the one user

// Qt calls it when the application object is made.
void Begin() {
  if (hands != nullptr) hands->Begin();
}
Q_COREAPP_STARTUP_FUNCTION(Begin)

std::vector<QWidget*> Windows(const std::string& name) {
  std::vector<QWidget*> windows;
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && FromQt(window->objectName()) == name) windows.push_back(window);
  }
  return windows;
}

QWidget& Control(const std::string& name) {
  QWidgetList windows = QApplication::topLevelWidgets();
  if (QWidget* const active = QApplication::activeWindow()) windows.prepend(active);
  for (const QWidget* const window : windows) {
    auto* const control = window->isVisible() ? window->findChild<QWidget*>(ToQt(name)) : nullptr;
    if (control != nullptr) return *control;
  }
  Fail("no control", name);
}

QListWidget& List(const std::string& name) { return dynamic_cast<QListWidget&>(Control(name)); }

void Activate(QWidget& window) {
  if (window.isActiveWindow() || QApplication::activeModalWidget() != nullptr) return;
  window.activateWindow();
  QApplication::processEvents();
}

// Where the user points at.
struct Place {
  QWidget& widget;
  QPoint point;
};

Place PlaceOf(QWidget& widget) { return {widget, widget.rect().center()}; }

Place PlaceOf(const std::string& control, const std::string& entry) {
  if (entry.empty()) return PlaceOf(Control(control));
  QListWidget& list = List(control);
  const auto found = list.findItems(ToQt(entry), Qt::MatchExactly);
  if (found.isEmpty()) Fail("no entry", entry);
  list.scrollToItem(found.front());
  return {*list.viewport(), list.visualItemRect(found.front()).center()};
}

// Given to the window as the display would: what is in the way gets the click instead.
void ClickAt(const Place& place, QTest::MouseAction action = QTest::MouseClick) {
  QWidget* const window = place.widget.window();
  Activate(*window);
  const QPoint point = place.widget.mapTo(window, place.point);
  QTest::mouseEvent(action, window->windowHandle(), Qt::LeftButton, Qt::NoModifier, point);
}

QKeyCombination Combination(Key key) {
  constexpr std::array<QKeyCombination, 11> kKeys = {
      Qt::Key_Tab,          Qt::Key_Return,         Qt::Key_Escape, Qt::Key_Space,  Qt::Key_Up, Qt::Key_Down,
      Qt::ALT | Qt::Key_Up, Qt::ALT | Qt::Key_Down, Qt::Key_Delete, Qt::Key_Insert, Qt::Key_F5};
  return kKeys.at(static_cast<std::size_t>(key));
}

std::string CaptionOf(const QAbstractButton& button) { return FromQt(button.text().remove('&')); }

QString WithoutMarkup(const QString& text) { return QTextDocumentFragment::fromHtml(text).toPlainText(); }

}  // namespace

std::optional<int> Use(const std::vector<Act>& acts) {
  std::string programName = "gantrel";
  std::array<char*, 2> arguments = {programName.data(), nullptr};
  // Only Qt's own dialogs can be clicked on here; where the system has some, they are looked at by eye.
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  Hands ofTheUser;
  ofTheUser.DoNext({[] { Focus(); }, InTurn(acts)});
  hands = &ofTheUser;
  const int exitCode = RunTool(1, arguments.data());
  hands = nullptr;
  return ofTheUser.AreDone() ? std::nullopt : std::optional(exitCode);
}

void DoNext(const std::vector<Act>& acts) { hands->DoNext(acts); }

Act InTurn(const std::vector<Act>& acts) {
  return [=] { DoNext(acts); };
}

Act Wait(std::chrono::milliseconds time) {
  return [=] { hands->Wait(time); };
}

Act Click(const std::string& control, const std::string& entry) {
  return [=] { ClickAt(PlaceOf(control, entry)); };
}

Act DoubleClick(const std::string& list, const std::string& entry) {
  return [=] { ClickAt(PlaceOf(list, entry), QTest::MouseDClick); };
}

Act Hover(const std::string& control, const std::string& entry) {
  return [=] {
    const Place place = PlaceOf(control, entry);
    QHelpEvent event(QEvent::ToolTip, place.point, place.widget.mapToGlobal(place.point));
    QApplication::sendEvent(&place.widget, &event);
  };
}

Act SelectAndPress(const std::string& list, const std::string& entry, const std::string& button) {
  return [=] {
    List(list).findItems(ToQt(entry), Qt::MatchExactly).at(0)->setSelected(true);
    DoNext({[=] { dynamic_cast<QPushButton&>(Control(button)).click(); }});
  };
}

Act TurnWheel(const std::string& control) {
  return [=] {
    const auto [widget, center] = PlaceOf(control, "");
    const QPointF point = widget.mapTo(widget.window(), center);
    const QPoint notch(0, -QWheelEvent::DefaultDeltasPerStep);
    QWheelEvent event(point, point, {}, notch, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);  // as one from the display, which may give the focus as well
    QApplication::instance()->notify(widget.window()->windowHandle(), &event);
  };
}

Act Answer(const std::string& button) {
  return [=] {
    for (auto* const candidate : hands->Front().findChildren<QAbstractButton*>()) {
      const bool isMeant = CaptionOf(*candidate) == button && candidate->isVisible();
      if (isMeant) return ClickAt(PlaceOf(*candidate));
    }
    Fail("no button", button);
  };
}

Act Press(Key key) {
  return [=] {
    Activate(hands->Front());
    if (QGuiApplication::focusWindow() == nullptr) Fail("no window has the focus for", "a key");
    const QKeyCombination keys = Combination(key);
    QTest::keyClick(QGuiApplication::focusWindow(), keys.key(), keys.keyboardModifiers());
  };
}

Act Hold(Key key, const Act& meanwhile) {
  const Act comeAgain = [=] {
    QKeyEvent again(QEvent::KeyPress, Combination(key).key(), Combination(key).keyboardModifiers(), "", true);
    QApplication::sendEvent(hands->Front().windowHandle(), &again);
  };
  return InTurn({Press(key), meanwhile, comeAgain});
}

Act GoTo(const std::string& control) {
  return [=] {
    Activate(*Control(control).window());
    if (Focus() != control) DoNext({Press(Key::Tab), GoTo(control)});
  };
}

Act Type(const std::string& text) {
  return [=] {
    Activate(hands->Front());
    QWidget* const focused = QApplication::focusWidget();
    if (focused == nullptr) Fail("no focus for", text);
    // Characters of any keyboard; which key they are on does not matter.
    for (const QChar& character : ToQt(text))
      QTest::sendKeyEvent(QTest::Click, focused, Qt::Key_unknown, QString(character), Qt::NoModifier);
  };
}

Act Paste(const std::u16string& text) {
  return [=] {
    QApplication::clipboard()->setText(QString::fromStdU16String(text));
    QTest::keyClick(QGuiApplication::focusWindow(), Qt::Key_V, Qt::ControlModifier);
  };
}

Act PressAhead(Key key, const Act& act) {
  return [=] {
    // Behind what makes a new window active: the display gives a key to the window that is active when it is taken.
    const auto press = [=] { QMetaObject::invokeMethod(qApp, Press(key), Qt::QueuedConnection); };
    QMetaObject::invokeMethod(qApp, press, Qt::QueuedConnection);
    act();
  };
}

Act Perform(const std::string& action, const std::string& control) {
  const Act act = [=] {
    QAccessible::queryAccessibleInterface(&Control(control))->actionInterface()->doAction(ToQt(action));
  };
  constexpr std::chrono::milliseconds kLongest(200);  // Qt shows a button as pressed for half as long before it clicks
  return InTurn({act, Wait(kLongest)});
}

Act Close(const std::string& window) {
  return [=] { (window.empty() ? hands->Front() : *Windows(window).at(0)).windowHandle()->close(); };
}

Act SavePicture(const std::filesystem::path& file) {
  return [=] {
    const bool isSaved = hands->Front().grab().save(QString::fromStdU16String(file.u16string()));
    if (!isSaved) Fail("cannot save", file.string());
  };
}

Act TurnDark() {
  return [] { QApplication::setPalette(QPalette(Qt::black)); };
}

Act SwitchToAnotherProgram() {
  return [] {
    QWidget& window = hands->Front();
    QWidget other;
    other.show();
    Activate(other);
    if (!other.isActiveWindow()) Fail("cannot leave", FromQt(window.objectName()));
    Activate(window);
  };
}

Act ClickWhile(const std::string& button, const std::string& list, const std::string& other) {
  // In this order: Qt's own click lets events in on some systems.
  const Act meanwhile = [=] {
    Close()();
    Click(other)();
  };
  const auto later = [=] { QMetaObject::invokeMethod(qApp, meanwhile, Qt::QueuedConnection); };
  return Watch(list, later, Click(button));
}

Act Watch(const std::string& list, const Act& look, const Act& act) {
  return [=] {
    const auto context = std::make_shared<QObject>();  // the connections end with it
    const QAbstractItemModel* const model = List(list).model();
    QObject::connect(model, &QAbstractItemModel::rowsInserted, context.get(), look, Qt::DirectConnection);
    QObject::connect(model, &QAbstractItemModel::rowsRemoved, context.get(), look, Qt::DirectConnection);
    DoNext({act, [context] {}});
  };
}

std::optional<Message> ShownMessage() {
  const QWidget* const dialog = QApplication::activeModalWidget();
  if (dialog == nullptr) return std::nullopt;
  constexpr std::array kIcons = {"", "information", "exclamation", "critical", "question"};
  const auto* const box = qobject_cast<const QMessageBox*>(dialog);
  Message message;
  message.title = FromQt(dialog->windowTitle());
  const QString text = box != nullptr ? box->text() : dialog->findChild<QLabel*>()->text();
  const bool isPlain = box == nullptr || box->textFormat() == Qt::PlainText;
  message.text = FromQt(isPlain ? text : WithoutMarkup(text));
  if (box != nullptr) message.icon = kIcons.at(static_cast<std::size_t>(box->icon()));
  for (const bool isDefault : {true, false}) {
    for (const QPushButton* const button : dialog->findChildren<QPushButton*>()) {
      if (button->isDefault() == isDefault) message.buttons.push_back(CaptionOf(*button));
    }
  }
  return message;
}

int CountWindows(const std::string& window) {
  std::set<std::pair<int, int>> places;
  for (const QWidget* const each : Windows(window)) places.emplace(each->x(), each->y());
  return static_cast<int>(places.size());
}

bool Exists(const std::string& window) {
  return std::ranges::any_of(QApplication::topLevelWidgets(),
                             [&](const QWidget* each) { return FromQt(each->objectName()) == window; });
}

std::vector<std::string> Entries(const std::string& list) {
  const auto* const dropDown = qobject_cast<const QComboBox*>(&Control(list));
  const auto& view = dropDown != nullptr ? *dropDown->view() : dynamic_cast<const QAbstractItemView&>(Control(list));
  std::vector<std::string> texts;
  for (int row = 0; row < view.model()->rowCount(view.rootIndex()); ++row) {
    const QModelIndex entry = view.model()->index(row, 0, view.rootIndex());
    const QString spoken = entry.data(Qt::AccessibleTextRole).toString();
    texts.push_back(FromQt(spoken.isEmpty() ? entry.data().toString() : spoken));
  }
  return texts;
}

std::string Selected(const std::string& list) {
  if (const auto* const dropDown = qobject_cast<const QComboBox*>(&Control(list)))
    return FromQt(dropDown->currentText());
  const QListWidget& box = List(list);
  const auto selected = box.selectedItems();
  const bool isOne = box.selectionMode() == QListWidget::SingleSelection;
  if (isOne && selected.isEmpty() && box.currentItem() != nullptr)
    Fail("an entry that is not selected is told of", list);
  return selected.isEmpty() ? "" : FromQt(selected.front()->text());
}

std::string EmptyText(const std::string& list) {
  const auto* const box = dynamic_cast<const platform::NativeListBox*>(&Control(list));
  return box == nullptr ? "" : FromQt(box->emptyText);
}

std::string Font(const std::string& control) {
  const QFontInfo font(Control(control).font());
  return FromQt(font.family()) + " " + std::to_string(font.pixelSize());
}

std::string FixedSize(const std::string& window) {
  const QWidget& widget = *Windows(window).at(0);
  const QSize size = widget.maximumSize();
  return widget.minimumSize() != size ? "" : std::to_string(size.width()) + "x" + std::to_string(size.height());
}

std::string SpokenName(const std::string& control) { return FromQt(Control(control).accessibleName()); }

int CountPixels(const std::string& name, unsigned colour) {
  const QImage picture = (Windows(name).empty() ? Control(name) : *Windows(name).at(0)).grab().toImage();
  int count = 0;
  for (int x = 0; x < picture.width(); ++x) {
    for (int y = 0; y < picture.height(); ++y) count += picture.pixelColor(x, y).rgb() == (0xFF000000 | colour) ? 1 : 0;
  }
  return count;
}

bool IsEnabled(const std::string& control) { return Control(control).isEnabled(); }

std::string ToolTip() { return FromQt(WithoutMarkup(QToolTip::text())); }

bool IsPointerBusy() {
  const QCursor* const pointer = QApplication::overrideCursor();
  return pointer != nullptr && pointer->shape() == Qt::WaitCursor;
}

std::string Focus() {
  constexpr int kPatience = 60'000;  // milliseconds
  const auto isActive = [] { return QApplication::activeWindow() != nullptr; };
  if (!QTest::qWaitFor(isActive, kPatience)) Fail("no window became", "active");
  const QWidget* const focused = QApplication::focusWidget();
  return focused == nullptr ? "" : FromQt(focused->objectName());
}

std::string TextOfFocus() {
  const auto* const box = qobject_cast<const QLineEdit*>(QApplication::focusWidget());
  return box == nullptr ? "" : FromQt(box->text());
}

}  // namespace support
