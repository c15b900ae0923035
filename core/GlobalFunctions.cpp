#include "core/GlobalFunctions.h"

#include "core/Globals.h"
#include "core/RecentLibraries.h"
#include "core/RegistryFunctions.h"
#include "core/Trap.h"
#include "library/Revision.h"
#include "library/Tables.h"
#include "platform/ado/ServerAddress.h"
#include "platform/language/Conversions.h"
#include "texts/StartWords.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

QString ProviderFor(bool useODBC) { return useODBC ? Connection::OdbcProvider : Connection::JetProvider; }

void ShowInDatabasePanel(const QString& text) {
  if (MainScreen* screen = Globals().mainScreen)
    screen->SetDatabasePanelText(LoadResText(u"Current Database: ;299") + text);
}

void ShowInDatabasePanel(const QString& path, const QString& revision) {
  const auto& library = Globals().gLibrary;
  const QString rights = library && !library->CanWrite() ? Words::Server::readOnly() : QString();
  ShowInDatabasePanel(u"%1 (%2%3)"_s.arg(Library::NameOf(path), LoadResText(u"DB Rev. ;300"), revision) +
                      rights);
}

// What the program does with a database once it is open.
void UseDatabase(const QString& path, const QString& revision, bool keepInSettings) {
  ShowInDatabasePanel(path, revision);
  if (keepInSettings) {
    Globals().gDatabaseForThisRun.clear();
    clsSetup& setup = Globals().gSetup;
    setup.DatabaseName = path;
    RegistryFunctions::SetKeyValue(setup.RegistryKeyPath, u"DatabaseName"_s, Registry::String, path);
    RecentLibraries::Note(path);
  }
  if (MainScreen* screen = Globals().mainScreen) screen->EnableLoadTimer();
}

// As it may stand in a message.
QString Shown(const QString& path) {
  return ServerAddress::IsOne(path) ? ServerAddress::WithoutPassword(path) : path;
}

bool IsGivenPassword(const QString& address, const std::exception& failure) {
  const auto* refusal = dynamic_cast<const DatabaseError*>(&failure);
  MainScreen* screen = Globals().mainScreen;
  return refusal && refusal->cause == DatabaseError::Cause::Password && screen &&
         screen->AskPassword(address, refusal->Text());
}

}  // namespace

namespace GlobalFunctions {

bool OpenDatabaseConnection(bool useODBC, const QString& connectString) {
  return Trap(u"GlobalFunctions::OpenDatabaseConnection"_s, false, [&] {
    ProgramState& state = Globals();
    // What is open stays open until the other one has proved sound.
    const auto library = std::make_shared<Library>(connectString, ProviderFor(useODBC));
    Connection& connection = library->Database();
    const bool usingODBC = connection.Provider != Connection::JetProvider;
    if (!usingODBC) library->Guard(ShowInformationMessage);
    state.gLibrary = library;
    state.gUsingODBC = usingODBC;
    return true;
  });
}

void ReopenDatabase() {
  ProgramState& state = Globals();
  std::shared_ptr<Library> library = Library::Open(state.gLibrary->Place(), ShowInformationMessage);
  const QString revision = library->Revision();
  state.gLibrary = std::move(library);
  ShowInDatabasePanel(state.gLibrary->Place(), revision);
}

bool TestDatabaseConnection(bool useODBC, const QString& connectString, QString* why) {
  for (;;) {
    try {
      Library(connectString, ProviderFor(useODBC));
      return true;
    } catch (const std::exception& error) {
      if (IsGivenPassword(connectString, error)) continue;
      if (why) *why = ErrorText(error).remove(Shown(connectString) + u": "_s);
      return false;
    }
  }
}

void IsDBRevisionValid(const QString& databasePath, QString& revision, bool& valid) {
  valid = false;
  Trap(u"fmMain::IsDBRevisionValid"_s, [&] {
    const QString found = Library(databasePath).Revision();
    if (found.isNull()) return;
    valid = Revision::IsAccepted(found);
    if (valid)
      revision = found;
    else
      ShowErrorMessage(false, Revision::Refusal(found), {});
  });
}

void AttachDatabase(const QString& databasePath) {
  Trap(u"frmMain::AttachDatabase"_s, [&] {
    ProgramState& state = Globals();
    const bool forThisRun = databasePath.isEmpty() && !state.gDatabaseForThisRun.isEmpty();
    const QString path = forThisRun               ? state.gDatabaseForThisRun
                         : databasePath.isEmpty() ? state.gSetup.DatabaseName
                                                  : databasePath;
    QString revision, why;
    bool valid = false;
    if (TestDatabaseConnection(false, path, &why)) IsDBRevisionValid(path, revision, valid);
    const auto setUpDisplay = [&] {
      if (state.mainScreen) state.mainScreen->SetupMainFormDisplay();
    };
    if (!valid) {
      setUpDisplay();  // behind the box stands what is open, or the ways to a library
      return ShowErrorMessage(true, LoadResText(u"Error opening database:;102") + u"\r\n"_s + Shown(path),
                              why);
    }
    if (OpenDatabaseConnection(false, path)) {
      state.gDatabaseOpen = true;
      UseDatabase(path, revision, !forThisRun);
    } else if (!state.gDatabaseOpen) {
      ShowInDatabasePanel(LoadResText(u"<none>;295"));
    }
    setUpDisplay();
  });
}

bool OpenFilteredRecordset(Recordset& recordset, const QString& baseSQL, const QString& whereClause,
                           bool excludeDeleted) {
  return Trap(u"GlobalFunctions::OpenFilteredRecordset"_s, false, [&] {
    QString sql = baseSQL;
    if (!whereClause.isEmpty()) sql += u" WHERE "_s + whereClause;
    if (excludeDeleted) sql += whereClause.isEmpty() ? u" WHERE Deleted = 0"_s : u" AND Deleted = 0"_s;
    if (recordset.GetState() == Recordset::Opened) recordset.Close();
    recordset.Open(sql, CurrentConnection());
    return true;
  });
}

}  // namespace GlobalFunctions

