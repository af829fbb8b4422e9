#include "support/user.h"

#include <QTest>
#include <QtWidgets>
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

// The remaining acts; each starts when the tool is idle after the previous one.
struct Plan {
  QObject context;  // ends connections and queued calls with it
  std::deque<Act> acts;
  std::exception_ptr failure;
  QPointer<QWidget> lastActive;
  bool isWaiting = false;  // for events
  bool isSettling = false;
  bool areDone = false;
};
Plan* plan = nullptr;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): of the one user

void GoOn() {
  plan->isWaiting = false;
  QWidget* const active = QApplication::activeWindow();
  if (active != nullptr && !active->isModal()) plan->lastActive = active;
  // Calls queued by the last act run before the next act.
  if (std::exchange(plan->isSettling, false)) return;
  plan->areDone = plan->acts.empty();
  if (plan->areDone) return platform::Quit();
  plan->isSettling = true;
  const Act act = std::move(plan->acts.front());
  plan->acts.pop_front();
  try {
    act();
  } catch (...) {
    plan->failure = std::current_exception();
    plan->acts.clear();
  }
}

// Called by Qt when the application object is created.
void Begin() {
  if (plan == nullptr) return;
  QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &plan->context, [] {
    if (!std::exchange(plan->isWaiting, true)) QMetaObject::invokeMethod(&plan->context, GoOn, Qt::QueuedConnection);
  });
}
Q_COREAPP_STARTUP_FUNCTION(Begin)

// The window in front: a dialog, else the active window, else the last active one; some displays activate none when
// that one closes.
QWidget& Front() {
  QWidgetList windows = {QApplication::activeModalWidget(), QApplication::activeWindow(), plan->lastActive};
  windows += QApplication::topLevelWidgets();
  const auto front = std::ranges::find_if(
      windows, [](const QWidget* widget) { return widget != nullptr && widget->isVisible() && widget->isEnabled(); });
  if (front == windows.end()) Fail("no window is", "shown");
  return **front;
}

std::vector<QWidget*> Windows(const std::string& name) {
  std::vector<QWidget*> windows;
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && FromQt(window->objectName()) == name) windows.push_back(window);
  }
  return windows;
}

QWidget& Control(const std::string& name) {
  for (QWidget* const window : QWidgetList{QApplication::activeWindow()} + QApplication::topLevelWidgets()) {
    if (window == nullptr || !window->isVisible()) continue;
    if (auto* const control = window->findChild<QWidget*>(ToQt(name))) return *control;
    if (FromQt(window->objectName()) == name) return *window;
  }
  Fail("no control", name);
}

QListWidget& List(const std::string& name) { return dynamic_cast<QListWidget&>(Control(name)); }

void Activate(QWidget& window) {
  if (window.isActiveWindow() || QApplication::activeModalWidget() != nullptr) return;
  window.activateWindow();
  QApplication::processEvents();
}

QListWidgetItem& Item(const std::string& list, const std::string& entry) {
  const auto found = List(list).findItems(ToQt(entry), Qt::MatchExactly);
  if (found.isEmpty()) Fail("no entry", entry);
  return *found.front();
}

// Where the mouse points.
struct Place {
  QWidget& widget;
  QPoint point;
};

Place PlaceOf(QWidget& widget) { return {widget, widget.rect().center()}; }

Place PlaceOf(const std::string& control, const std::string& entry) {
  if (entry.empty()) return PlaceOf(Control(control));
  QListWidget& list = List(control);
  list.scrollToItem(&Item(control, entry));
  return {*list.viewport(), list.visualItemRect(&Item(control, entry)).center()};
}

// Sent to the window, as by the display: whatever covers the place gets the click.
void ClickAt(const Place& place, QTest::MouseAction action = QTest::MouseClick,
             Qt::MouseButton button = Qt::LeftButton) {
  QWidget* const window = place.widget.window();
  Activate(*window);
  const QPoint point = place.widget.mapTo(window, place.point);
  QTest::mouseEvent(action, window->windowHandle(), button, Qt::NoModifier, point);
}

QMenu& OpenMenu() {
  auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  if (menu == nullptr) Fail("no menu", "open");
  return *menu;
}

std::string CaptionOf(const QAction& action) { return FromQt(action.text().section('\t', 0, 0)); }

std::string CaptionOf(const QAbstractButton& button) { return FromQt(button.text().remove('&')); }

QString WithoutMarkup(const QString& text) { return QTextDocumentFragment::fromHtml(text).toPlainText(); }

}  // namespace

