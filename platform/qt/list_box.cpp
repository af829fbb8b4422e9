#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QHelpEvent>
#include <QItemSelection>
#include <QLabel>
#include <QMetaObject>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QStyledItemDelegate>
#include <QTimerEvent>
#include <algorithm>
#include <utility>

#include "platform/controls.h"
#include "platform/find_name.h"
#include "platform/qt/native.h"
#include "platform/qt/run.h"
#include "platform/qt/style.h"
#include "platform/qt/text.h"

namespace platform {
namespace {

// An entry that computes its tooltip on demand, for display or screen readers.
class NativeEntry : public QListWidgetItem {
 public:
  NativeEntry(const QString& text, const NativeListBox& list) : QListWidgetItem(text), list_(&list) {}

  QVariant data(int role) const override {
    if (role != Qt::ToolTipRole && role != Qt::AccessibleDescriptionRole) return QListWidgetItem::data(role);
    const QString details = list_->onToolTip ? ToQt(list_->onToolTip(list_->row(this))) : "";
    if (role == Qt::AccessibleDescriptionRole) return details;
    QStringList lines = {list_->IsCut(list_->row(this)) ? text() : "", details};
    lines.removeAll("");
    return lines.isEmpty() ? "" : ToToolTip(lines.join('\n'));
  }

 private:
  const NativeListBox* list_;
};

// As wide as the list, with a warning sign if marked.
class EntryDelegate : public QStyledItemDelegate {
 public:
  explicit EntryDelegate(NativeListBox& list) : QStyledItemDelegate(&list), list_(&list) {}

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const override {
    return {0, option.fontMetrics.height()};
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    if (!list_->IsMarked(index.row())) return;
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->icon = list_->style()->standardIcon(QStyle::SP_MessageBoxWarning);
    option->decorationSize = QSize(option->fontMetrics.ascent(), option->fontMetrics.ascent());
  }

 private:
  NativeListBox* list_;
};

}  // namespace

NativeListBox::NativeListBox(QWidget* parent) : QListWidget(parent), findBox_(new QLabel(this)) {
  setUniformItemSizes(true);
  setItemDelegate(new EntryDelegate(*this));
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  findBox_->hide();
  findBox_->setTextFormat(Qt::PlainText);
  findBox_->setAutoFillBackground(true);
  findBox_->setBackgroundRole(QPalette::ToolTipBase);
  findBox_->setForegroundRole(QPalette::ToolTipText);
  findBox_->setFrameShape(QFrame::Box);
}

// Changes only the entries that differ.
void NativeListBox::Fill(const QStringList& entries) {
  const int oldCount = count();
  const auto newCount = static_cast<int>(entries.size());
  const int most = std::min(oldCount, newCount);
  int before = 0;
  while (before < most && item(before)->text() == entries[before]) ++before;
  int after = 0;
  while (after < most - before && item(oldCount - 1 - after)->text() == entries[newCount - 1 - after]) ++after;

  StopDragging();
  marks_.clear();
  if (currentRow() >= 0) place_ = currentRow();
  if (before + after == 0) place_ = 0;
  place_ = std::clamp(place_, 0, std::max(newCount - 1, 0));
  // Screen readers would announce a current entry as selected.
  const bool isToldOfEntry = hasFocus() && currentRow() >= 0;
  selectionModel()->clear();
  setAutoScroll(false);
  if (oldCount > before + after) model()->removeRows(before, oldCount - before - after);
  for (int row = before; row < newCount - after; ++row) insertItem(row, new NativeEntry(entries[row], *this));
  setAutoScroll(true);
  if (before + after == 0) scrollToTop();
  SetEmptyText(emptyText);
  if (!isToldOfEntry) return;
  QAccessibleEvent back(this, QAccessible::Focus);
  QAccessible::updateAccessibility(&back);
}

void NativeListBox::SetMarks(std::vector<bool> marks) {
  marks_ = std::move(marks);
  viewport()->update();
}

bool NativeListBox::IsMarked(int row) const {
  const auto position = static_cast<std::size_t>(row);
  return position < marks_.size() && marks_[position];
}

bool NativeListBox::IsCut(int row) const {
  constexpr int kMargins = 8;  // left and right of an entry's text, and of its sign
  const int sign = IsMarked(row) ? fontMetrics().ascent() + kMargins : 0;
  return fontMetrics().horizontalAdvance(item(row)->text()) + kMargins + sign > viewport()->width();
}

std::vector<std::string> NativeListBox::Texts() const {
  std::vector<std::string> texts;
  texts.reserve(static_cast<std::size_t>(count()));
  for (int i = 0; i < count(); ++i) texts.push_back(FromQt(item(i)->text()));
  return texts;
}

QPoint NativeListBox::PlaceOfSelected() const {
  const auto selected = selectedItems();
  return selected.isEmpty() ? QPoint() : visualItemRect(selected.front()).center();
}

void NativeListBox::SetEmptyText(const QString& text) {
  emptyText = text;
  const QString told = count() == 0 ? text : "";
  if (accessibleDescription() != told) setAccessibleDescription(told);  // each call is announced
  viewport()->update();
}

void NativeListBox::Repaint() {
  executeDelayedItemsLayout();
  viewport()->repaint();
}

// Unless the mouse brings the focus, Qt would make an unselected entry current.
void NativeListBox::focusInEvent(QFocusEvent* event) {
  QFocusEvent byMouse(event->type(), Qt::MouseFocusReason);
  QListWidget::focusInEvent(selectionMode() == SingleSelection ? &byMouse : event);
}

void NativeListBox::focusOutEvent(QFocusEvent* event) {
  EndFinding();
  QListWidget::focusOutEvent(event);
}

// Screen readers select without the focus. The list then takes the focus, as on a click, and the entry stays selected
// unless the selector's validation moves it.
void NativeListBox::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QListWidget::selectionChanged(selected, deselected);
  if (selected.isEmpty() || dynamic_cast<NativeDropDownList*>(window()->focusWidget()) == nullptr) return;
  const int row = selected.indexes().front().row();
  const auto takeFocus = [this, row, text = item(row)->text()] {
    setFocus();
    if (const QListWidgetItem* const same = item(row); same != nullptr && same->text() == text) setCurrentRow(row);
  };
  QMetaObject::invokeMethod(this, takeFocus, Qt::QueuedConnection);  // not while the selection is changing
}

