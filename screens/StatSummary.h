// The eight summary values of one data set, label and value in rows.
#pragma once

#include <QFrame>

#include "data/CData.h"

class QLabel;

class StatSummary : public QFrame {
  Q_OBJECT
 public:
  explicit StatSummary(QWidget* parent = nullptr);

  // The labels of the values are named after the properties that they show: "CPKValue", "SampleQty" and so
  // on.
  void Show(const CData& dataSet);
  void Clear();  // every value empty

 private:
  QList<QLabel*> values_;
};
