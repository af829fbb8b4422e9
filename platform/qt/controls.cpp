#include "platform/controls.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QScreen>
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
    const QString hint = "Removed: " + leftOut + "\nNot supported in the game's files.";
    box_->setAccessibleDescription(hint);
    QToolTip::showText(box_->mapToGlobal(QPoint(0, box_->height())), ToToolTip(hint), box_);
    return Acceptable;
  }

 private:
  QLineEdit* box_;
};

}  // namespace

bool IsBlockedByDialog() { return QApplication::activeModalWidget() != nullptr; }

QString LinesOnScreen(const QString& text) {
  constexpr int kOtherLines = 8;  // frame, title, buttons
  const int height = QGuiApplication::primaryScreen()->availableGeometry().height();
  const auto most = std::max(height / QFontMetrics(QToolTip::font()).lineSpacing() - kOtherLines, 1);
  const QStringList lines = text.split('\n');
  const auto more = lines.size() - most;
  if (more <= 0) return text;
  return lines.first(most).join('\n') + "\n\u2026 and " + QString::number(more) + " more";
}

QString ToToolTip(const QString& text) {
  return "<p style='white-space:pre'>" + LinesOnScreen(text).toHtmlEscaped().replace('\n', "<br>") + "</p>";
}

// The style marks the focus only after the Tab key, thinly, and never in an empty list.
void MarkFocus(QWidget& widget) {
  constexpr int kThickness = 2;
  QPainter painter(&widget);
  painter.setPen(
      QPen(widget.palette().color(QPalette::Highlight), kThickness, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter.drawRect(widget.rect().adjusted(1, 1, -1, -1));
}

void KeepToCodePage(QLineEdit& box) { box.setValidator(new CodePageValidator(box)); }

NativeTextBox::NativeTextBox(QWidget* parent) : QLineEdit(parent) { KeepToCodePage(*this); }

// With Qt's default policy, the wheel would take the focus and change the selection.
NativeDropDownList::NativeDropDownList(QWidget* parent) : QComboBox(parent) { setFocusPolicy(Qt::StrongFocus); }

void NativeDropDownList::focusOutEvent(QFocusEvent* event) {
  QComboBox::focusOutEvent(event);
  // Qt sets the new focus widget before it notifies the old one. There is none when another program gets the focus; the
  // drop-down popup is a window of its own.
  const QWidget* const next = QApplication::focusWidget();
  const bool goesToAnotherControl = next != nullptr && next != this && next->window() == window();
  if (goesToAnotherControl && onValidate) onValidate();
}

void NativeDropDownList::wheelEvent(QWheelEvent* event) {
  event->ignore();  // would change the game unnoticed while scrolling
}

void NativeButton::paintEvent(QPaintEvent* event) {
  QPushButton::paintEvent(event);
  if (hasFocus()) MarkFocus(*this);
}

void NativeDropDownList::paintEvent(QPaintEvent* event) {
  QComboBox::paintEvent(event);
  if (hasFocus()) MarkFocus(*this);
}

void NativeDropDownList::contextMenuEvent(QContextMenuEvent* event) {
  const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
  dynamic_cast<NativeWindow&>(*window()).ShowMenu(*this, isByKey ? mapToGlobal(rect().center()) : event->globalPos());
}

bool NativeDropDownList::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || !onToolTip) return QComboBox::event(event);
  const QString text = ToQt(onToolTip());
  QToolTip::showText(dynamic_cast<QHelpEvent&>(*event).globalPos(), text.isEmpty() ? "" : ToToolTip(text), this);
  return true;
}

void Button::SetEnabled(bool isEnabled) const {
  // Also while a closing message still keeps the window inactive.
  const bool hasFocus = native_->window()->focusWidget() == native_;
  if (!isEnabled && hasFocus && native_->focusFallback != nullptr) native_->focusFallback->setFocus();
  native_->setEnabled(isEnabled);
}

void Button::OnClick(std::function<void()> handler) const {
  QObject::connect(native_, &QPushButton::clicked, native_, [native = native_, click = std::move(handler)] {
    if (IsBlockedByDialog()) return;
    // A mouse click has already taken the focus from a drop-down list; clicks by key or screen reader do so here. The
    // validation may then disable the button.
    if (dynamic_cast<NativeDropDownList*>(native->window()->focusWidget()) != nullptr) native->setFocus();
    if (!native->isEnabled()) return;
    click();
    DropInputAfterHandler();
  });
}

void Button::TakeFocus() const { native_->setFocus(); }

void DropDownList::Clear() const { native_->clear(); }

void DropDownList::Add(std::string_view entry) const { native_->addItem(ToQt(entry)); }

int DropDownList::Count() const { return native_->count(); }

void DropDownList::Select(int position) const { native_->setCurrentIndex(position); }

std::string DropDownList::Text() const { return FromQt(native_->currentText()); }

void DropDownList::TakeFocus() const { native_->setFocus(); }

void DropDownList::OnValidate(std::function<void()> handler) const { native_->onValidate = std::move(handler); }

void DropDownList::OnToolTip(std::function<std::string()> handler) const { native_->onToolTip = std::move(handler); }

std::string TextBox::Text() const { return FromQt(native_->text()); }

void TextBox::SetText(std::string_view text) const {
  native_->setText(ToQt(text));
  native_->selectAll();
}

void TextBox::TakeFocus() const { native_->setFocus(); }

}  // namespace platform
