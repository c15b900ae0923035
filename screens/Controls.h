// What the screens do alike with the controls that they make.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTextDocument>

// The control under its name, by which tests, styles and assistive tools find it.
template <class Control>
Control* Named(Control* control, const QString& name) {
  control->setObjectName(name);
  return control;
}

// The room that a window has on its screen, without what the desktop puts around it.
inline QSize RoomFor(const QWidget& window) {
  const int em = window.fontMetrics().height();
  return window.screen()->availableSize() - QSize(em, em * 5 / 2);
}

// Whether its screen is so low for the size of its letters that what can wait has to stand in a menu.
inline bool IsLow(const QWidget& widget) {
  return RoomFor(widget).height() < widget.fontMetrics().height() * 24;
}

// A label for a text of any length: shown to the letter, wrapped, and to be copied from.
inline QLabel* TextLabel(const QString& name, QWidget* parent, const QString& text = {}) {
  auto* label = Named(new QLabel(text, parent), name);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

// A tool tip that shows any text to the letter: what looks like markup would be taken for it.
inline QString PlainToolTip(const QString& text) {
  return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}

// A button that Enter presses only where it has the focus.
inline QPushButton* PlainButton(const QString& name, QWidget* parent, const QString& text,
                                const QString& toolTip = {}) {
  auto* button = Named(new QPushButton(text, parent), name);
  button->setToolTip(toolTip);
  button->setAutoDefault(false);
  return button;
}

// The font of what heads a window or a panel.
inline QFont HeadingFont(const QWidget& widget) {
  QFont font = widget.font();
  font.setBold(true);
  font.setPointSizeF(font.pointSizeF() * 1.25);
  return font;
}
