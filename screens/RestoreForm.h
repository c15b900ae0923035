// The list of deleted data sets, from which the user brings them back.
#pragma once

#include <QDialog>
#include <vector>

#include "library/Library.h"
#include "screens/LibraryView.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;

class RestoreForm : public QDialog, public LibraryView {
  Q_OBJECT
 public:
  explicit RestoreForm(QWidget* parent = nullptr);

 private:
  void BuildControls();
  void BuildList();
  void Fill();
  void ShowSelected();
  void Restore();
  const Library::Deleted* Selected() const;  // null for none

  std::vector<Library::Deleted> deleted_;
  QTreeWidget* listDeleted = nullptr;
  QLineEdit* txtName = nullptr;
  QLabel* lblNews = nullptr;
  QPushButton* cmdRestore = nullptr;
  QPushButton* cmdClose = nullptr;
};