namespace QCGlobalFunctions {

bool MarkRecordAsDeletedByID(const QString& tableName, qint32 id) {
  return Trap(u"QCGlobalFunctions::MarkRecordAsDeletedByID"_s, false, [&] {
    Recordset recordset;
    recordset.Open(u"SELECT * FROM %1 WHERE ID = %2"_s.arg(tableName).arg(id), CurrentConnection());
    if (recordset.RecordCount() < 1) return false;
    recordset.SetField(u"Deleted"_s, true);
    recordset.Update();
    return true;
  });
}

bool DeleteRecordByID(const QString& tableName, qint32 id) {
  return Trap(u"QCGlobalFunctions::DeleteRecordByID"_s, false, [&] {
    if (tableName == Tables::StatData().name)
      CurrentLibrary()->Delete(id, Globals().clock->Now());  // kept aside, to be restored
    else
      CurrentConnection().Execute(u"DELETE * FROM %1 WHERE ID = %2"_s.arg(tableName).arg(id));
    return true;
  });
}

bool MoveOffOldRecord(Recordset& recordset, bool& flag) {
  return Trap(u"QCGlobalFunctions::MoveOffOldRecord"_s, false, [&] {
    recordset.Requery();
    const qint64 position = recordset.AbsolutePosition();
    if (position >= 2 && !recordset.BOF()) {
      recordset.MovePrevious();
    } else if (position >= recordset.RecordCount() || recordset.EndOfFile()) {
      if (recordset.BOF() && recordset.EndOfFile()) flag = false;
      return true;
    } else {
      recordset.MoveNext();
    }
    flag = false;
    return true;
  });
}

namespace {

bool Move(const QString& source, bool& flag, Recordset& recordset, void (Recordset::*move)()) {
  return Trap(source, false, [&] {
    (recordset.*move)();
    flag = false;
    return true;
  });
}

}  // namespace

bool MoveToFirstRecord(Recordset& recordset, bool& flag) {
  return Move(u"QCGlobalFunctions::MoveToFirstRecord"_s, flag, recordset, &Recordset::MoveFirst);
}

bool MoveToPreviousRecord(Recordset& recordset, bool& flag) {
  return Move(u"QCGlobalFunctions::MoveToPreviousRecord"_s, flag, recordset, &Recordset::MovePrevious);
}

bool MoveToNextRecord(Recordset& recordset, bool& flag) {
  return Move(u"QCGlobalFunctions::MoveToNextRecord"_s, flag, recordset, &Recordset::MoveNext);
}

bool MoveToLastRecord(Recordset& recordset, bool& flag) {
  return Move(u"QCGlobalFunctions::MoveToLastRecord"_s, flag, recordset, &Recordset::MoveLast);
}

namespace {

// A server is never given a value as a part of the statement.
void OpenByName(Recordset& recordset, const QString& tableName, const QString& columnName,
                const QString& value) {
  Connection& connection = CurrentConnection();
  const QString sql = u"SELECT * FROM %1 WHERE %2 = "_s.arg(tableName, columnName);
  if (connection.IsServer())
    recordset.Open(sql + u'?', connection, {value});
  else
    recordset.Open(sql + u"'%1'"_s.arg(value), connection);
}

}  // namespace

bool IsDuplicateName(const QString& tableName, const QString& columnName, const QString& value,
                     bool* failed) {
  if (failed) *failed = true;
  return Trap(u"QCGlobalFunctions::IsDuplicateName"_s, false, [&] {
    Recordset recordset;
    try {
      OpenByName(recordset, tableName, columnName, value);
    } catch (const Error& error) {
      if (!value.contains(u'\'')) throw;
      throw Error(Words::apostrophe(error.Text(), value), error.GetKind(), value);
    }
    if (failed) *failed = false;
    return recordset.RecordCount() > 0;
  });
}

qint32 GetIDByName(const QString& tableName, const QString& fieldName, const QString& name) {
  return Trap(u"QCGlobalFunctions::GetIDByName"_s, 0,
              [&] { return FindIDByName(tableName, fieldName, name); });
}

qint32 FindIDByName(const QString& tableName, const QString& fieldName, const QString& name) {
  Recordset recordset;
  OpenByName(recordset, tableName, u"Name"_s, name);
  if (recordset.RecordCount() < 1) return 0;
  return Conversions::CLng(recordset.Field(fieldName).toString());
}

MessageBox::Answer PromptForChanges() {
  return Trap(u"QCGlobalFunctions::PromptForChanges"_s, MessageBox::Answer::Cancel, [] {
    return MessageBox::Show(
        {LoadResText(u"Data on this screen has changed. Do you wish to save these changes?;110"),
         LoadResText(u"Confirmation;111"), MessageBox::Icon::Question, MessageBox::Buttons::YesNoCancel});
  });
}

}  // namespace QCGlobalFunctions
