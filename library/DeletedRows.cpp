#include "library/DeletedRows.h"

#include "library/ExtraTables.h"

using namespace Qt::StringLiterals;

namespace DeletedRows {

std::vector<Entry> All(Connection& connection) {
  std::vector<Entry> entries;
  if (!ExtraTables::HasDeleted(connection)) return entries;
  const Table& table = Tables::StatData();
  const Query query = connection.Run(
      u"select"_s, u"SELECT Entry, DeletedAt, %1 FROM DeletedStatData ORDER BY Entry DESC"_s.arg(
                       table.ColumnList(u"DeletedStatData"_s)));
  while (connection.NextRow(query)) {
    Entry& entry = entries.emplace_back();
    entry.number = query->value(0).toLongLong();
    entry.deletedAt = query->value(1).toString();
    for (int i = 0; i < static_cast<int>(table.columns.size()); ++i) entry.row << query->value(i + 2);
  }
  return entries;
}

bool Contains(Connection& connection, qint64 number) {
  if (!ExtraTables::HasDeleted(connection)) return false;
  const Query query = connection.Run(
      u"select"_s, u"SELECT 1 FROM DeletedStatData WHERE Entry = ?"_s + connection.RowLock(), {number});
  return connection.NextRow(query);
}

void Keep(Connection& connection, qint64 id, const QDateTime& now) {
  ExtraTables::Make(connection);
  const Table& table = Tables::StatData();
  connection.Execute(
      u"INSERT INTO DeletedStatData (DeletedAt, %1) SELECT ?, %2 FROM StatData WHERE ID = ?"_s.arg(
          table.ColumnList(), table.ColumnList(table.name)),
      {Tables::DateText(now), id});
  connection.Execute(u"DELETE FROM StatData WHERE ID = ?"_s, {id});
}

void PutBack(Connection& connection, qint64 number, const QString& description) {
  const Table& table = Tables::StatData();
  connection.Execute(u"UPDATE DeletedStatData SET Description = ? WHERE Entry = ?"_s, {description, number});
  connection.Execute(u"INSERT INTO StatData (%1) SELECT %2 FROM DeletedStatData WHERE Entry = ?"_s.arg(
                         table.ColumnList(), table.ColumnList(u"DeletedStatData"_s)),
                     {number});
  Purge(connection, number);
}

void Purge(Connection& connection, qint64 number) {
  connection.Execute(u"DELETE FROM DeletedStatData WHERE Entry = ?"_s, {number});
}

}  // namespace DeletedRows
