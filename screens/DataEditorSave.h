// Saving from the data editor, apart from any window: the checks with their messages, in their order, and the
// data set that comes of the fields.
#pragma once

#include "data/CData.h"
#include "platform/ui/MessageBox.h"
#include "screens/EditorFields.h"

class DataEditorSave {
 public:
  // edited: the data set of the collection that the fields belong to; null to add a new one.
  // unitList: the names that are in the list of units.
  // lines: for each line of the raw data the edited data set's sample that it is, where that is known.
  explicit DataEditorSave(const EditorFields& fields, CDataPtr edited = nullptr,
                          const QStringList& unitList = {}, Trace::Origins lines = {});

  // True once the data set is in the table. Every question and message is shown; a save that stops leaves the
  // database, the collection and the edited data set as they were.
  bool SaveSelect();

  // Where a save that stopped wants the user: the control's name, and words for a stop without a message.
  const QString& ControlAtFault() const { return controlAtFault_; }
  const QString& Reason() const { return reason_; }

  // The raw data with what the user answered about them, so that no save asks that again.
  const QString& RawData() const { return fields_.rawData; }

  // One line on what others had changed meanwhile; mostly empty.
  const QString& TakenIn() const { return takenIn_; }

  // The steps, in the order of the save.
  bool CheckRawData();
  QString PrepareRawData();  // empty where nothing is left to save
  bool ConfirmExcess();
  bool FillDataObject();
  bool ConfirmKeptDigits();
  bool ConfirmStrangeLimits();
  bool ConfirmNewBase();
  bool StoreData();

 private:
  bool SettleCommas();
  bool ConfirmFliers(const QString& values);
  Trace::Origins HandedOverSamples() const;
  void Keep(QString& values, const QString& kept);
  qint16 MaxSamples() const;
  bool ValidateFields();
  void TakeFlierLimits();
  double NumberIn(QString EditorFields::*text) const;
  bool IsAsShown(const NumberBox& box) const;
  void ShowRemaining(qint16 remaining);
  QString CutToMaxSamples(const QString& values);
  void TakeControlLimits();
  bool DescriptionIsFree();
  bool PutIntoSystem();
  void ShowSaved(const CData* before);
  bool Refuse(const QString& message, const QString& control,
              MessageBox::Icon icon = MessageBox::Icon::Exclamation);
  QString StopWith(const QString& reason, const QString& control);

  EditorFields fields_;
  CDataPtr edited_;
  EditorFields shown_;  // the edited data set's, as the editor shows them
  QStringList unitList_;
  CDataPtr data_;         // a new one, or a copy of the edited one: a save that stops changes nothing in use
  Trace::Origins lines_;  // of the raw data; empty where it is not known which samples they are
  Trace::Origins samples_;  // the same of the values to save
  qint16 validSamples_ = 0;
  QString beforeCut_;  // the values to save, before those beyond Max Samples went
  QString controlAtFault_;
  QString reason_;
  QString takenIn_;
};