void NativeListBox::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && dragged_) return StopDragging();
  if (TakeFindKey(*event) || dynamic_cast<NativeWindow&>(*window()).TakeKey(*event)) return;
  // With no selection, a key selects the current row, or one relative to it.
  if (selectionMode() == SingleSelection && selectedItems().isEmpty()) {
    const int place = currentRow() >= 0 ? currentRow() : place_;
    const int key = event->key();
    if (key == Qt::Key_Up || key == Qt::Key_PageUp) return setCurrentRow(std::max(place - 1, 0));
    if (key == Qt::Key_Down || key == Qt::Key_PageDown || key == Qt::Key_Space) return setCurrentRow(place);
    if (key == Qt::Key_End) return setCurrentRow(count() - 1);
  }
  QListWidget::keyPressEvent(event);
}

// Letters extend the recent search text or start a new one. False for keys that searching does not use.
bool NativeListBox::TakeFindKey(const QKeyEvent& event) {
  if (selectionMode() != SingleSelection) return false;
  const bool isFinding = findBox_->isVisible();
  const bool isPlain = (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
  const int key = event.key();
  const bool isLetter = isPlain && !event.text().isEmpty() && event.text().front().isPrint();
  if (key == Qt::Key_F3 && !typed_.isEmpty()) {
    Find((event.modifiers() & Qt::ShiftModifier) != 0 ? FindStep::Previous : FindStep::Next);
  } else if (isLetter && (isFinding || key != Qt::Key_Space)) {
    typed_ = (isFinding ? typed_ : "") + event.text();
    Find(FindStep::Typed);
  } else if (!isFinding || !isPlain) {
    return false;
  } else if (key == Qt::Key_Down || key == Qt::Key_Up) {
    Find(key == Qt::Key_Down ? FindStep::Next : FindStep::Previous);
  } else if (key == Qt::Key_Backspace && typed_.size() > 1) {
    typed_.chop(1);
    Find(FindStep::Typed);
  } else {
    EndFinding();
    return key == Qt::Key_Backspace || key == Qt::Key_Escape;
  }
  return true;
}

// Screen readers announce a match as the current entry; a miss, from the box.
void NativeListBox::Find(FindStep step) {
  constexpr int kMoment = 3000;  // milliseconds
  const int match = FindName(Texts(), FromQt(typed_), currentRow(), step);
  if (match != kNoSelection) setCurrentRow(match);
  findBox_->setText("Find: " + typed_ + (match == kNoSelection ? " \u2013 not found" : ""));
  const int boxHeight = findBox_->sizeHint().height();
  findBox_->setGeometry(0, height() - boxHeight, width(), boxHeight);
  findBox_->show();
  setViewportMargins(0, 0, 0, boxHeight);
  scrollTo(currentIndex());
  findEnd_.start(kMoment, this);
  if (match != kNoSelection) return;
  QAccessibleEvent alert(findBox_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void NativeListBox::EndFinding() {
  findEnd_.stop();
  findBox_->hide();
  setViewportMargins(0, 0, 0, 0);
}

void NativeListBox::timerEvent(QTimerEvent* event) {
  if (event->timerId() == findEnd_.timerId()) return EndFinding();
  if (event->timerId() != scrolling_.timerId()) return QListWidget::timerEvent(event);
  const int y = viewport()->mapFromGlobal(QCursor::pos()).y();
  const bool isAbove = y < 0;
  if (!isAbove && y < viewport()->height()) return;
  verticalScrollBar()->triggerAction(isAbove ? QAbstractSlider::SliderSingleStepSub
                                             : QAbstractSlider::SliderSingleStepAdd);
  DragTo(y);
}

void NativeListBox::mousePressEvent(QMouseEvent* event) {
  EndFinding();
  QListWidget::mousePressEvent(event);
  pressed_ = event->position().toPoint();
}

// Drags the pressed entry if the list can be reordered.
void NativeListBox::mouseMoveEvent(QMouseEvent* event) {
  if (!onMove || (event->buttons() & Qt::LeftButton) == 0) return QListWidget::mouseMoveEvent(event);
  const QPoint place = event->position().toPoint();
  const bool isFar = (place - pressed_).manhattanLength() >= QApplication::startDragDistance();
  if (!dragged_ && isFar && itemAt(pressed_) != nullptr && itemAt(pressed_)->isSelected()) {
    constexpr int kBetweenSteps = 50;  // milliseconds
    dragged_ = Dragged{row(itemAt(pressed_)), 0};
    scrolling_.start(kBetweenSteps, this);
  }
  if (dragged_) DragTo(place.y());
}

void NativeListBox::DragTo(int y) {
  const int height = std::max(visualItemRect(item(0)).height(), 1);
  const int top = visualItemRect(item(0)).top();
  dragged_->gap = std::clamp((y - top + height / 2) / height, 0, count());
  viewport()->update();
}

void NativeListBox::StopDragging() {
  scrolling_.stop();
  dragged_.reset();
  pressed_ = {-1, -1};  // moving on starts no other drag
  viewport()->update();
}

void NativeListBox::mouseReleaseEvent(QMouseEvent* event) {
  QListWidget::mouseReleaseEvent(event);
  if (!dragged_) return;
  const auto [from, gap] = *dragged_;
  StopDragging();
  const int to = gap > from ? gap - 1 : gap;
  if (to != from) onMove(from, to);
}

void NativeListBox::mouseDoubleClickEvent(QMouseEvent* event) {
  const QListWidgetItem* const clicked = itemAt(event->position().toPoint());
  const bool isOnSelected = event->button() == Qt::LeftButton && clicked != nullptr && clicked->isSelected();
  QListWidget::mouseDoubleClickEvent(event);
  if (isOnSelected) dynamic_cast<NativeWindow&>(*window()).TakeKey({QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier});
}

void NativeListBox::contextMenuEvent(QContextMenuEvent* event) {
  const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
  const QPoint place = isByKey ? viewport()->mapToGlobal(PlaceOfSelected()) : event->globalPos();
  dynamic_cast<NativeWindow&>(*window()).ShowMenu(*this, place);
}

// Without the focus the selected row stays visible, but paler, since buttons act on it.
void NativeListBox::initViewItemOption(QStyleOptionViewItem* option) const {
  QListWidget::initViewItemOption(option);
  option->state |= QStyle::State_Active;
  if (hasFocus()) return;
  const QColor strong = option->palette.color(QPalette::Highlight);
  option->palette.setColor(QPalette::Highlight, Mixed(strong, option->palette.color(QPalette::Base)));
  option->palette.setColor(QPalette::HighlightedText, option->palette.color(QPalette::Text));
}

// At fractional scales, entries may cover the outline that the style draws. This one is a device pixel wide, at the
// very edge.
bool NativeListBox::event(QEvent* event) {
  const bool isHandled = QListWidget::event(event);
  if (event->type() != QEvent::Paint) return isHandled;
  const qreal line = 1 / devicePixelRatioF();
  const QRectF all = rect();
  QPainter painter(this);
  const QColor colour = Outline(palette(), kFusionsDarker);
  painter.fillRect(QRectF(all.left(), all.bottom() - line, all.width(), line), colour);
  painter.fillRect(QRectF(all.right() - line, all.top(), line, all.height()), colour);
  if (hasFocus()) MarkFocus(*this);
  return isHandled;
}

void NativeListBox::paintEvent(QPaintEvent* event) {
  QListWidget::paintEvent(event);
  if (hasFocus()) MarkFocus(*viewport());
  QPainter painter(viewport());
  if (dragged_) {
    constexpr int kThickness = 3;
    const QRect first = visualItemRect(item(0));
    const int y = first.top() + dragged_->gap * first.height() - kThickness / 2;
    painter.fillRect(0, std::min(y, viewport()->height() - kThickness), viewport()->width(), kThickness,
                     palette().color(QPalette::Text));
  }
  if (count() > 0 || emptyText.isEmpty()) return;
  constexpr int kMargin = 4;
  QColor grey = palette().color(QPalette::Text);  // in some themes Qt's placeholder colour is black on black
  grey.setAlphaF(0.6F);
  painter.setPen(grey);
  painter.drawText(viewport()->rect().adjusted(kMargin, kMargin, -kMargin, -kMargin),
                   Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextWrapAnywhere, emptyText);
}

void ListBox::Fill(const std::vector<std::string>& entries) const {
  QStringList texts;
  texts.reserve(static_cast<qsizetype>(entries.size()));
  for (const std::string& entry : entries) texts.push_back(ToQt(entry));
  native_->Fill(texts);
}

void ListBox::SetMarks(std::vector<bool> marks) const { native_->SetMarks(std::move(marks)); }

int ListBox::Count() const { return native_->count(); }

void ListBox::Select(int position) const { native_->setCurrentRow(position); }

void ListBox::SelectFirst(int number) const {
  for (int i = 0; i < number; ++i) native_->item(i)->setSelected(true);
}

int ListBox::Selected() const {
  const auto selected = native_->selectionModel()->selectedRows();
  return selected.isEmpty() ? kNoSelection : selected.front().row();
}

std::string ListBox::Text() const { return Text(Selected()); }

std::string ListBox::Text(int position) const {
  const QListWidgetItem* const item = native_->item(position);
  return item != nullptr ? FromQt(item->text()) : std::string();
}

std::vector<std::string> ListBox::Texts() const { return native_->Texts(); }

std::vector<std::string> ListBox::SelectedTexts() const {
  std::vector<std::string> texts;
  for (int i = 0; i < native_->count(); ++i) {
    if (native_->item(i)->isSelected()) texts.push_back(Text(i));
  }
  return texts;
}

bool ListBox::HasFocus() const { return native_->window()->focusWidget() == native_; }

void ListBox::SetEmptyText(std::string_view text) const { native_->SetEmptyText(ToQt(text)); }

void ListBox::OnToolTip(std::function<std::string(int position)> handler) const {
  native_->onToolTip = std::move(handler);
}

void ListBox::OnMove(std::function<void(int from, int to)> handler) const {
  native_->onMove = [native = native_, handler = std::move(handler)](int from, int to) {
    const auto move = [handler, from, to] {
      handler(from, to);
      DropInputAfterHandler();
    };
    QMetaObject::invokeMethod(native, move, Qt::QueuedConnection);  // outside the mouse event
  };
}

void ListBox::Repaint() const { native_->Repaint(); }

}  // namespace platform
