#include "platform/controls.h"

#include <QAccessible>
#include <QApplication>
#include <QCursor>
#include <QFocusEvent>
#include <QItemSelection>
#include <QMetaObject>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QValidator>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "platform/qt/native.h"
#include "platform/qt/run.h"
#include "platform/qt/style.h"
#include "platform/qt/text.h"

namespace platform {
namespace {

// As text, whatever it looks like.
QString ToToolTip(const QString& text) {
  return "<p style='white-space:pre'>" + text.toHtmlEscaped().replace('\n', "<br>") + "</p>";
}

// The style marks the focus only once the Tab key was pressed, thinly, and not at all in a list without entries.
void MarkFocus(QWidget& widget) {
  constexpr int kThickness = 2;
  QPainter painter(&widget);
  painter.setPen(
      QPen(widget.palette().color(QPalette::Highlight), kThickness, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter.drawRect(widget.rect().adjusted(1, 1, -1, -1));
}

// An entry whose tooltip is made when it is shown, or told to a screen reader.
class NativeEntry : public QListWidgetItem {
 public:
  NativeEntry(const QString& text, const NativeListBox& list) : QListWidgetItem(text), list_(&list) {}

  QVariant data(int role) const override {
    if ((role != Qt::ToolTipRole && role != Qt::AccessibleDescriptionRole) || !list_->onToolTip)
      return QListWidgetItem::data(role);
    const QString text = ToQt(list_->onToolTip(list_->row(this)));
    return role == Qt::AccessibleDescriptionRole || text.isEmpty() ? text : ToToolTip(text);
  }

 private:
  const NativeListBox* list_;
};

// All entries are as wide as the widest, which so is measured once, and not each for every layout of the list.
class EntriesOfOneSize : public QStyledItemDelegate {
 public:
  explicit EntriesOfOneSize(NativeListBox& list) : QStyledItemDelegate(&list), list_(&list) {}

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return QStyledItemDelegate::sizeHint(option, index.siblingAtRow(list_->WidestEntry()));
  }

 private:
  NativeListBox* list_;
};

class CodePageValidator : public QValidator {
 public:
  explicit CodePageValidator(QLineEdit& box) : QValidator(&box), box_(&box) {}

  State validate(QString& text, int& cursor) const override {
    QString kept;
    QString leftOut;
    for (const char32_t character : text.toUcs4()) {
      const QString one = QString::fromUcs4(&character, 1);
      (FromUtf16Exactly(one.toStdU16String()) ? kept : leftOut) += one;
    }
    box_->setAccessibleDescription("");
    if (leftOut.isEmpty()) return Acceptable;
    text = kept;
    cursor = static_cast<int>(std::max<qsizetype>(cursor - leftOut.size(), 0));
    const QString hint = "Left out: " + leftOut + "\nThe game's own files cannot spell it.";
    box_->setAccessibleDescription(hint);
    QToolTip::showText(box_->mapToGlobal(QPoint(0, box_->height())), ToToolTip(hint), box_);
    return Acceptable;
  }

 private:
  QLineEdit* box_;
};

}  // namespace

bool IsBlockedByDialog() { return QApplication::activeModalWidget() != nullptr; }

void KeepToCodePage(QLineEdit& box) { box.setValidator(new CodePageValidator(box)); }

NativeTextBox::NativeTextBox(QWidget* parent) : QLineEdit(parent) { KeepToCodePage(*this); }

// By its own policy the wheel would bring it the focus first, and then choose.
NativeDropDownList::NativeDropDownList(QWidget* parent) : QComboBox(parent) { setFocusPolicy(Qt::StrongFocus); }

void NativeDropDownList::focusOutEvent(QFocusEvent* event) {
  QComboBox::focusOutEvent(event);
  // Qt names the new owner of the focus before it tells the old one. Another program has no such owner here,
  // and the list of entries is a window of its own.
  const QWidget* const next = QApplication::focusWidget();
  const bool goesToAnotherControl = next != nullptr && next != this && next->window() == window();
  if (goesToAnotherControl && onValidate) onValidate();
}

void NativeDropDownList::wheelEvent(QWheelEvent* event) {
  event->ignore();  // it would choose another game, unnoticed by who scrolls past
}

void NativeButton::paintEvent(QPaintEvent* event) {
  QPushButton::paintEvent(event);
  if (hasFocus()) MarkFocus(*this);
}

void NativeDropDownList::paintEvent(QPaintEvent* event) {
  QComboBox::paintEvent(event);
  if (hasFocus()) MarkFocus(*this);
}

bool NativeDropDownList::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || !onToolTip) return QComboBox::event(event);
  const QString text = ToQt(onToolTip());
  QToolTip::showText(QCursor::pos(), text.isEmpty() ? "" : ToToolTip(text), this);
  return true;
}

