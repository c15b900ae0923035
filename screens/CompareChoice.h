// The choice of the data set that another one is to be compared with.
#pragma once

#include <QDialog>

#include "screens/LibraryView.h"

class ListFilter;
class MainList;
class QPushButton;

class CompareChoice : public QDialog, public LibraryView {
  Q_OBJECT
 public:
  explicit CompareChoice(qint32 one, QWidget* parent = nullptr);

  qint32 Chosen() const;  // 0 for none

 private:
  void BuildControls(const QString& description);
  void Fill(qint32 one);

  MainList* listOther = nullptr;
  ListFilter* filter_ = nullptr;
  QPushButton* cmdCompare = nullptr;
};
