#include "platform/window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMetaObject>
#include <QPainter>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "platform/qt/fonts.h"
#include "platform/qt/native.h"
#include "platform/qt/run.h"
#include "platform/qt/style.h"
#include "platform/qt/text.h"

namespace platform {
namespace {

constexpr int kTwipsPerPixel = 15;

int Pixels(int twips) { return (twips + kTwipsPerPixel / 2) / kTwipsPerPixel; }

QRect Pixels(const Place& place) {
  return {Pixels(place.left), Pixels(place.top), Pixels(place.width), Pixels(place.height)};
}

bool IsOnWayland() { return QGuiApplication::platformName().startsWith("wayland"); }

QColor ToQColor(const Colour& colour) { return {colour.red, colour.green, colour.blue}; }

QWidget* MakeLabel(const ControlLayout& control, QWidget* parent) {
  auto* const label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setText(ToQt(control.caption));
  label->setAlignment((control.kind == ControlKind::CentredLabel ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignTop);
  label->setAttribute(Qt::WA_TransparentForMouseEvents);  // labels may overlap the control below
  return label;
}

QWidget* MakeListBox(const ControlLayout& control, QAbstractItemView::SelectionMode mode, QWidget* parent) {
  auto* const list = new NativeListBox(parent);
  list->setSelectionMode(mode);
  list->setTextElideMode(control.cutting == Cutting::InTheMiddle ? Qt::ElideMiddle : Qt::ElideRight);
  return list;
}

QWidget* MakeWidget(const ControlLayout& control, QWidget* parent) {
  switch (control.kind) {
    case ControlKind::Label:
    case ControlKind::CentredLabel:
      return MakeLabel(control, parent);
    case ControlKind::Button:
      return new NativeButton(ToQt(control.caption), parent);
    case ControlKind::DropDownList:
      return new NativeDropDownList(parent);
    case ControlKind::ListBox:
      return MakeListBox(control, QAbstractItemView::SingleSelection, parent);
    case ControlKind::MultiListBox:
      return MakeListBox(control, QAbstractItemView::MultiSelection, parent);
    case ControlKind::TextBox:
      return new NativeTextBox(parent);
    case ControlKind::Line:
    case ControlKind::Frame:
      break;  // painted by the window
  }
  return nullptr;
}

// Treats both Enter keys, and keypad keys, like the main ones.
QKeyCombination Plain(QKeyCombination key) {
  const auto code = key.key() == Qt::Key_Enter ? Qt::Key_Return : key.key();
  return QKeyCombination(key.keyboardModifiers() & ~Qt::KeypadModifier, code);
}

template <typename Native>
Native& Find(const NativeWindow& window, std::string_view name) {
  const auto found = window.controls.find(name);
  auto* const native = found == window.controls.end() ? nullptr : dynamic_cast<Native*>(found->second);
  if (native == nullptr) StopForUnknownName("control of this kind", name);
  return *native;
}

}  // namespace

// No Maximise button, no resizable frame.
NativeWindow::NativeWindow(const WindowLayout& layout)
    : QWidget(nullptr, Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                           Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint | Qt::MSWindowsFixedSizeDialogHint),
      layout_(layout) {
  setObjectName(ToQt(layout.name));
  setWindowTitle(ToQt(layout.caption));
  setFixedSize(Pixels(layout.width), Pixels(layout.height));
  setFont(ToQFont(layout.font));
  if (layout.colours) {
    QPalette colours = palette();
    colours.setColor(QPalette::Window, ToQColor(layout.colours->background));
    setPalette(colours);
  }
  for (const ControlLayout& control : layout.controls) AddControl(control);
  for (const ControlLayout& control : layout.controls) ConnectControl(control);
  for (const CommandLayout& command : layout.commands) AddCommand(command);
  SetTabOrder();
}

NativeWindow::~NativeWindow() { SetOpen(false); }

void NativeWindow::AddControl(const ControlLayout& control) {
  QWidget* const widget = MakeWidget(control, this);
  if (widget == nullptr) return;
  widget->setObjectName(ToQt(control.name));
  widget->setGeometry(Pixels(control.place));
  widget->setToolTip(ToQt(control.tooltip));
  const std::string_view words = control.tooltip.empty() ? control.caption : control.tooltip;
  widget->setAccessibleName(ToQt(control.accessibleName.empty() ? words : control.accessibleName));
  if (!control.font.family.empty()) widget->setFont(ToQFont(control.font));
  widget->setEnabled(control.initially == Initially::Enabled);
  if (layout_.colours && qobject_cast<QLabel*>(widget) != nullptr) {
    QPalette colours = widget->palette();
    colours.setColor(QPalette::WindowText, ToQColor(layout_.colours->labels));
    widget->setPalette(colours);
  }
  controls.emplace(control.name, widget);
  if (control.role == ButtonRole::Plain) return;
  auto& button = Find<NativeButton>(*this, control.name);
  const bool isDefault = control.role == ButtonRole::Default;
  button.setDefault(isDefault);
  (isDefault ? defaultButton_ : cancelButton_) = &button;
}

void NativeWindow::ConnectControl(const ControlLayout& control) const {
  if (!control.focusFallback.empty())
    Find<NativeButton>(*this, control.name).focusFallback = &Find<NativeListBox>(*this, control.focusFallback);
  if (control.label.empty()) return;
  auto& label = Find<QLabel>(*this, control.label);
  auto& named = Find<QWidget>(*this, control.name);
  label.setBuddy(&named);
  named.setAccessibleName(label.text().remove(':'));
}

void NativeWindow::AddCommand(const CommandLayout& layout) {
  const QKeySequence key(ToQt(layout.key), QKeySequence::PortableText);
  auto* const button = layout.button.empty() ? nullptr : &Find<NativeButton>(*this, layout.button);
  auto* const control = layout.control.empty() ? nullptr : &Find<QWidget>(*this, layout.control);
  commands_.push_back({&layout, key.isEmpty() ? QKeyCombination() : Plain(key[0]), button, control});
  if (key.isEmpty()) return;
  const QString place = control != nullptr ? " in " + control->accessibleName() : "";
  if (button != nullptr) return button->setAccessibleDescription(ToQt(layout.key) + place);
  if (control != nullptr) return;
  const QString others = accessibleDescription();
  setAccessibleDescription((others.isEmpty() ? "" : others + ", ") + ToQt(layout.key) + ": " + ToQt(layout.caption));
}

std::vector<NativeWindow::Command*> NativeWindow::FindCommands(std::string_view caption) {
  std::vector<Command*> found;
  for (Command& command : commands_) {
    if (command.layout->caption == caption) found.push_back(&command);
  }
  if (found.empty()) StopForUnknownName("command", caption);
  return found;
}

bool NativeWindow::Command::CanRun() const {
  if (button != nullptr && !button->isEnabled()) return false;
  if (isAvailable && !isAvailable()) return false;
  const auto* const list = dynamic_cast<const NativeListBox*>(control);
  return layout->actsOn == ActsOn::Window || (list != nullptr && !list->selectedItems().isEmpty());
}

// Focusing may refill the lists, so CanRun is checked afterwards.
void NativeWindow::Command::Run() const {
  if (IsBlockedByDialog()) return;
  if (control != nullptr) control->setFocus();
  if (!CanRun()) return;
  if (button != nullptr) return button->click();
  handler();
  DropInputAfterHandler();
}

bool NativeWindow::TakeKey(const QKeyEvent& event) {
  QWidget* const focus = focusWidget();
  const QKeyCombination pressed = Plain(event.keyCombination());
  if (pressed == QKeyCombination(Qt::Key_Menu) || pressed == (Qt::SHIFT | Qt::Key_F10)) {
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, {}, {}, Qt::NoModifier);
    return focus != nullptr && QCoreApplication::sendEvent(focus, &menu);
  }
  const auto found = std::ranges::find_if(commands_, [&](const Command& command) {
    return !command.layout->key.empty() && command.key == pressed && command.IsFor(focus);
  });
  if (found == commands_.end()) return false;
  if (!IsRepeat(event) || found->layout->repeats) found->Run();
  return true;
}

void NativeWindow::ShowMenu(const QWidget& control, const QPoint& place) {
  auto* const menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (const Command& command : commands_) {
    if (!command.IsFor(&control)) continue;
    if (command.layout->startsGroup) menu->addSeparator();
    auto* const action = menu->addAction(ToQt(command.layout->caption) + "\t" + ToQt(command.layout->key));
    action->setEnabled(command.CanRun());
    const auto run = [&command] { command.Run(); };
    connect(action, &QAction::triggered, this, run, Qt::QueuedConnection);
  }
  menu->isEmpty() ? delete menu : menu->popup(place);
}

// Shows the tooltip where the mouse would.
void NativeWindow::ShowDetails() {
  auto* const list = dynamic_cast<NativeListBox*>(focusWidget());
  QWidget* const shown = list != nullptr ? list->viewport() : focusWidget();
  if (shown == nullptr) return;
  const QPoint place = list != nullptr ? list->PlaceOfSelected() : shown->rect().center();
  QHelpEvent event(QEvent::ToolTip, place, shown->mapToGlobal(place));
  QCoreApplication::sendEvent(shown, &event);
}

void NativeWindow::SetTabOrder() {
  std::vector<const ControlLayout*> stops;
  for (const ControlLayout& control : layout_.controls) {
    const bool takesFocus =
        controls.contains(control.name) && qobject_cast<QLabel*>(controls[std::string(control.name)]) == nullptr;
    if (takesFocus && control.tabOrder != kNoTabStop) stops.push_back(&control);
  }
  std::ranges::sort(stops, {}, &ControlLayout::tabOrder);
  const auto widget = [this](const ControlLayout* control) { return controls[std::string(control->name)]; };
  for (std::size_t i = 1; i < stops.size(); ++i) setTabOrder(widget(stops[i - 1]), widget(stops[i]));
  const auto first =
      layout_.firstFocus.empty() ? stops.begin() : std::ranges::find(stops, layout_.firstFocus, &ControlLayout::name);
  if (first != stops.end()) widget(*first)->setFocus();
}

void NativeWindow::SetOpen(bool isOpen) {
  if (isOpen == isOpen_) return;
  isOpen_ = isOpen;
  isOpen ? NoteWindowOpened() : NoteWindowClosed();
}

// Above another window of the tool, offset from windows of its own kind.
void NativeWindow::PlaceAmongOthers() {
  constexpr int kStep = 24;
  QPoint place;
  QPoint middle;
  for (const QWidget* const other : QApplication::topLevelWidgets()) {
    if (other == this || !other->isVisible() || dynamic_cast<const NativeWindow*>(other) == nullptr) continue;
    const QPoint next = other->pos() + QPoint(kStep, kStep);
    const bool isAlike = other->objectName() == objectName();
    if (isAlike) place = QPoint(std::max(place.x(), next.x()), std::max(place.y(), next.y()));
    if (!isAlike) middle = other->pos() + (other->rect().center() - rect().center());
  }
  if (place.isNull()) place = middle;
  if (place.isNull()) return;
  const QRect room = screen()->availableGeometry();
  move(room.contains(QRect(place, size())) ? place : room.topLeft());
}

void NativeWindow::Open() {
  PlaceAmongOthers();
  SetOpen(true);
  show();
  activateWindow();
}

void NativeWindow::OpenInFrontOf(NativeWindow& other) {
  other.inFront_ = this;
  // No owner, except on Wayland, where programs cannot raise their windows.
  if (IsOnWayland() && other.isOpen_) {
    winId();  // creates the handle
    windowHandle()->setTransientParent(other.windowHandle());
  }
  Open();
}

void NativeWindow::CloseByItself() {
  closesByItself_ = true;
  close();
  closesByItself_ = false;
}

void NativeWindow::Enable() {
  setEnabled(true);
  if (isOpen_) activateWindow();
}

void NativeWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::ActivationChange) BringWhatIsInFront();
  if (event->type() == QEvent::WindowStateChange) TakeDesktopsSize();
}

void NativeWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  TakeDesktopsSize();
}

void NativeWindow::BringWhatIsInFront() {
  if (!isActiveWindow() || isEnabled() || inFront_ == nullptr) return;
  inFront_->setWindowState(inFront_->windowState() & ~Qt::WindowMinimized);
  inFront_->raise();
  inFront_->activateWindow();
}

// Some desktops still maximise the window or make it full-screen. Its controls stay in place.
void NativeWindow::TakeDesktopsSize() {
  const bool isFixed = maximumSize() == minimumSize();
  const bool isFilling = isMaximized() || isFullScreen();
  if (isFilling == !isFixed) return;
  if (!isFilling) return IsOnWayland() ? resize(minimumSize()) : setFixedSize(minimumSize());
  if (IsOnWayland() && !isMaximized()) return;  // Wayland centres it on the screen
  setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  // Wayland kills a program whose maximised window has a different size. The compositor sent the size before the window
  // could take it, so the window is shown again before it is painted. It keeps no maximum size afterwards: desktops may
  // briefly show it unmaximised.
  if (IsOnWayland()) {
    hide();
    show();
  }
}

void NativeWindow::closeEvent(QCloseEvent* event) {
  if (!isOpen_) return;  // the display may ask again while the window closes
  bool cancel = !isEnabled() || (IsDroppingInput() && !closesByItself_);
  if (!cancel && onUnload) onUnload(cancel);
  event->setAccepted(!cancel);
  if (cancel) return;
  SetOpen(false);
  if (onClosed) QMetaObject::invokeMethod(qApp, onClosed, Qt::QueuedConnection);
}

