#include "platform/controls.h"

#include <QApplication>
#include <QFocusEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QToolTip>
#include <QValidator>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "platform/qt/native.h"
#include "platform/qt/run.h"
#include "platform/qt/text.h"

namespace platform {
namespace {

// As text, whatever it looks like.
QString ToToolTip(const QString& text) {
  return "<p style='white-space:pre'>" + text.toHtmlEscaped().replace('\n', "<br>") + "</p>";
}

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
    if (leftOut.isEmpty()) {
      Say("");
    } else {
      cursor = static_cast<int>(std::max<qsizetype>(cursor - leftOut.size(), 0));
      text = kept;
      Say("Left out: " + leftOut + "\nThe game's own files cannot spell it.");
    }
    return Acceptable;
  }

 private:
  void Say(const QString& hint) const {
    if (hint.isEmpty() && box_->accessibleDescription().isEmpty()) return;
    box_->setAccessibleDescription(hint);
    QToolTip::showText(box_->mapToGlobal(QPoint(0, box_->height())), hint.isEmpty() ? "" : ToToolTip(hint), box_);
  }

  QLineEdit* box_;
};

}  // namespace

void KeepToCodePage(QLineEdit& box) { box.setValidator(new CodePageValidator(box)); }

NativeTextBox::NativeTextBox(QWidget* parent) : QLineEdit(parent) { KeepToCodePage(*this); }

// By its own policy the wheel would bring it the focus first, and then choose.
NativeDropDownList::NativeDropDownList(QWidget* parent) : QComboBox(parent) { setFocusPolicy(Qt::StrongFocus); }

void NativeDropDownList::focusOutEvent(QFocusEvent* event) {
  QComboBox::focusOutEvent(event);
  // The toolkit names the new owner of the focus before it tells the old one. Another program has no such owner here,
  // and the list of entries is a window of its own.
  const QWidget* const next = QApplication::focusWidget();
  const bool goesToAnotherControl = next != nullptr && next != this && next->window() == window();
  if (goesToAnotherControl && onValidate) onValidate();
}

void NativeDropDownList::wheelEvent(QWheelEvent* event) {
  // Without the focus there would be no validation after the choice, and the lists would show another game's mods.
  if (hasFocus()) {
    QComboBox::wheelEvent(event);
  } else {
    event->ignore();
  }
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
  const QColor colour = palette().color(QPalette::Window).darker(140);
  painter.fillRect(QRectF(all.left(), all.bottom() - line, all.width(), line), colour);
  painter.fillRect(QRectF(all.right() - line, all.top(), line, all.height()), colour);
  return isHandled;
}

void NativeListBox::paintEvent(QPaintEvent* event) {
  QListWidget::paintEvent(event);
  if (count() > 0 || emptyText.isEmpty()) return;
  constexpr int kMargin = 4;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  painter.drawText(viewport()->rect().adjusted(kMargin, kMargin, -kMargin, -kMargin),
                   Qt::AlignLeft | Qt::AlignTop | Qt::TextWrapAnywhere, emptyText);
}

void Button::SetEnabled(bool isEnabled) const {
  if (!isEnabled && native_->hasFocus() && native_->fills != nullptr) native_->fills->setFocus();
  native_->setEnabled(isEnabled);
}

void Button::OnClick(std::function<void()> handler) const {
  QObject::connect(native_, &QPushButton::clicked, native_, [click = std::move(handler)] {
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

void ListBox::Fill(const std::vector<std::string>& entries) const {
  QStringList texts;
  texts.reserve(static_cast<qsizetype>(entries.size()));
  for (const std::string& entry : entries) texts.push_back(ToQt(entry));
  native_->clear();
  native_->addItems(texts);
}

int ListBox::Count() const { return native_->count(); }

void ListBox::Select(int position) const {
  native_->setCurrentRow(position);
  if (Selected() != position) native_->clearSelection();
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

std::vector<std::string> ListBox::SelectedTexts() const {
  std::vector<std::string> texts;
  for (int i = 0; i < native_->count(); ++i) {
    if (native_->item(i)->isSelected()) texts.push_back(Text(i));
  }
  return texts;
}

void ListBox::SetEmptyText(std::string_view text) const { native_->emptyText = ToQt(text); }

void ListBox::ShowNow() const { native_->viewport()->repaint(); }

std::string TextBox::Text() const { return FromQt(native_->text()); }

void TextBox::TakeFocus() const { native_->setFocus(); }

}  // namespace platform
