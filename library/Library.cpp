#include "library/Library.h"

#include <QtConcurrentMap>
#include <limits>

#include "data/Statistics.h"
#include "library/Backup.h"
#include "library/LibraryFile.h"
#include "library/Revision.h"
#include "library/Tables.h"
#include "platform/access/JetFile.h"
#include "platform/language/Conversions.h"
#include "texts/LibraryWords.h"

using namespace Qt::StringLiterals;

namespace {

QString NamedRow(const QVariantList& row) {
  const Table& table = Tables::StatData();
  return Words::Library::dataSet(row[table.IndexOf(u"Description")].toString(),
                                 row[table.IndexOf(u"ID")].toString());
}

CDataPtr MakeDataSet(const QVariantList& row) {
  try {
    return Tables::DataSetOf(row);
  } catch (const Error& error) {
    const QString name = NamedRow(row);
    throw Error(name + u": "_s + error.Text(), Error::Kind::Unavailable, name);
  }
}

Library::Row MakeRow(const QVariantList& row) {
  try {
    return {MakeDataSet(row), {}};
  } catch (const Error& error) {
    return {nullptr, error};
  }
}

void Calculate(Library::Row& row) {
  if (!row.data || QCGlobalFunctions::CalculateStatistics(*row.data)) return;
  const QString name = NamedRow(row.data->RowAsKnown());
  row.failure = InputError(name + u": "_s + row.data->ErrorMessage(), name);
  row.refusedByEngine = true;
}

void RequireStatistics(CData& data, const QString& place) {
  if (!QCGlobalFunctions::CalculateStatistics(data))
    throw InputError(Words::Library::refusedValues(place, data.Description(), data.ErrorMessage()),
                     data.Description());
}

void RequireCount(qsizetype count) {
  constexpr qsizetype most = std::numeric_limits<qint16>::max();
  if (count > most) throw InputError(Words::Library::tooManySamples(count, most));
}

}  // namespace

void Library::Create(const QString& place) { LibraryFile::Create(place); }

Library::Library(const QString& place, const QString& provider) : place_(place) {
  connection_.Provider = provider;
  connection_.OpenWith(place);
}

std::unique_ptr<Library> Library::Open(const QString& place, const News& news) {
  const auto refuse = [&](const QString& reason) {
    throw Error(u"%1: %2"_s.arg(place, reason), Error::Kind::Unavailable, place);
  };
  if (JetFile::IsAccessFile(place))
    throw Error(Words::Library::isAccessFile(place), Error::Kind::Unavailable, place);
  auto library = std::make_unique<Library>(place);
  const QString revision = library->Revision();
  if (revision.isNull()) refuse(Words::Library::noLibrary());
  try {
    if (!Revision::IsAccepted(revision)) refuse(Revision::RefusalOnOneLine(revision));
  } catch (const Conversions::Failure& failure) {
    refuse(failure.Text());
  }
  library->Guard(news);
  return library;
}

QString Library::Revision() {
  QSqlQuery query = connection_.Run(u"select"_s, u"SELECT Revision FROM DBRevision"_s);
  QVariant revision;
  while (connection_.NextRow(query)) revision = query.value(0);
  return revision.isNull() || revision.toString().size() < 3 ? QString() : revision.toString();
}

void Library::Guard(const News& news) { Backup::Guard(connection_, place_, news); }

// Reading

Library::RawRows Library::Select(const QString& clause, const QVariantList& values) {
  const Table& table = Tables::StatData();
  const auto count = static_cast<int>(table.columns.size());
  QSqlQuery query = connection_.Run(
      u"select"_s, u"SELECT %1 FROM %2 %3"_s.arg(table.ColumnList(), table.name, clause), values);
  RawRows rows;
  while (connection_.NextRow(query)) {
    QVariantList& row = rows.emplace_back();
    row.reserve(count);
    for (int column = 0; column < count; ++column) row << query.value(column);
  }
  return rows;
}

void Library::ReadEach(const std::function<bool(const Row&)>& take) {
  for (const QVariantList& values : Select()) {
    Row row = MakeRow(values);
    Calculate(row);
    if (!take(row)) return;
  }
}

std::vector<Library::Row> Library::ReadAll() {
  std::vector<Row> rows;
  for (const QVariantList& values : Select()) rows.push_back(MakeRow(values));
  QtConcurrent::blockingMap(rows, Calculate);
  return rows;
}