std::optional<int> Use(const std::vector<Act>& acts) {
  std::string programName = "gantrel";
  std::array<char*, 2> arguments = {programName.data(), nullptr};
  // Only Qt's own dialogs can be clicked; the system's are checked by hand.
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  Plan ofTheUser;
  ofTheUser.acts = {Focus, InTurn(acts)};
  plan = &ofTheUser;
  const int exitCode = RunTool(1, arguments.data());
  plan = nullptr;
  if (ofTheUser.failure) std::rethrow_exception(ofTheUser.failure);
  return ofTheUser.areDone ? std::nullopt : std::optional(exitCode);
}

void DoNext(const std::vector<Act>& acts) { plan->acts.insert(plan->acts.begin(), acts.begin(), acts.end()); }

Act InTurn(const std::vector<Act>& acts) {
  return [=] { DoNext(acts); };
}

Act Wait(std::chrono::milliseconds time) {
  return [=] {
    plan->isWaiting = true;
    QTimer::singleShot(time, &plan->context, [] { plan->isWaiting = false; });
  };
}

Act Click(const std::string& control, const std::string& entry) {
  return [=] { ClickAt(PlaceOf(control, entry)); };
}

Act RightClick(const std::string& control, const std::string& entry) {
  return [=] { ClickAt(PlaceOf(control, entry), QTest::MouseClick, Qt::RightButton); };
}

Act Choose(const std::string& caption) {
  return [=] {
    QMenu& menu = OpenMenu();
    for (QAction* const action : menu.actions()) {
      if (CaptionOf(*action) == caption) return ClickAt({menu, menu.actionGeometry(action).center()});
    }
    Fail("no command", caption);
  };
}

Act Drag(const std::string& list, const std::string& entry, const std::string& below) {
  return [=] {
    Place place = PlaceOf(list, entry);
    ClickAt(place, QTest::MousePress);
    place.point = List(list).visualItemRect(&Item(list, below)).bottomLeft();
    QMouseEvent move(QEvent::MouseMove, place.point, place.widget.mapToGlobal(place.point), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&place.widget, &move);
    ClickAt(place, QTest::MouseRelease);
  };
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

Act Select(const std::string& list, const std::string& entry) {
  return [=] { Item(list, entry).setSelected(true); };
}

Act TurnWheel(const std::string& control) {
  return [=] {
    const auto [widget, center] = PlaceOf(control, "");
    const QPointF point = widget.mapTo(widget.window(), center);
    const QPoint notch(0, -QWheelEvent::DefaultDeltasPerStep);
    QWheelEvent event(point, point, {}, notch, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);  // as from the display; may also change the focus
    QApplication::instance()->notify(widget.window()->windowHandle(), &event);
  };
}

Act Answer(const std::string& button) {
  return [=] {
    for (auto* const candidate : Front().findChildren<QAbstractButton*>()) {
      const bool isMeant = CaptionOf(*candidate) == button && candidate->isVisible();
      if (isMeant) return ClickAt(PlaceOf(*candidate));
    }
    Fail("no button", button);
  };
}

Act Press(const std::string& keys) {
  return [=] {
    Activate(Front());
    QTest::keySequence(Front().windowHandle(), QKeySequence(ToQt(keys)));
  };
}

Act Repeat(const std::string& keys) {
  return [=] {
    const QKeyCombination held = QKeySequence(ToQt(keys))[0];
    QKeyEvent again(QEvent::KeyPress, held.key(), held.keyboardModifiers(), "", true);
    QApplication::sendEvent(Front().windowHandle(), &again);
  };
}

Act GoTo(const std::string& control) {
  return [=] {
    Activate(*Control(control).window());
    if (Focus() != control) DoNext({Press("Tab"), GoTo(control)});
  };
}

Act Type(const std::string& text) {
  return [=] {
    Activate(Front());
    // Independent of the keyboard layout.
    QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown, ToQt(text), Qt::NoModifier);
  };
}

Act Paste(const std::u16string& text) {
  return [=] {
    QApplication::clipboard()->setText(QString::fromStdU16String(text));
    Press("Ctrl+V")();
  };
}

Act Soon(const Act& act) {
  return [=] { QMetaObject::invokeMethod(qApp, act, Qt::QueuedConnection); };
}

Act Together(const Act& first, const Act& second) {
  return [=] {
    first();
    second();
  };
}

Act Perform(const std::string& action, const std::string& control) {
  const Act act = [=] {
    QAccessible::queryAccessibleInterface(&Control(control))->actionInterface()->doAction(ToQt(action));
  };
  constexpr std::chrono::milliseconds kLongest(200);  // Qt shows a button pressed for half of this before it clicks
  return InTurn({act, Wait(kLongest)});
}

