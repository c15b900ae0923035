// Gives the selected data set another name.
#pragma once

#include <QDialog>

#include "data/CData.h"
#include "screens/LibraryView.h"

class QLabel;
class QLineEdit;
class QPushButton;

class RenameForm : public QDialog, public LibraryView {
  Q_OBJECT
 public:
  // Of the data set Globals().gCurrentDataID.
  explicit RenameForm(QWidget* parent = nullptr);

  void LibraryChanged() override;

 private:
  void BuildControls();
  void ShowPresent();
  void Rename();

  CDataPtr data_;  // null where it is gone
  QLabel* lblDescription = nullptr;
  QLabel* lblNews = nullptr;
  QLineEdit* txtName = nullptr;
  QPushButton* cmdRename = nullptr;
};
