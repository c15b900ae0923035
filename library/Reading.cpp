// How a library is read: row by row, in portions, and by name.
#include <QtConcurrentMap>
#include <algorithm>
#include <functional>
#include <limits>
#include <map>
#include <span>

#include "data/Names.h"
#include "library/ExtraTables.h"
#include "library/Library.h"
#include "library/LibraryServer.h"
#include "library/Rows.h"
#include "library/Tables.h"

using namespace Qt::StringLiterals;

namespace {

const QString everyName = u"SELECT ID, Description FROM StatData ORDER BY ID"_s;

// Of a portion: few enough for the memory and for who waits to write meanwhile.
constexpr qint64 mostRows = 256;
constexpr qint64 mostCharacters = 2'000'000;

qint64 CharactersIn(const QVariantList& row) {
  return row[Tables::StatData().IndexOf(u"Values")].toString().size();
}

QString OneOf(std::span<const qint64> ids) {
  QStringList numbers;
  for (const qint64 id : ids) numbers << QString::number(id);
  return u"WHERE ID IN (%1)"_s.arg(numbers.join(u','));
}

}  // namespace

Library::RawRows Library::Select(const QString& clause, const QVariantList& values) {
  const Table& table = Tables::StatData();
  const auto count = static_cast<int>(table.columns.size());
  const Query query = connection_.Run(
      u"select"_s, u"SELECT %1 FROM %2 %3"_s.arg(table.ColumnList(table.name), table.name, clause), values);
  RawRows rows;
  while (connection_.NextRow(query)) {
    QVariantList& row = rows.emplace_back();
    row.reserve(count);
    for (int column = 0; column < count; ++column) row << query->value(column);
  }
  return rows;
}

Library::RawRows Library::SelectId(qint64 id) {
  return Select(u"WHERE ID = ?"_s + connection_.RowLock(), {id});
}

// Those of the IDs, in their order; one that is not there is left out.
Library::RawRows Library::SelectEach(std::span<const qint64> ids) {
  std::map<qint64, QVariantList> found;
  for (QVariantList& row : Select(OneOf(ids))) found.emplace(Tables::IdOf(row), std::move(row));
  RawRows rows;
  for (const qint64 id : ids)
    if (const auto row = found.find(id); row != found.end()) rows.push_back(row->second);
  return rows;
}

void Library::ReadPortions(const std::function<bool(std::vector<Row>&)>& take,
                           const std::optional<std::vector<qint64>>& chosen) {
  qint64 last = std::numeric_limits<qint64>::min();
  std::span<const qint64> left;
  if (chosen) left = *chosen;
  for (qint64 count = mostRows / 8;;) {
    RawRows read;
    if (chosen) {
      const auto part = left.first(std::min(left.size(), static_cast<size_t>(count)));
      if (part.empty()) return;
      left = left.subspan(part.size());
      read = SelectEach(part);
      if (read.empty()) continue;
    } else {
      read = Select(u"WHERE ID > ? ORDER BY ID LIMIT ?"_s, {last, count});
      if (read.empty()) return;
      last = Tables::IdOf(read.back());
    }
    qint64 characters = 1;
    std::vector<qint64> ids;
    for (const QVariantList& row : read) {
      characters += CharactersIn(row);
      ids.push_back(Tables::IdOf(row));
    }
    const auto bases = ExtraTables::ReadLimitsBases(connection_, OneOf(ids));
    std::vector<Row> rows;
    for (const QVariantList& row : read) rows.push_back(Rows::Make(row, bases));
    read.clear();
    QtConcurrent::blockingMap(rows, Rows::Calculate);
    // As many as those before let expect, not many more at once.
    count = std::clamp(static_cast<qint64>(rows.size()) * mostCharacters / characters, qint64{1},
                       std::min(mostRows, 4 * count));
    if (!take(rows)) return;
  }
}

void Library::ReadEach(const std::function<bool(const Row&)>& take) {
  ReadPortions([&](std::vector<Row>& rows) { return std::ranges::all_of(rows, take); });
}

std::vector<Library::Row> Library::ReadAll() {
  std::vector<Row> all;
  ReadPortions([&](std::vector<Row>& rows) {
    std::ranges::move(rows, std::back_inserter(all));
    return true;
  });
  return all;
}

std::vector<Library::Entry> Library::Entries() { return Entries(everyName); }

std::optional<Library::Row> Library::Read(qint64 id) {
  const RawRows rows = SelectId(id);
  if (rows.empty()) return std::nullopt;
  Row row = Rows::Make(rows.front(), ExtraTables::ReadLimitsBases(connection_, OneOf({&id, 1})));
  Rows::Calculate(row);
  return row;
}

std::vector<Library::Entry> Library::Entries(const QString& sql) {
  std::vector<Entry> entries;
  const Query query = connection_.Run(u"select"_s, sql);
  while (connection_.NextRow(query))
    entries.push_back({query->value(0).toLongLong(), query->value(1).toString()});
  return entries;
}

std::optional<qint64> Library::FindId(const QString& sql, const QString& name) {
  const std::vector<Entry> all = Entries(sql);
  const auto found = Names::Find(all.begin(), all.end(), name, std::mem_fn(&Entry::name));
  return found == all.end() ? std::nullopt : std::optional(found->id);
}

std::optional<qint64> Library::FindDataSet(const QString& description) {
  if (!connection_.IsServer()) return FindId(everyName, description);
  const auto id = LibraryServer::FindName(connection_, description);
  return id ? id : FindId(LibraryServer::namesWithoutKey, description);
}

// One or none, as by its ID; from a server in one go.
Library::RawRows Library::SelectNamed(const QString& description) {
  if (connection_.IsServer()) {
    const QString key = Names::Key(description);
    RawRows rows = Select(
        u"WHERE ID = (SELECT ID FROM StatDataName WHERE NameKey = ?)"_s + connection_.RowLock(), {key});
    // While it was waited for it may have been given another name.
    const auto name = [&] { return rows.front()[Tables::StatData().IndexOf(u"Description")].toString(); };
    if (!rows.empty() && Names::Key(name()) == key) return rows;
  }
  const auto id = FindDataSet(description);
  return id ? SelectId(*id) : RawRows();
}

bool Library::Contains(const QString& description) { return FindDataSet(description).has_value(); }
