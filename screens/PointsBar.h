// The bar that tells which points the charts are to show: the ends of a stretch, and the way back to all.
#pragma once

#include <QFrame>

#include "charts/ControlChart.h"

class QHBoxLayout;
class QPushButton;
class QSpinBox;

class PointsBar : public QFrame {
  Q_OBJECT
 public:
  explicit PointsBar(QWidget* parent = nullptr);

  void Offer(PointRange points, int count);  // of so many points
  void ShowAs(bool isPart);                  // whether there is a way back to all
  void OfferMonths(bool areThere);

  PointRange Points() const;
  void TakeFocus();

  QSize minimumSizeHint() const override;  // with the buttons below the boxes

 Q_SIGNALS:
  void Changed();  // the boxes, by the user
  void ShowRequested();
  void AllRequested();
  void MonthRequested(int months);  // of today, or so many months later

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QSpinBox* MakeBox(const QString& name, const QString& toolTip);

  QHBoxLayout* boxes_ = nullptr;
  QHBoxLayout* buttons_ = nullptr;
  QSpinBox* spinFromPoint = nullptr;
  QSpinBox* spinToPoint = nullptr;
  QPushButton* cmdShowPoints = nullptr;
  QPushButton* cmdAllPoints = nullptr;
  QPushButton* cmdThisMonth = nullptr;
  QPushButton* cmdLastMonth = nullptr;
};
