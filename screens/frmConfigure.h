// The configuration dialog: what a double-click in the main list does.
#pragma once

#include <QDialog>

#include "screens/LibraryView.h"

class Mnemonics;
class QPushButton;
class QRadioButton;

class frmConfigure : public QDialog, public LibraryView {
  Q_OBJECT
 public:
  explicit frmConfigure(QWidget* parent = nullptr);

 private:
  void BuildControls();
  QWidget* BuildOptions(Mnemonics& mnemonics);
  void LoadSettingsToScreen();
  bool SaveScreenSettings();
  void AcceptSettings();

  QRadioButton* optionViewChart = nullptr;
  QRadioButton* optionEditSelection = nullptr;
  QPushButton* cmdAccept = nullptr;
  QPushButton* cmdClose = nullptr;
};
