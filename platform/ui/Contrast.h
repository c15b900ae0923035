// How well a colour can be read on another one, and a palette whose fainter texts can be.
#pragma once

#include <QColor>
#include <QList>
#include <QPalette>

namespace Contrast {

inline constexpr double readable = 4.5;  // WCAG 2.1, success criterion 1.4.3

// 1 for the same colour to 21 for black on white (WCAG 2.1, relative luminance).
double Between(const QColor& a, const QColor& b);

// The ink, as faint as it can be while it stays readable on all of the grounds; at least half of it.
QColor Faint(const QColor& ink, const QList<QColor>& grounds);

// The palette with hints, links, selected and disabled texts that can be read on every ground of a window.
QPalette WithReadableHints(QPalette palette);

}  // namespace Contrast
