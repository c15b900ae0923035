// The configuration dialog: what a double-click in the main list does.
#pragma once

#include <QDialog>

class QPushButton;
class QRadioButton;

class frmConfigure : public QDialog {
  Q_OBJECT
 public:
  explicit frmConfigure(QWidget* parent = nullptr);

 private:
  void BuildControls();
  void LoadSettingsToScreen();
  bool SaveScreenSettings();
  void AcceptSettings();

  QRadioButton* optionViewChart = nullptr;
  QRadioButton* optionEditSelection = nullptr;
  QPushButton* cmdAccept = nullptr;
  QPushButton* cmdClose = nullptr;
};