CDataPtr Library::Find(const QString& description) {
  const RawRows rows = Select(u"WHERE Description = ?"_s, {description});
  try {
    return rows.empty() ? nullptr : MakeDataSet(rows.front());
  } catch (const Error& error) {
    throw Error(place_ + u": "_s + error.Text(), error.GetKind(), error.About());
  }
}

// Writing

QVariantList Library::Written(qint64 id) { return Select(u"WHERE ID = ?"_s, {id}).at(0); }

void Library::RequireRowAsKnown(const CData& data) {
  const RawRows rows = Select(u"WHERE ID = ?"_s, {data.ID()});
  const auto refuse = [&](const Text<1>& reason) {
    throw Error(reason(data.Description()), Error::Kind::Conflict, data.Description());
  };
  if (rows.empty()) refuse(Words::Library::deletedMeanwhile);
  if (rows.front() != data.RowAsKnown()) refuse(Words::Library::changedMeanwhile);
}

void Library::Insert(CData& data, const QDateTime& now) {
  QStringList names{u"Description"_s, u"LastModified"_s};
  QVariantList values{data.Description(), Tables::DateText(now)};
  for (const Column& column : Tables::StatData().columns) {
    if (!Tables::IsWrittenBySave(column)) continue;
    names << column.Quoted();
    values << column.write(data);
  }
  const QStringList places(names.size(), u"?"_s);
  QSqlQuery query = connection_.Run(
      u"insert"_s, u"INSERT INTO StatData (%1) VALUES (%2)"_s.arg(names.join(u", "_s), places.join(u", "_s)),
      values);
  data.SetRowAsKnown(Written(query.lastInsertId().toLongLong()));
}

void Library::Update(CData& data, const QDateTime& now) {
  QStringList assignments{u"LastModified = ?"_s};
  QVariantList values{Tables::DateText(now)};
  for (const Column& column : Tables::StatData().columns) {
    if (!Tables::IsWrittenBySave(column)) continue;
    assignments << column.Quoted() + u" = ?"_s;
    values << column.write(data);
  }
  connection_.Run(u"update"_s, u"UPDATE StatData SET %1 WHERE ID = ?"_s.arg(assignments.join(u", "_s)),
                  values << data.ID());
  data.SetRowAsKnown(Written(data.ID()));
}

bool Library::Save(CData& data, const QDateTime& now) {
  CData saved = data;
  Transaction transaction(connection_);
  const bool isNew = data.RowAsKnown().isEmpty() && Select(u"WHERE ID = ?"_s, {data.ID()}).empty();
  if (!isNew && !data.RowAsKnown().isEmpty()) RequireRowAsKnown(data);
  if (isNew)
    Insert(saved, now);
  else
    Update(saved, now);
  transaction.Commit();
  saved.SetLastModified(Tables::DateText(now));
  data = saved;
  return isNew;
}

void Library::Add(CData& data, const QDateTime& now) {
  RequireCount(data.DelimitedInputString().count(u','));
  RequireStatistics(data, place_);
  // One transaction, so that nobody adds the same description in between.
  Transaction transaction(connection_);
  if (Find(data.Description()))
    throw InputError(Words::Library::alreadyThere(place_, data.Description()), data.Description());
  Save(data, now);
  AddUnit(data.UnitOfMeasurement());
  transaction.Commit();
}

CDataPtr Library::Append(const QString& description, const QStringList& values, const QDateTime& now) {
  // One transaction from reading to writing: of two programs that append at once, neither loses the other's
  // values.
  Transaction transaction(connection_);
  const CDataPtr data = Find(description);
  if (!data) throw InputError(Words::Library::notThere(place_, description), description);
  QString text = data->DelimitedInputString();
  if (!text.trimmed().isEmpty() && !text.endsWith(u',')) text += u',';
  for (const QString& value : values) text += value + u',';
  RequireCount(text.count(u','));
  data->SetDelimitedInputString(text);
  RequireStatistics(*data, place_);
  const QString modified = Tables::DateText(now);
  connection_.Run(u"update"_s, u"UPDATE StatData SET \"Values\" = ?, LastModified = ? WHERE ID = ?"_s,
                  {text, modified, data->ID()});
  data->SetRowAsKnown(Written(data->ID()));
  transaction.Commit();
  data->SetLastModified(modified);
  return data;
}

void Library::AddUnit(const QString& name) {
  if (name.isEmpty()) return;
  connection_.Execute(
      u"INSERT INTO Units (Name) SELECT ? WHERE NOT EXISTS (SELECT * FROM Units WHERE Name = ? AND Deleted = 0)"_s,
      {name, name});
}
