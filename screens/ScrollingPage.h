// A page of controls that scrolls where the screen has no room for all of it: up and down, and to the sides
// only where the screen itself is narrower than the page. The control that has the focus is in sight.
#pragma once

#include <QScrollArea>

class ScrollingPage : public QScrollArea {
  Q_OBJECT
 public:
  // The page's background is the window's, and its margins are its own.
  explicit ScrollingPage(QWidget* page, QWidget* parent = nullptr);

  QSize sizeHint() const override;  // all of the page
  QSize minimumSizeHint() const override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QSize WithBar(QSize size) const;
};
