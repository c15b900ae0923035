// The units of measurement: a single-record editor over the table Units.
#pragma once

#include <QDialog>
#include <QTimer>
#include <optional>

#include "platform/ado/Recordset.h"
#include "screens/LibraryView.h"

class QLabel;
class QLineEdit;
class RecordBar;

class frmUnits : public QDialog, public LibraryView {
  Q_OBJECT
 public:
  // Opens without a record: Refresh list shows the units.
  explicit frmUnits(QWidget* parent = nullptr);

  void LibraryChanged() override;
  void reject() override;  // Exit and Escape: changes are resolved first

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct Texts {
    QString name, description;
    bool operator==(const Texts&) const = default;
  };

  void BuildControls();
  void ConnectControls();
  void RunCommand(int command);
  void AddUnit();
  void SaveUnit();
  bool SaveCurrentData();
  bool WriteUnit();
  bool SettleWithOthers();
  std::optional<Texts> TextsInTable() const;
  void ReadAgain();
  void TakePresent();
  bool IsOpen() const { return recordset_.GetState() == Recordset::Opened; }
  qint32 CurrentID() const { return recordset_.Field(QStringLiteral("ID")).toInt(); }
  void DeleteUnit();
  void RefreshList();
  bool ListAll();
  void FindUnit(qint32 id);
  void Move(int command);
  void MoveTo(qint64 position);
  bool ResolvePendingChanges();
  bool NameIsFree() const;

  Texts TextsInBoxes() const;
  void ClearBoxes();
  void TakeSnapshot();
  void MonitorChanges();
  void RefreshScreen();  // button states and fields
  void UpdateScreenFields();
  void UpdateButtons();

  Recordset recordset_;
  bool IsNewRecord = false;
  bool ScreenChanged = false;
  bool SnapshotTaken = false;
  bool keepsTyped_ = false;  // the last save was called off
  bool isListed_ = false;    // the recordset has all units, of which there may be none
  QString note_;             // why what was typed was not taken
  QString saved_;            // the name of what is shown, where it was just saved
  QString news_;             // what others have done meanwhile
  Texts snapshot_;           // as last loaded or saved

  QLineEdit* txtName = nullptr;
  QLineEdit* txtDescription = nullptr;
  QLabel* lblRecord = nullptr;
  RecordBar* qsMenuBar1 = nullptr;
  QTimer ChangeMonitorTimer{this};
  QTimer ExitTimer{this};
};
