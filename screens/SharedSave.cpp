#include "screens/SharedSave.h"

#include <QApplication>

#include "core/DataObjectFunctions.h"
#include "core/Globals.h"
#include "core/Messages.h"
#include "core/VersionTexts.h"
#include "library/Tables.h"
#include "screens/ConflictForm.h"
#include "texts/SharingWords.h"

using MessageBox::Answer;
using MessageBox::Buttons;
using MessageBox::Icon;
using SharedSave::Outcome;

namespace {

// The user works on an object of his own; the collection's own one is to be the same.
void PutIntoCollection(const CDataPtr& data) {
  const CDataPtr present = DataObjectFunctions::PresentOf(*data);
  if (present && present != data) *present = *data;
}

SharedSave::Result AddAgain(const CDataPtr& data) {
  const QString& name = data->Description();
  if (ShowSystemMessage(Words::Sharing::addAgain(name), Icon::Question, Buttons::YesNo) != Answer::Yes)
    return {};
  if (CurrentLibrary()->Contains(name)) {
    ShowSystemMessage(Words::Sharing::nameIsTaken(name), Icon::Exclamation);
    return {};
  }
  const CData before = *data;
  data->SetRowAsKnown({});
  data->SetID(0);
  if (!DataObjectFunctions::SaveDataObjectToDatabase(data)) {
    *data = before;
    return {};
  }
  data->SetID(static_cast<qint32>(Tables::IdOf(data->RowAsKnown())));
  Globals().gDataCollection.back() = std::make_shared<CData>(*data);  // what the user goes on with is his
  if (DataObjectFunctions::PresentOf(before)) {                       // the main window has not looked yet
    DataObjectFunctions::DeleteDataObjectByID(before.ID());
    DataObjectFunctions::DeleteDataObjectfromListview(before.ID());
  }
  if (MainScreen* screen = Globals().mainScreen) {
    screen->AddListRow(*data);
    screen->SelectListRow(data->ID());
  }
  return {Outcome::Saved};
}

}  // namespace

SharedSave::Result SharedSave::Save(const CDataPtr& data) {
  Library::Saved saved;
  // The version in the library that the user has seen and turned down.
  for (CDataPtr over; !DataObjectFunctions::SaveDataObjectToDatabase(data, &saved, over.get());) {
    if (saved.outcome == Library::Saved::Outcome::Gone) return AddAgain(data);
    if (saved.outcome != Library::Saved::Outcome::Conflict) return {};  // reported
    over = saved.theirs;
    ConflictForm question(Words::Sharing::conflict(data->Description()),
                          VersionTexts(*data, *over, saved.conflicts), QApplication::activeModalWidget());
    question.exec();
    if (question.Choice() == ConflictForm::Cancel) return {};
    if (question.Choice() == ConflictForm::KeepMine) continue;
    *data = *over;
    PutIntoCollection(data);
    return {Outcome::TookTheirs};
  }
  PutIntoCollection(data);
  return {Outcome::Saved, saved.takenIn};
}