void NativeWindow::keyPressEvent(QKeyEvent* event) {
  if (TakeKey(*event)) return;
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    auto* const focused = qobject_cast<QPushButton*>(focusWidget());
    QPushButton* const button = focused != nullptr ? focused : defaultButton_;
    if (button != nullptr) button->click();
  } else if (event->key() == Qt::Key_Escape && cancelButton_ != nullptr) {
    cancelButton_->click();
  } else if (event->key() == Qt::Key_Escape && defaultButton_ != nullptr) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void NativeWindow::paintEvent(QPaintEvent* event) {
  QWidget::paintEvent(event);
  QPainter painter(this);
  constexpr int kDarker = 180;                          // percent
  painter.setBrush(palette().color(QPalette::Window));  // of overlapping frames, the later one is on top
  painter.setPen(Outline(palette(), kDarker));
  for (const ControlLayout& control : layout_.controls) {
    const QRect place = Pixels(control.place);
    if (control.kind == ControlKind::Line)
      painter.drawLine(place.topLeft(), place.topLeft() + QPoint(place.width(), place.height()));
    if (control.kind == ControlKind::Frame) painter.drawRect(place.adjusted(0, 0, -1, -1));
  }
}

Window::Window(std::string_view name) : native_(std::make_unique<NativeWindow>(FindLayout(name))) {}

