#include "platform/qt/style.h"

#include <QStyleOption>

namespace platform {
namespace {

// Replaces the window colour, which Fusion uses here only to derive its outlines.
template <typename Option>
Option Outlined(const Option& option) {
  Option outlined = option;
  outlined.palette.setColor(QPalette::Window, Outline(option.palette, kFusionsDarker).lighter(kFusionsDarker));
  return outlined;
}

}  // namespace

QColor Outline(const QPalette& palette, int darker) {
  constexpr int kDark = 96;  // of 255
  const QColor window = palette.color(QPalette::Window);
  if (window.lightness() >= kDark) return window.darker(darker);
  return Mixed(window, palette.color(QPalette::WindowText));
}

QColor Mixed(const QColor& one, const QColor& other) {
  return {(one.red() + other.red()) / 2, (one.green() + other.green()) / 2, (one.blue() + other.blue()) / 2};
}

Style::Style() : QProxyStyle("Fusion") {}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
  if (const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
    const auto outlined = Outlined(*button);
    return QProxyStyle::drawPrimitive(element, &outlined, painter, widget);
  }
  if (const auto* const frame = qstyleoption_cast<const QStyleOptionFrame*>(option)) {
    const auto outlined = Outlined(*frame);
    return QProxyStyle::drawPrimitive(element, &outlined, painter, widget);
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
}

}  // namespace platform
