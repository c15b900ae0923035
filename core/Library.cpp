#include "core/Library.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QUuid>

#include "core/Trap.h"

using namespace Qt::StringLiterals;

namespace {

// The limits have no declared type: in a column of type DOUBLE the database would make a zero of a negative
// zero.
const auto statDataTable =
    uR"(
CREATE TABLE StatData (
  ID INTEGER PRIMARY KEY AUTOINCREMENT,
  Description TEXT COLLATE NOCASE,
  "Values" TEXT,
  LastModified TEXT,
  NominalSpecLimit,
  UpperSpecLimit,
  LowerSpecLimit,
  HiFlier,
  LoFlier,
  XBarUCL,
  XBarLCL,
  XBarMean,
  RBarUCL,
  RBarLCL,
  RBarMean,
  SubGroupSize INTEGER,
  SensitivityValue INTEGER,
  DetectionPeriod INTEGER,
  UnitOfMeasurement TEXT COLLATE NOCASE))"_s;

const auto unitsTable =
    uR"(
CREATE TABLE Units (
  ID INTEGER PRIMARY KEY AUTOINCREMENT,
  Name TEXT COLLATE NOCASE,
  Description TEXT COLLATE NOCASE,
  Deleted INTEGER NOT NULL DEFAULT 0))"_s;

const auto revisionTable = u"CREATE TABLE DBRevision (Revision TEXT COLLATE NOCASE)"_s;

void Fill(const QString& path, const std::function<void(Connection&)>& fill) {
  Connection connection;
  connection.OpenWith(path);
  Transaction transaction(connection);
  Library::CreateTables(connection);
  if (fill) {
    fill(connection);
  } else {
    const auto revision = u"%1.%2"_s.arg(Library::requiredMajor).arg(Library::requiredMinor);
    connection.Execute(u"INSERT INTO DBRevision (Revision) VALUES (?)"_s, {revision});
  }
  transaction.Commit();
}

}  // namespace

void Library::CreateTables(Connection& connection) {
  connection.Execute(u"PRAGMA application_id = %1"_s.arg(applicationId));
  for (const QString& table : {statDataTable, unitsTable, revisionTable}) connection.Execute(table);
}

void Library::Create(const QString& path, const std::function<void(Connection&)>& fill) {
  const QFileInfo target(path);
  const auto refuse = [&](const QString& reason) { throw Error(u"%1: %2"_s.arg(path, reason)); };
  if (target.fileName().isEmpty() || target.isDir()) refuse(u"it is a folder, not a file"_s);
  if (target.exists() || target.isSymLink()) refuse(u"the file exists already"_s);
  if (!target.dir().exists()) refuse(u"there is no such folder"_s);

  const QString temporary = target.absoluteFilePath() + u"."_s + QUuid::createUuid().toString(QUuid::Id128);
  const auto removal = qScopeGuard([&] { QFile::remove(temporary); });
  QFile file(temporary);
  if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) refuse(file.errorString());
  file.close();
  try {
    Fill(temporary, fill);
  } catch (const DatabaseError& error) {
    refuse(ErrorText(error).remove(temporary + u": "_s));
  }
  // Fails where another program has made the file meanwhile.
  if (!file.rename(path)) refuse(u"the file cannot be made (%1)"_s.arg(file.errorString()));
}
