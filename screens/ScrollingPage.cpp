#include "screens/ScrollingPage.h"

#include <QApplication>
#include <QEvent>
#include <QScrollBar>

#include "screens/Controls.h"

ScrollingPage::ScrollingPage(QWidget* page, QWidget* parent) : QScrollArea(parent) {
  setFrameShape(NoFrame);
  setWidgetResizable(true);
  setFocusPolicy(Qt::NoFocus);
  setWidget(page);
  viewport()->setAutoFillBackground(false);
  page->setAutoFillBackground(false);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
    if (!now || !widget()->isAncestorOf(now)) return;
    // All of it: what the area itself would show is the place of the caret.
    const QRect place(now->mapTo(widget(), QPoint()), now->size());
    const int em = fontMetrics().height();
    ensureVisible(place.center().x(), place.center().y(), place.width() / 2 + em, place.height() / 2 + em);
  });
}

QSize ScrollingPage::sizeHint() const { return WithBar(widget()->sizeHint()); }

QSize ScrollingPage::minimumSizeHint() const {
  const QSize least(widget()->minimumSizeHint().width(), fontMetrics().height() * 4);
  return WithBar(least).boundedTo(RoomFor(*this));
}

// The bar stands beside the page, not on it.
QSize ScrollingPage::WithBar(QSize size) const {
  const bool scrolls = height() < widget()->minimumSizeHint().height();
  return scrolls ? size + QSize(verticalScrollBar()->sizeHint().width(), 0) : size;
}

void ScrollingPage::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  updateGeometry();
}

bool ScrollingPage::eventFilter(QObject* watched, QEvent* event) {
  if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
  return QScrollArea::eventFilter(watched, event);
}
