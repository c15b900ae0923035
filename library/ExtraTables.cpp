#include "library/ExtraTables.h"

#include <array>

#include "library/LibraryFile.h"
#include "library/LibraryServer.h"
#include "library/Tables.h"
#include "library/TraceTables.h"
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
         "Version = StatDataVersion.Version + 1, Deleted = excluded.Deleted;"_s.arg(row,
                                                                                    QString::number(deleted));
}

QStringList Triggers(bool onServer) {
  const QString isNew = Step(u"NEW"_s, 0);
  const QString isGone = Step(u"OLD"_s, 1);
  if (onServer) return LibraryServer::Triggers(isGone, isNew);
  return {Trigger(u"StatDataInserted"_s, u"INSERT"_s, {isNew}),
          Trigger(u"StatDataUpdated"_s, u"UPDATE"_s, {isGone, isNew}),
          Trigger(u"StatDataDeleted"_s, u"DELETE"_s, {isGone})};
}

QStringList Statements() {
  return {u"CREATE TABLE IF NOT EXISTS LibraryLayout (Number INTEGER NOT NULL)"_s,
          u"INSERT INTO LibraryLayout SELECT %1 WHERE NOT EXISTS (SELECT * FROM LibraryLayout)"_s.arg(
              ExtraTables::layout),
          DeletedTable(),
          u"CREATE TABLE IF NOT EXISTS FormerDescription (Entry INTEGER PRIMARY KEY AUTOINCREMENT, "
          "ID INTEGER NOT NULL, Description TEXT NOT NULL)"_s,
          u"CREATE TABLE IF NOT EXISTS StatDataVersion (ID INTEGER PRIMARY KEY, Version INTEGER NOT NULL, "
          "Deleted INTEGER NOT NULL)"_s};
}

void MakeLimitsBases(Connection& connection) {
  connection.Execute(
      u"CREATE TABLE IF NOT EXISTS LimitsBase (ID INTEGER PRIMARY KEY, FirstPoint INTEGER NOT NULL, "
      "LastPoint INTEGER NOT NULL)"_s);
}

}  // namespace

void ExtraTables::RequireKnownLayout(Connection& connection, const QString& place) {
  if (!connection.Has(u"LibraryLayout"_s)) return;
  const Query query = connection.Run(u"select"_s, u"SELECT max(Number) FROM LibraryLayout"_s);
  if (connection.NextRow(query) && query->value(0).toInt() > layout)
    throw Error(u"%1: %2"_s.arg(place, Words::Library::laterLayout()), Error::Kind::Unavailable, place);
}

void ExtraTables::Make(Connection& connection) {
  if (HasVersions(connection) && HasDeleted(connection) && HasFormerNames(connection)) return;
  for (const QString& statement : Statements() + Triggers(connection.IsServer()))
    connection.Execute(statement);
}

void ExtraTables::MakeAll(Connection& connection) {
  Make(connection);
  if (!connection.Has(u"LimitsBase"_s)) MakeLimitsBases(connection);
  TraceTables::Make(connection);
}

QStringList ExtraTables::WithRows() {
  return {u"DeletedStatData"_s, u"FormerDescription"_s, u"LimitsBase"_s, u"SampleRun"_s, u"SampleNote"_s};
}

bool ExtraTables::HasVersions(Connection& connection) {
  return connection.Has(u"StatDataVersion"_s) && connection.Has(u"StatDataDeleted"_s);
}

bool ExtraTables::HasDeleted(Connection& connection) { return connection.Has(u"DeletedStatData"_s); }

bool ExtraTables::HasFormerNames(Connection& connection) { return connection.Has(u"FormerDescription"_s); }

ExtraTables::LimitsBases ExtraTables::ReadLimitsBases(Connection& connection, const QString& clause) {
  LimitsBases bases;
  if (!connection.Has(u"LimitsBase"_s)) return bases;
  const Query query =
      connection.Run(u"select"_s, u"SELECT ID, FirstPoint, LastPoint FROM LimitsBase "_s + clause);
  while (connection.NextRow(query)) {
    const auto point = [&](int column) { return static_cast<qint16>(query->value(column).toInt()); };
    bases[query->value(0).toLongLong()] = {point(1), point(2)};
  }
  return bases;
}

void ExtraTables::NoteLimitsBase(Connection& connection, qint64 id, std::pair<qint16, qint16> points) {
  if (!connection.Has(u"LimitsBase"_s)) MakeLimitsBases(connection);
  connection.Execute(
      u"INSERT INTO LimitsBase VALUES (?, ?, ?) ON CONFLICT (ID) DO UPDATE SET "
      "FirstPoint = excluded.FirstPoint, LastPoint = excluded.LastPoint"_s,
      {id, points.first, points.second});
}
