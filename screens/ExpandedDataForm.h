// The expanded view of the data editor's raw data: the same text in a larger box.
#pragma once

#include <QDialog>
#include <QTimer>

class RawDataBox;

class ExpandedDataForm : public QDialog {
  Q_OBJECT
 public:
  explicit ExpandedDataForm(QWidget* parent = nullptr);  // shows Globals().gRawDataText

  void accept() override;  // stores the box's text there
  void reject() override;  // leaves it as it is; asks first where something would be lost

 private:
  void BuildControls();

  RawDataBox* txtRawData = nullptr;
  QString loaded_;
  QTimer LoadTimer{this};
};
