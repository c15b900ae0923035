#include "library/LibraryServer.h"

#include "data/Names.h"
#include "library/ExtraTables.h"
#include "texts/LibraryWords.h"

using namespace Qt::StringLiterals;

namespace {

void MakeOwnTables(Connection& connection) {
  connection.Execute(
      u"CREATE TABLE StatDataName (NameKey TEXT PRIMARY KEY, ID INTEGER NOT NULL UNIQUE "
      "REFERENCES StatData ON UPDATE CASCADE ON DELETE CASCADE)"_s);
  connection.Execute(
      u"CREATE TABLE WriteToken (Token TEXT PRIMARY KEY, Written TIMESTAMP NOT NULL DEFAULT now())"_s);
}

QString Function(const QString& name, const QString& steps) {
  return u"CREATE OR REPLACE FUNCTION %1() RETURNS trigger LANGUAGE plpgsql AS "
         "'BEGIN %2 RETURN NULL; END'"_s.arg(name, steps);
}

QString Notify(const QString& payload) {
  return u"PERFORM pg_notify(''%1'', %2);"_s.arg(QLatin1String(LibraryServer::channel), payload);
}

}  // namespace

QStringList LibraryServer::Triggers(const QString& isGone, const QString& isNew) {
  QStringList statements{
      Function(u"StatDataChanged"_s,
               u"IF TG_OP <> ''INSERT'' THEN %1 END IF; IF TG_OP <> ''DELETE'' THEN %2 END IF; %3"_s.arg(
                   isGone, isNew, Notify(u"coalesce(NEW.ID, OLD.ID)::text"_s))),
      Function(u"UnitsChanged"_s, Notify(u"''''"_s)),
      u"CREATE OR REPLACE TRIGGER UnitsChanged AFTER INSERT OR UPDATE OR DELETE ON Units "
      "EXECUTE FUNCTION UnitsChanged()"_s};
  for (const QString& event : {u"Insert"_s, u"Update"_s, u"Delete"_s})
    statements << u"CREATE OR REPLACE TRIGGER StatData%1d AFTER %2 ON StatData FOR EACH ROW "
                  "EXECUTE FUNCTION StatDataChanged()"_s.arg(event.endsWith(u'e') ? event : event + u'e',
                                                             event);
  return statements;
}

void LibraryServer::Create(const QString& address, const LibraryFile::Fill& fill) {
  Connection connection;
  connection.OpenWith(address);
  Transaction transaction(connection);
  if (connection.Has(u"StatData"_s) || connection.Has(u"DBRevision"_s))
    throw Error(Words::Library::isThere(address), Error::Kind::Unavailable, address);
  LibraryFile::MakeTables(connection);
  ExtraTables::MakeAll(connection);
  MakeOwnTables(connection);
  fill(connection);
  transaction.Commit();
}

std::optional<qint64> LibraryServer::FindName(Connection& connection, const QString& description) {
  const Query query = connection.Run(u"select"_s, u"SELECT ID FROM StatDataName WHERE NameKey = ?"_s,
                                     {Names::Key(description)});
  return connection.NextRow(query) ? std::optional(query->value(0).toLongLong()) : std::nullopt;
}

bool LibraryServer::KeepName(Connection& connection, qint64 id, const QString& description) {
  try {
    connection.Execute(
        u"INSERT INTO StatDataName (NameKey, ID) VALUES (?, ?) ON CONFLICT (ID) DO UPDATE SET "
        "NameKey = excluded.NameKey"_s,
        {Names::Key(description), id});
    return true;
  } catch (const DatabaseError& error) {
    if (error.cause != DatabaseError::Cause::Duplicate) throw;
    return false;
  }
}

void LibraryServer::KeepTokens(Connection& connection) {
  if (!connection.Has(u"WriteToken"_s)) return;
  connection.TokenTable = u"WriteToken"_s;
  try {
    connection.Execute(u"DELETE FROM WriteToken WHERE Written < now() - interval '1 hour'"_s);
  } catch (const DatabaseError& error) {
    if (error.cause != DatabaseError::Cause::ReadOnly) throw;
    connection.TokenTable.clear();  // who may only read writes nothing
  }
}

bool LibraryServer::CanWrite(Connection& connection) {
  const Query query =
      connection.Run(u"select"_s,
                     u"SELECT has_table_privilege('statdata', 'UPDATE') AND "
                     "has_table_privilege('statdata', 'INSERT') AND NOT pg_is_in_recovery()"_s);
  return connection.NextRow(query) && query->value(0).toBool();
}

void LibraryServer::LockUnits(Connection& connection) {
  connection.Run(u"lock"_s, u"LOCK TABLE Units IN SHARE ROW EXCLUSIVE MODE"_s);
}
