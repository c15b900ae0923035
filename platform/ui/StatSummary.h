// The eight summary values of one data set, label and value in rows.
#pragma once

#include <QFrame>
#include <array>

class QLabel;

class StatSummary : public QFrame {
  Q_OBJECT
 public:
  explicit StatSummary(QWidget* parent = nullptr);

  // Value labels are named "CPKValue", "SampleQty" and so on, after their setters.
  void SetCPKValue(double value);
  void SetSampleQty(int value);
  void SetSubGroupSize(int value);
  void SetMinValue(double value);
  void SetMaxValue(double value);
  void SetStdDevValue(double value);
  void SetUpperSpecLimit(double value);
  void SetLowerSpecLimit(double value);
  void Clear();  // every value empty

 private:
  std::array<QLabel*, 8> values_{};
};