Act Close(const std::string& window) {
  return [=] { (window.empty() ? Front() : *Windows(window).at(0)).windowHandle()->close(); };
}

Act SavePicture(const std::filesystem::path& file) {
  return [=] {
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QWidget& shown = menu != nullptr ? *menu : Front();
    const bool isSaved = shown.grab().save(QString::fromStdU16String(file.u16string()));
    if (!isSaved) Fail("cannot save", file.string());
  };
}

Act TurnDark() {
  return [] { QApplication::setPalette(QPalette(Qt::black)); };
}

Act SwitchToAnotherProgram() {
  return [] {
    QWidget& window = Front();
    QWidget other;
    other.show();
    Activate(other);
    if (!other.isActiveWindow()) Fail("cannot leave", FromQt(window.objectName()));
    Activate(window);
  };
}

Act Watch(const std::string& list, const Act& look, const Act& act) {
  return [=] {
    const auto context = std::make_shared<QObject>();  // its connections end with it
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
  auto buttons = dialog->findChildren<QPushButton*>();
  std::ranges::stable_sort(buttons, std::greater(), &QPushButton::isDefault);
  for (const QPushButton* const button : buttons) message.buttons.push_back(CaptionOf(*button));
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

std::string Shown(const std::string& list) {
  const auto* const dropDown = qobject_cast<const QComboBox*>(&Control(list));
  const auto* const box = dynamic_cast<const platform::NativeListBox*>(&Control(list));
  std::string shown;
  int row = 0;
  for (const std::string& entry : Entries(list)) {
    const bool isCurrent = row == (dropDown != nullptr ? dropDown->currentIndex() : box->currentRow());
    const bool isSelected = dropDown != nullptr ? isCurrent : box->item(row)->isSelected();
    const bool isTold = isCurrent && (box == nullptr || box->selectionMode() == QListWidget::SingleSelection);
    if (isTold && !isSelected) Fail("an entry that is not selected is told of", list);
    shown += (row++ == 0 ? "" : ", ") + (isSelected ? "[" + entry + "]" : entry);
  }
  return row == 0 && box != nullptr ? "(" + FromQt(box->emptyText) + ")" : shown;
}

std::string Menu() {
  QStringList lines;
  for (const QAction* const action : OpenMenu().actions())
    if (!action->isSeparator()) lines << QString(action->isEnabled() ? "%1" : "(%1)").arg(action->text().simplified());
  return FromQt(lines.join('\n'));
}

std::string Marked(const std::string& list) {
  const auto& box = dynamic_cast<const platform::NativeListBox&>(Control(list));
  QStringList marked;
  for (int row = 0; row < box.count(); ++row)
    if (box.IsMarked(row)) marked << box.item(row)->text();
  return FromQt(marked.join(", "));
}

std::string Look(const std::string& control) {
  const QWidget& widget = Control(control);
  const QFontInfo font(widget.font());
  const QSize size = widget.window()->minimumSize();
  const bool isFixed = size == widget.window()->maximumSize();
  return FromQt(QString("%1, %2 %3 in %4x%5")
                    .arg(widget.accessibleName(), font.family())
                    .arg(font.pixelSize())
                    .arg(isFixed ? size.width() : 0)
                    .arg(isFixed ? size.height() : 0));
}

int CountPixels(const std::string& name, unsigned colour) {
  const QImage picture = (Windows(name).empty() ? Control(name) : *Windows(name).at(0)).grab().toImage();
  int count = 0;
  for (int x = 0; x < picture.width(); ++x) {
    for (int y = 0; y < picture.height(); ++y) count += picture.pixelColor(x, y).rgb() == (0xFF000000 | colour) ? 1 : 0;
  }
  return count;
}

bool IsAtTop(const std::string& list) { return List(list).verticalScrollBar()->value() == 0; }

bool IsEnabled(const std::string& control) { return Control(control).isEnabled(); }

std::string ToolTip() { return FromQt(WithoutMarkup(QToolTip::text())); }

bool IsPointerBusy() { return QApplication::overrideCursor() != nullptr; }

std::string Focus() {
  constexpr int kPatience = 60'000;  // milliseconds
  const auto isActive = [] { return QApplication::activeWindow() != nullptr; };
  if (!QTest::qWaitFor(isActive, kPatience)) Fail("no window became", "active");
  const QWidget* const focused = QApplication::focusWidget();
  return focused == nullptr ? "" : FromQt(focused->objectName());
}

std::string Clipboard() { return FromQt(QApplication::clipboard()->text()); }

std::string TextOfFocus() {
  const auto* const box = qobject_cast<const QLineEdit*>(QApplication::focusWidget());
  return box == nullptr ? "" : FromQt(box->text());
}

}  // namespace support