Window::~Window() = default;

Button Window::Button(std::string_view name) const { return platform::Button(Find<NativeButton>(*native_, name)); }

DropDownList Window::DropDownList(std::string_view name) const {
  return platform::DropDownList(Find<NativeDropDownList>(*native_, name));
}

ListBox Window::ListBox(std::string_view name) const { return platform::ListBox(Find<NativeListBox>(*native_, name)); }

TextBox Window::TextBox(std::string_view name) const { return platform::TextBox(Find<NativeTextBox>(*native_, name)); }

void Window::Show() const { native_->Open(); }

void Window::ShowInFrontOf(const Window& other) const { native_->OpenInFrontOf(*other.native_); }

void Window::Close() const { native_->CloseByItself(); }

void Window::OnUnload(std::function<void(bool& cancel)> handler) const { native_->onUnload = std::move(handler); }

void Window::OnClosed(std::function<void()> handler) const { native_->onClosed = std::move(handler); }

void Window::OnCommand(std::string_view caption, const std::function<void()>& handler) const {
  for (NativeWindow::Command* const command : native_->FindCommands(caption)) command->handler = handler;
}

void Window::OnIsAvailable(std::string_view caption, const std::function<bool()>& handler) const {
  for (NativeWindow::Command* const command : native_->FindCommands(caption)) command->isAvailable = handler;
}

void Window::SetCaption(std::string_view caption) const { native_->setWindowTitle(ToQt(caption)); }

void Window::ShowDetails() const { native_->ShowDetails(); }

void Window::Disable() const { native_->setEnabled(false); }

void Window::Enable() const { native_->Enable(); }

}  // namespace platform
