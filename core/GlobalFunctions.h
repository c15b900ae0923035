// The database's shared procedures: opening, attaching, and the record helpers that the screens share.
//
// Every procedure traps its own errors and reports them under its own name; the result is then the failure
// value. `flag` arguments are the callers' "no record is new" flag, set to false by the moves.
#pragma once

#include <QString>

#include "platform/ado/Recordset.h"
#include "platform/ui/MessageBox.h"

namespace GlobalFunctions {

bool OpenDatabaseConnection(bool useODBC, const QString& connectString);  // opens Globals().gLibrary
void ReopenDatabase();  // the file that now stands in the open library's place; throws Error

// A throw-away connection; without a message, but it asks for the password that a server wants. `why`, where
// wanted, tells what keeps it from being made.
bool TestDatabaseConnection(bool useODBC, const QString& connectString, QString* why = nullptr);

// The file's revision (the last row of DBRevision) and whether it is one the program accepts: 2.0 or later.
// Shows the version message for an old one, and nothing of its own when there is no usable revision.
void IsDBRevisionValid(const QString& databasePath, QString& revision, bool& valid);

// Makes a file the current database; an empty path means the one for this run, else the one of the settings.
// A refused file leaves the current state as it was.
void AttachDatabase(const QString& databasePath);

// baseSQL with an optional clause and, when wanted, without the rows marked as deleted.
bool OpenFilteredRecordset(Recordset& recordset, const QString& baseSQL, const QString& whereClause,
                           bool excludeDeleted);

}  // namespace GlobalFunctions

namespace QCGlobalFunctions {

bool MarkRecordAsDeletedByID(const QString& tableName, qint32 id);  // false where there is no such row
bool DeleteRecordByID(const QString& tableName, qint32 id);

bool MoveOffOldRecord(Recordset& recordset, bool& flag);
bool MoveToFirstRecord(Recordset& recordset, bool& flag);
bool MoveToPreviousRecord(Recordset& recordset, bool& flag);
bool MoveToNextRecord(Recordset& recordset, bool& flag);
bool MoveToLastRecord(Recordset& recordset, bool& flag);

// True when a row has that value. The value goes into the SQL as it is: an apostrophe makes the query fail,
// which is reported and gives false; `failed`, where wanted, tells that from "no duplicate".
bool IsDuplicateName(const QString& tableName, const QString& columnName, const QString& value,
                     bool* failed = nullptr);

// The column `fieldName` of the row whose column Name equals name, or 0.
qint32 GetIDByName(const QString& tableName, const QString& fieldName, const QString& name);

// The same, its errors thrown and not reported.
qint32 FindIDByName(const QString& tableName, const QString& fieldName, const QString& name);

// Yes, No or Cancel to "Do you wish to save these changes?".
MessageBox::Answer PromptForChanges();

}  // namespace QCGlobalFunctions
