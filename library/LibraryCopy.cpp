#include "library/LibraryCopy.h"

#include <QSqlRecord>

#include "library/ExtraTables.h"
#include "library/LibraryServer.h"
#include "library/Tables.h"
#include "texts/LibraryWords.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int rowsAtATime = 256;

// One state of the library from which all is read, as long as it lives.
class Snapshot {
 public:
  explicit Snapshot(Connection& connection) : connection_(connection) {
    connection.Run(u"begin"_s,
                   connection.IsServer() ? u"BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"_s : u"BEGIN"_s);
  }
  ~Snapshot() { connection_.RollbackTransaction(); }
  Snapshot(const Snapshot&) = delete;
  Snapshot& operator=(const Snapshot&) = delete;

 private:
  Connection& connection_;
};

// Calls `take` for each row. A server's driver reads what it selects at once: there it is fetched in parts.
template <class Take>
void ReadRows(Connection& from, const QString& select, const Take& take) {
  QString sql = select;
  if (from.IsServer()) {
    from.Run(u"select"_s, u"DECLARE Copied CURSOR FOR "_s + select);
    sql = u"FETCH %1 FROM Copied"_s.arg(rowsAtATime);
  }
  for (int read = rowsAtATime; read == rowsAtATime;) {
    const Query query = from.Run(u"select"_s, sql);
    for (read = 0; from.NextRow(query); ++read) take(query);
    if (!from.IsServer()) break;
  }
  if (from.IsServer()) from.Run(u"select"_s, u"CLOSE Copied"_s);
}

void CopyTable(Connection& from, Connection& to, const QString& table) {
  QStringList columns, places;
  const QSqlRecord there = from.Database().record(from.IsServer() ? table.toLower() : table);
  const QSqlRecord here = to.Database().record(to.IsServer() ? table.toLower() : table);
  for (int i = 0; i < here.count(); ++i) {
    if (!there.contains(here.fieldName(i))) continue;
    columns << u"%1.\"%2\""_s.arg(table, here.fieldName(i));
    places << u"?"_s;
  }
  if (columns.isEmpty()) return;
  const QString insert = u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(
      table, columns.join(u", "_s).remove(table + u'.'), places.join(u", "_s));
  const bool hasNames = to.IsServer() && table == Tables::StatData().name;
  const bool inOrder = here.count() > 1;  // a revision has no number
  ReadRows(from,
           u"SELECT %1 FROM %2%3"_s.arg(columns.join(u", "_s), table, inOrder ? u" ORDER BY 1"_s : QString()),
           [&](const Query& query) {
             QVariantList row;
             for (int i = 0; i < columns.size(); ++i) row << query->value(i);
             to.Execute(insert, row);
             if (!hasNames) return;
             const QString name = row[Tables::StatData().IndexOf(u"Description")].toString();
             if (!LibraryServer::KeepName(to, Tables::IdOf(row), name))
               throw Error(Words::Library::sameName(from.Place(), name), Error::Kind::Unavailable, name);
           });
}

qint64 Number(Connection& connection, const QString& sql) {
  const Query query = connection.Run(u"select"_s, sql);
  return connection.NextRow(query) ? query->value(0).toLongLong() : 0;
}

// A number that was given is not given again, although its row may be gone.
void CopyLastNumber(Connection& from, Connection& to, const QString& table, const QString& column) {
  const QString sequence = table + u'_' + column + u"_seq"_s;
  const qint64 last = Number(
      from, from.IsServer() ? u"SELECT CASE WHEN is_called THEN last_value ELSE 0 END FROM "_s + sequence
                            : u"SELECT seq FROM sqlite_sequence WHERE name = '%1'"_s.arg(table));
  if (last <= 0) return;
  if (to.IsServer()) {
    Number(to, u"SELECT setval('%1', %2)"_s.arg(sequence.toLower(), QString::number(last)));
  } else {
    to.Execute(u"DELETE FROM sqlite_sequence WHERE name = ?"_s, {table});
    to.Execute(u"INSERT INTO sqlite_sequence (name, seq) VALUES (?, ?)"_s, {table, last});
  }
}

}  // namespace

void LibraryCopy::CopyRows(Connection& from, Connection& to) {
  ExtraTables::MakeAll(to);
  const Snapshot snapshot(from);
  for (const Table& table : Tables::All()) CopyTable(from, to, table.name);
  for (const QString& table : ExtraTables::WithRows())
    if (from.Has(table)) CopyTable(from, to, table);
  CopyLastNumber(from, to, Tables::StatData().name, u"ID"_s);
  CopyLastNumber(from, to, Tables::Units().name, u"ID"_s);
}
