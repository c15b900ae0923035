// Saving from the data editor, apart from any window: the checks with their messages, in their order, and the
// data set that comes of the fields.
#pragma once

#include "data/CData.h"
#include "platform/ui/MessageBox.h"
#include "screens/EditorFields.h"

class DataEditorSave {
 public:
  // edited: the data set of the collection that the fields belong to; null to add a new one.
  explicit DataEditorSave(const EditorFields& fields, CDataPtr edited = nullptr);

  // True once the data set is in the table. Every question and message is shown; a save that stops leaves the
  // database, the collection and the edited data set as they were.
  bool SaveSelect();

  // Where a save that stopped wants the user: the control's name, and words for a stop without a message.
  const QString& ControlAtFault() const { return controlAtFault_; }
  const QString& Reason() const { return reason_; }

  // The steps, in the order of the save.
  bool CheckRawData();
  QString PrepareRawData();  // empty where nothing is left to save
  bool ConfirmExcess();
  bool FillDataObject();
  bool StoreData();

 private:
  QString HandedOverValues() const;
  qint16 MaxSamples() const;
  bool ValidateFields();
  bool RequiredFieldsAreFilled() const;
  QString FirstUnfilled() const;
  void TakeFlierLimits();
  void ShowRemaining(qint16 remaining);
  QString CutToMaxSamples(const QString& values);
  void TakeControlLimits();
  bool DescriptionIsFree();
  bool PutIntoSystem();
  bool Refuse(const QString& message, const QString& control,
              MessageBox::Icon icon = MessageBox::Icon::Exclamation);
  QString StopWith(const QString& reason, const QString& control);

  EditorFields fields_;
  CDataPtr edited_;
  CDataPtr data_;  // a new one, or a copy of the edited one: a save that stops changes nothing in use
  qint16 validSamples_ = 0;
  QString controlAtFault_;
  QString reason_;
};
