// The list of runs and notes that have lost their samples: the user removes them, or puts a note on another
// point.
#pragma once

#include <QDialog>

#include "charts/StatPage.h"
#include "data/CData.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTreeWidget;

class UnplacedForm : public QDialog {
  Q_OBJECT
 public:
  // Of the data set that the page shows; notes are put on that point of it, where one is chosen.
  UnplacedForm(const CData& dataSet, const StatPage& page, std::optional<int> point,
               QWidget* parent = nullptr);

  bool HasChanged() const { return hasChanged_; }  // the library

 private:
  void BuildControls();
  void BuildList();
  void Fill();
  void ShowSelected();
  void Place();
  void Remove(bool all);
  const Trace::Note* SelectedNote() const;  // null where not one note alone is selected

  CData data_;  // as it was on the page, whatever others do meanwhile
  const PointTrace trace_;
  const std::optional<int> point_;
  const int subgroupSize_;
  Trace::Record record_;  // as it is listed: its unplaced notes, then its unplaced runs
  bool hasChanged_ = false;
  QTreeWidget* listUnplaced = nullptr;
  QPlainTextEdit* txtNote = nullptr;
  QLabel* lblNews = nullptr;
  QPushButton* cmdPlace = nullptr;
  QPushButton* cmdRemove = nullptr;
  QPushButton* cmdRemoveAll = nullptr;
};
