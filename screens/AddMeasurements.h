// Add Measurements: takes new samples for the selected data set, whose control limits stay.
#pragma once

#include <QDialog>
#include <QTimer>

#include "data/CData.h"
#include "screens/LibraryView.h"

class Led;
class QLabel;
class QPushButton;
class RawDataBox;
class RawDataNotes;

class AddMeasurements : public QDialog, public LibraryView {
  Q_OBJECT
 public:
  explicit AddMeasurements(QWidget* parent = nullptr);  // for the data set Globals().gCurrentDataID

  void LibraryChanged() override;
  int exec() override;     // rejected at once where there is no such data set
  void reject() override;  // asks first where something would be lost

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void LoadDataSet();
  void BuildControls();
  void UpdateNotes();
  void ShowPreview(const QString& text);
  void ShowVerdict(const CData& shown, bool withNewValues);
  void Add();
  bool SettleCommas();

  CDataPtr data_;
  QString news_;  // what the last adding did
  QString gone_;  // that somebody has deleted the data set
  RawDataBox* txtNewValues = nullptr;
  RawDataNotes* notes_ = nullptr;
  Led* ledVerdict = nullptr;
  QLabel* lblDescription = nullptr;
  QLabel* lblLimits = nullptr;
  QLabel* lblVerdict = nullptr;
  QPushButton* cmdAdd = nullptr;
  QTimer NotesTimer{this};
};
