#include "library/ExtraTables.h"

#include <array>

#include "library/LibraryFile.h"
#include "library/Tables.h"
#include "texts/LibraryWords.h"

using namespace Qt::StringLiterals;

namespace {

// The columns of StatData; the ID is one of several that were deleted.
QString DeletedTable() {
  QStringList columns{u"Entry INTEGER PRIMARY KEY AUTOINCREMENT"_s, u"DeletedAt TEXT"_s};
  for (const Column& column : Tables::StatData().columns) {
    const bool isId = column.kind == Column::Kind::Id;
    columns << column.Quoted() + LibraryFile::DeclarationOf(isId ? Column::Kind::Whole : column.kind);
  }
  return u"CREATE TABLE IF NOT EXISTS DeletedStatData (%1)"_s.arg(columns.join(u", "_s));
}

// A row that is deleted keeps its version, so that a later one of the same ID has another.
QString Trigger(const QString& name, const QString& event, const QStringList& steps) {
  return u"CREATE TRIGGER IF NOT EXISTS %1 AFTER %2 ON StatData BEGIN %3 END"_s.arg(name, event,
                                                                                    steps.join(u' '));
}

QString Step(const QString& row, int deleted) {
  return u"INSERT INTO StatDataVersion VALUES (%1.ID, 1, %2) ON CONFLICT (ID) DO UPDATE SET "
         "Version = Version + 1, Deleted = excluded.Deleted;"_s.arg(row, QString::number(deleted));
}

QStringList Statements() {
  const QString isNew = Step(u"NEW"_s, 0);
  const QString isGone = Step(u"OLD"_s, 1);
  return {u"CREATE TABLE IF NOT EXISTS LibraryLayout (Number INTEGER NOT NULL)"_s,
          u"INSERT INTO LibraryLayout SELECT %1 WHERE NOT EXISTS (SELECT * FROM LibraryLayout)"_s.arg(
              ExtraTables::layout),
          DeletedTable(),
          u"CREATE TABLE IF NOT EXISTS FormerDescription (Entry INTEGER PRIMARY KEY AUTOINCREMENT, "
          "ID INTEGER NOT NULL, Description TEXT NOT NULL)"_s,
          u"CREATE TABLE IF NOT EXISTS StatDataVersion (ID INTEGER PRIMARY KEY, Version INTEGER NOT NULL, "
          "Deleted INTEGER NOT NULL)"_s,
          Trigger(u"StatDataInserted"_s, u"INSERT"_s, {isNew}),
          Trigger(u"StatDataUpdated"_s, u"UPDATE"_s, {isGone, isNew}),
          Trigger(u"StatDataDeleted"_s, u"DELETE"_s, {isGone})};
}

}  // namespace

void ExtraTables::RequireKnownLayout(Connection& connection, const QString& place) {
  if (!Has(connection, u"LibraryLayout"_s)) return;
  QSqlQuery query = connection.Run(u"select"_s, u"SELECT max(Number) FROM LibraryLayout"_s);
  if (connection.NextRow(query) && query.value(0).toInt() > layout)
    throw Error(u"%1: %2"_s.arg(place, Words::Library::laterLayout()), Error::Kind::Unavailable, place);
}

void ExtraTables::Make(Connection& connection) {
  if (HasVersions(connection) && HasDeleted(connection) && HasFormerNames(connection)) return;
  for (const QString& statement : Statements()) connection.Execute(statement);
}

bool ExtraTables::Has(Connection& connection, const QString& name) {
  QSqlQuery query =
      connection.Run(u"select"_s, u"SELECT count(*) FROM sqlite_master WHERE name = ?"_s, {name});
  return connection.NextRow(query) && query.value(0).toInt() > 0;
}

bool ExtraTables::HasVersions(Connection& connection) {
  return Has(connection, u"StatDataVersion"_s) && Has(connection, u"StatDataDeleted"_s);
}

bool ExtraTables::HasDeleted(Connection& connection) { return Has(connection, u"DeletedStatData"_s); }

bool ExtraTables::HasFormerNames(Connection& connection) { return Has(connection, u"FormerDescription"_s); }

ExtraTables::LimitsBases ExtraTables::ReadLimitsBases(Connection& connection) {
  LimitsBases bases;
  if (!Has(connection, u"LimitsBase"_s)) return bases;
  QSqlQuery query = connection.Run(u"select"_s, u"SELECT ID, FirstPoint, LastPoint FROM LimitsBase"_s);
  while (connection.NextRow(query)) {
    const auto point = [&](int column) { return static_cast<qint16>(query.value(column).toInt()); };
    bases[query.value(0).toLongLong()] = {point(1), point(2)};
  }
  return bases;
}

void ExtraTables::NoteLimitsBase(Connection& connection, qint64 id, std::pair<qint16, qint16> points) {
  connection.Execute(
      u"CREATE TABLE IF NOT EXISTS LimitsBase (ID INTEGER PRIMARY KEY, FirstPoint INTEGER NOT NULL, "
      "LastPoint INTEGER NOT NULL)"_s);
  connection.Execute(
      u"INSERT INTO LimitsBase VALUES (?, ?, ?) ON CONFLICT (ID) DO UPDATE SET "
      "FirstPoint = excluded.FirstPoint, LastPoint = excluded.LastPoint"_s,
      {id, points.first, points.second});
}
