#include "screens/ScrollingPage.h"

#include <QApplication>
#include <QScrollBar>

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

QSize ScrollingPage::sizeHint() const { return widget()->sizeHint(); }
