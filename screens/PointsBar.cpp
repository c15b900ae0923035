#include "screens/PointsBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <algorithm>

#include "screens/Controls.h"
#include "texts/ChartWords.h"
#include "texts/NoteWords.h"

using namespace Qt::StringLiterals;

PointsBar::PointsBar(QWidget* parent) : QFrame(parent) {
  auto* from = new QLabel(Words::Points::from(), this);
  spinFromPoint = MakeBox(u"spinFromPoint"_s, Words::Points::fromTip());
  from->setBuddy(spinFromPoint);
  auto* to = new QLabel(Words::Points::to(), this);
  spinToPoint = MakeBox(u"spinToPoint"_s, Words::Points::toTip());
  to->setBuddy(spinToPoint);
  cmdShowPoints = Named(new QPushButton(Words::Points::show(), this), u"cmdShowPoints"_s);
  cmdShowPoints->setToolTip(Words::Points::showTip());
  cmdAllPoints = Named(new QPushButton(Words::Points::all(), this), u"cmdAllPoints"_s);
  cmdAllPoints->setToolTip(Words::Points::allTip());
  cmdThisMonth = Named(new QPushButton(Words::Period::thisMonth(), this), u"cmdThisMonth"_s);
  cmdThisMonth->setToolTip(Words::Period::thisMonthTip());
  cmdLastMonth = Named(new QPushButton(Words::Period::lastMonth(), this), u"cmdLastMonth"_s);
  cmdLastMonth->setToolTip(Words::Period::lastMonthTip());

  boxes_ = new QHBoxLayout;
  boxes_->addWidget(from);
  boxes_->addWidget(spinFromPoint);
  boxes_->addWidget(to);
  boxes_->addWidget(spinToPoint);
  buttons_ = new QHBoxLayout;
  for (QPushButton* button : {cmdShowPoints, cmdAllPoints, cmdThisMonth, cmdLastMonth}) {
    button->setAutoDefault(false);
    buttons_->addWidget(button);
  }
  auto* parts = new QBoxLayout(QBoxLayout::LeftToRight, this);
  parts->setContentsMargins(0, 0, 0, 0);
  parts->addLayout(boxes_);
  parts->addLayout(buttons_);
  parts->addStretch();
  connect(cmdShowPoints, &QPushButton::clicked, this, &PointsBar::ShowRequested);
  connect(cmdAllPoints, &QPushButton::clicked, this, &PointsBar::AllRequested);
  connect(cmdThisMonth, &QPushButton::clicked, this, [this] { Q_EMIT MonthRequested(0); });
  connect(cmdLastMonth, &QPushButton::clicked, this, [this] { Q_EMIT MonthRequested(-1); });
}

QSize PointsBar::minimumSizeHint() const {
  return {std::max(boxes_->sizeHint().width(), buttons_->sizeHint().width()),
          QFrame::minimumSizeHint().height()};
}

void PointsBar::resizeEvent(QResizeEvent* event) {
  QFrame::resizeEvent(event);
  const int inOneRow = boxes_->sizeHint().width() + layout()->spacing() + buttons_->sizeHint().width();
  static_cast<QBoxLayout*>(layout())->setDirection(width() < inOneRow ? QBoxLayout::TopToBottom
                                                                      : QBoxLayout::LeftToRight);
}

// A box takes what is typed on Enter and leaves the key.
void PointsBar::keyPressEvent(QKeyEvent* event) {
  const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (isEnter) return ShowRequested();
  QFrame::keyPressEvent(event);
}

QSpinBox* PointsBar::MakeBox(const QString& name, const QString& toolTip) {
  auto* box = Named(new QSpinBox(this), name);
  box->setToolTip(toolTip);
  box->setAccessibleDescription(toolTip);
  box->setKeyboardTracking(false);
  connect(box, &QSpinBox::valueChanged, this, &PointsBar::Changed);
  return box;
}

void PointsBar::Offer(PointRange points, int count) {
  const QSignalBlocker blockers[] = {QSignalBlocker(spinFromPoint), QSignalBlocker(spinToPoint)};
  for (QSpinBox* box : {spinFromPoint, spinToPoint}) box->setRange(1, count);
  spinFromPoint->setValue(points.first);
  spinToPoint->setValue(points.last);
}

void PointsBar::ShowAs(bool isPart) { cmdAllPoints->setEnabled(isPart); }

void PointsBar::OfferMonths(bool areThere) {
  for (QPushButton* button : {cmdThisMonth, cmdLastMonth}) button->setVisible(areThere);
}

PointRange PointsBar::Points() const {
  const auto [first, last] = std::minmax({spinFromPoint->value(), spinToPoint->value()});
  return {first, last};
}

void PointsBar::TakeFocus() {
  spinFromPoint->setFocus();
  spinFromPoint->selectAll();
}
