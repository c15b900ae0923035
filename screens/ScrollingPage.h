// A page of controls that scrolls where the screen has no room for all of it. The control that has the focus
// is in sight.
#pragma once

#include <QScrollArea>

class ScrollingPage : public QScrollArea {
  Q_OBJECT
 public:
  // The page's background is the window's, and its margins are its own.
  explicit ScrollingPage(QWidget* page, QWidget* parent = nullptr);

  QSize sizeHint() const override;  // all of the page
};
