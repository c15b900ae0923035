// The units screen beside others who work on the same library: what they changed, and what a save makes of
// it.
#include <QLineEdit>

#include "core/Globals.h"
#include "core/Messages.h"
#include "screens/ConflictForm.h"
#include "screens/frmUnits.h"
#include "texts/SharingWords.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;

// Asks where others have deleted or changed the unit meanwhile. False where nothing is to be written.
bool frmUnits::SettleWithOthers() {
  const auto callOff = [this] {
    keepsTyped_ = true;
    return false;
  };
  const QString name = txtName->text(), mine = txtDescription->text();
  const auto theirs = TextsInTable();
  if (!theirs) {
    if (ShowSystemMessage(Words::Sharing::addUnitAgain(name), MessageBox::Icon::Question,
                          MessageBox::Buttons::YesNo) != Answer::Yes)
      return callOff();
    IsNewRecord = true;
    return NameIsFree() || callOff();
  }
  if (theirs->description == recordset_.Field(u"Description"_s).toString()) return true;
  if (theirs->description != mine && !mine.isEmpty()) {
    ConflictForm question(Words::Sharing::unitConflict(name),
                          {{Words::Sharing::unitDescription(), mine, theirs->description}}, this);
    question.exec();
    if (question.Choice() == ConflictForm::Cancel) return callOff();
    ReadAgain();
    if (question.Choice() == ConflictForm::KeepMine) return true;
    RefreshScreen();
    return false;
  }
  ReadAgain();
  return true;
}

// The current unit as others see it; none where it is deleted.
std::optional<frmUnits::Texts> frmUnits::TextsInTable() const {
  Recordset present;
  present.Open(u"SELECT * FROM Units WHERE Deleted = 0 AND ID = %1"_s.arg(CurrentID()), CurrentConnection());
  if (present.RecordCount() == 0) return std::nullopt;
  return Texts{present.Field(u"Name"_s).toString(), present.Field(u"Description"_s).toString()};
}

// The units as they are now, at the same one.
void frmUnits::ReadAgain() {
  const qint32 id = recordset_.RecordCount() > 0 ? CurrentID() : 0;
  recordset_.SetActiveConnection(CurrentConnection());  // the library may have been opened anew
  recordset_.Requery();
  FindUnit(id);
}

// The first one where that is gone.
void frmUnits::FindUnit(qint32 id) {
  if (recordset_.RecordCount() == 0) return;
  for (recordset_.MoveFirst(); !recordset_.EndOfFile() && CurrentID() != id;) recordset_.MoveNext();
  if (recordset_.EndOfFile()) recordset_.MoveFirst();
}

void frmUnits::LibraryChanged() {
  if (!IsOpen() || IsNewRecord) return;
  try {
    if (TextsInBoxes() == snapshot_) {
      TakePresent();
    } else if (const auto theirs = TextsInTable(); theirs != snapshot_) {
      const QString now = Globals().clock->Now().toString(u"HH:mm:ss"_s);
      news_ = theirs ? Words::Sharing::unitChangedWhileOpen(now) : Words::Sharing::unitDeletedWhileOpen(now);
    }
  } catch (const Error& error) {
    news_ = Words::Sharing::unreadable(error.Text());
  }
  UpdateButtons();
}

void frmUnits::TakePresent() {
  ReadAgain();
  Texts present;
  if (recordset_.RecordCount() > 0)
    present = {recordset_.Field(u"Name"_s).toString(), recordset_.Field(u"Description"_s).toString()};
  if (present == snapshot_) return;
  txtName->setText(present.name);
  txtDescription->setText(present.description);
  TakeSnapshot();
}
