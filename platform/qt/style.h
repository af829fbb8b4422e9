#pragma once

#include <QColor>
#include <QPalette>
#include <QProxyStyle>

namespace platform {

// The colour of an outline: darker than the window by this percentage, above 100. In a dark window, which leaves no
// room for that, half-way between window and text.
QColor Outline(const QPalette& palette, int darker);

// Half-way between the two.
QColor Mixed(const QColor& one, const QColor& other);

// Fusion, with these outlines around buttons, boxes and lists.
struct Style : QProxyStyle {
  Style();
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

constexpr int kFusionsDarker = 140;  // Fusion's own percentage for its outlines

}  // namespace platform