NativeListBox::NativeListBox(QWidget* parent) : QListWidget(parent) {
  setUniformItemSizes(true);
  setItemDelegate(new EntriesOfOneSize(*this));
}

// Changes what is another, and nothing else.
void NativeListBox::Fill(const QStringList& entries) {
  const int oldCount = count();
  const auto newCount = static_cast<int>(entries.size());
  const int most = std::min(oldCount, newCount);
  int before = 0;
  while (before < most && item(before)->text() == entries[before]) ++before;
  int after = 0;
  while (after < most - before && item(oldCount - 1 - after)->text() == entries[newCount - 1 - after]) ++after;

  if (currentRow() >= 0) place_ = currentRow();
  if (before + after == 0) place_ = 0;
  place_ = std::clamp(place_, 0, std::max(newCount - 1, 0));
  // A current entry that is not selected would be told to screen readers as if it were.
  const bool isToldOfEntry = hasFocus() && currentRow() >= 0;
  selectionModel()->clear();
  setAutoScroll(false);
  if (oldCount > before + after) model()->removeRows(before, oldCount - before - after);
  widest_ = kNotMeasured;
  for (int row = before; row < newCount - after; ++row) insertItem(row, new NativeEntry(entries[row], *this));
  setAutoScroll(true);
  if (before + after == 0) scrollToTop();
  SetEmptyText(emptyText);
  if (!isToldOfEntry) return;
  QAccessibleEvent back(this, QAccessible::Focus);
  QAccessible::updateAccessibility(&back);
}

void NativeListBox::SetEmptyText(const QString& text) {
  emptyText = text;
  const QString told = count() == 0 ? text : "";
  if (accessibleDescription() != told) setAccessibleDescription(told);  // it is said each time
  viewport()->update();
}

int NativeListBox::WidestEntry() {
  if (widest_ != kNotMeasured) return widest_;
  int most = kNotMeasured;
  for (int row = 0; row < count(); ++row) {
    const int width = fontMetrics().horizontalAdvance(item(row)->text());
    if (width > most) widest_ = row;
    most = std::max(most, width);
  }
  return widest_;
}

void NativeListBox::Repaint() {
  executeDelayedItemsLayout();
  viewport()->repaint();
}

// By itself Qt would make an entry current that is not selected, unless the mouse brings the focus.
void NativeListBox::focusInEvent(QFocusEvent* event) {
  QFocusEvent byMouse(event->type(), Qt::MouseFocusReason);
  QListWidget::focusInEvent(selectionMode() == SingleSelection ? &byMouse : event);
}

// A screen reader selects without the focus. The list takes it as by a click, and the entry stays selected where the
// selector's validation leaves it in its place.
void NativeListBox::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QListWidget::selectionChanged(selected, deselected);
  if (selected.isEmpty() || dynamic_cast<NativeDropDownList*>(window()->focusWidget()) == nullptr) return;
  const int row = selected.indexes().front().row();
  const auto takeFocus = [this, row, text = item(row)->text()] {
    setFocus();
    if (const QListWidgetItem* const same = item(row); same != nullptr && same->text() == text) setCurrentRow(row);
  };
  QMetaObject::invokeMethod(this, takeFocus, Qt::QueuedConnection);  // the selection is not to change in its change
}

void NativeListBox::keyPressEvent(QKeyEvent* event) {
  if (dynamic_cast<NativeWindow&>(*window()).TakeKey(*event, this)) return;
  if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) {
    const bool isLeft = event->key() == Qt::Key_Left;
    const auto step = isLeft ? QAbstractSlider::SliderSingleStepSub : QAbstractSlider::SliderSingleStepAdd;
    return horizontalScrollBar()->triggerAction(step);
  }
  // Where no entry is selected, a key selects the one that it would go on from.
  if (selectionMode() == SingleSelection && selectedItems().isEmpty()) {
    const int place = currentRow() >= 0 ? currentRow() : place_;
    const int key = event->key();
    if (key == Qt::Key_Up || key == Qt::Key_PageUp) return setCurrentRow(std::max(place - 1, 0));
    if (key == Qt::Key_Down || key == Qt::Key_PageDown || key == Qt::Key_Space) return setCurrentRow(place);
    if (key == Qt::Key_End) return setCurrentRow(count() - 1);
  }
  QListWidget::keyPressEvent(event);
}

void NativeListBox::mouseDoubleClickEvent(QMouseEvent* event) {
  const QListWidgetItem* const clicked = itemAt(event->position().toPoint());
  const bool isOnSelected = event->button() == Qt::LeftButton && clicked != nullptr && clicked->isSelected();
  QListWidget::mouseDoubleClickEvent(event);
  if (isOnSelected)
    dynamic_cast<NativeWindow&>(*window()).TakeKey({QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier}, this);
}

// A selected row has the colours of one whether or not the list has the focus: what a command will act on is to be
// seen.
void NativeListBox::initViewItemOption(QStyleOptionViewItem* option) const {
  QListWidget::initViewItemOption(option);
  option->state |= QStyle::State_Active;
}

// Where a pixel of the layout is no whole number of the screen's, the entries may cover the line that the style draws
// around them. This one is as thin as the screen has it, on the very edge.
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
  if (count() > 0 || emptyText.isEmpty()) return;
  constexpr int kMargin = 4;
  QPainter painter(viewport());
  QColor grey = palette().color(QPalette::Text);  // some themes leave Qt's colour for placeholders black on black
  grey.setAlphaF(0.6F);
  painter.setPen(grey);
  painter.drawText(viewport()->rect().adjusted(kMargin, kMargin, -kMargin, -kMargin),
                   Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextWrapAnywhere, emptyText);
}

void Button::SetEnabled(bool isEnabled) const {
  // Also while a message that has just closed keeps the window from being the active one.
  const bool hasFocus = native_->window()->focusWidget() == native_;
  if (!isEnabled && hasFocus && native_->focusFallback != nullptr) native_->focusFallback->setFocus();
  native_->setEnabled(isEnabled);
}

void Button::OnClick(std::function<void()> handler) const {
  QObject::connect(native_, &QPushButton::clicked, native_, [native = native_, click = std::move(handler)] {
    if (IsBlockedByDialog()) return;
    // The mouse has taken the focus from a drop-down list by now. So does a click by a key or by a screen reader, and
    // the validation may show that there is nothing to click on.
    if (dynamic_cast<NativeDropDownList*>(native->window()->focusWidget()) != nullptr) native->setFocus();
    if (!native->isEnabled()) return;
    click();
    DropInputAfterHandler();
  });
}

void DropDownList::Clear() const { native_->clear(); }

void DropDownList::Add(std::string_view entry) const { native_->addItem(ToQt(entry)); }

int DropDownList::Count() const { return native_->count(); }

void DropDownList::Select(int position) const { native_->setCurrentIndex(position); }

std::string DropDownList::Text() const { return FromQt(native_->currentText()); }

void DropDownList::TakeFocus() const { native_->setFocus(); }

void DropDownList::OnValidate(std::function<void()> handler) const { native_->onValidate = std::move(handler); }

void DropDownList::OnToolTip(std::function<std::string()> handler) const { native_->onToolTip = std::move(handler); }

void ListBox::Fill(const std::vector<std::string>& entries) const {
  QStringList texts;
  texts.reserve(static_cast<qsizetype>(entries.size()));
  for (const std::string& entry : entries) texts.push_back(ToQt(entry));
  native_->Fill(texts);
}

int ListBox::Count() const { return native_->count(); }

void ListBox::Select(int position) const { native_->setCurrentRow(position); }

int ListBox::Selected() const {
  const auto selected = native_->selectionModel()->selectedRows();
  return selected.isEmpty() ? kNoSelection : selected.front().row();
}

std::string ListBox::Text() const { return Text(Selected()); }

std::string ListBox::Text(int position) const {
  const QListWidgetItem* const item = native_->item(position);
  return item != nullptr ? FromQt(item->text()) : std::string();
}

std::vector<std::string> ListBox::SelectedTexts() const {
  std::vector<std::string> texts;
  for (int i = 0; i < native_->count(); ++i) {
    if (native_->item(i)->isSelected()) texts.push_back(Text(i));
  }
  return texts;
}

void ListBox::SetEmptyText(std::string_view text) const { native_->SetEmptyText(ToQt(text)); }

void ListBox::OnToolTip(std::function<std::string(int position)> handler) const {
  native_->onToolTip = std::move(handler);
}

void ListBox::Repaint() const { native_->Repaint(); }

std::string TextBox::Text() const { return FromQt(native_->text()); }

void TextBox::TakeFocus() const { native_->setFocus(); }

}  // namespace platform
