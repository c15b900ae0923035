// Takes over a library from a genuine Access file: every row of its tables into a new library file, or none.
#include "library/AccessImport.h"

#include <QDateTime>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <algorithm>
#include <cmath>
#include <limits>

#include "library/LibraryFile.h"
#include "library/Revision.h"
#include "library/Tables.h"
#include "platform/access/JetFile.h"
#include "texts/LibraryWords.h"

using namespace Qt::StringLiterals;

namespace {

using Kind = Column::Kind;

// The UTF-8 of a text; as a text the database would take a leading U+FEFF for a mark and drop it. What it
// would give back as another character is refused.
QVariant TextToStore(const QString& text) {
  if (!text.isValidUtf16() || text.contains(QChar(0xFFFE)) || text.contains(QChar(0xFFFF)))
    throw Error(Words::Access::noCharacter());
  return text.isEmpty() ? QByteArray("") : text.toUtf8();
}

QVariant ValueToStore(const QVariant& value, const Column& column) {
  const Kind kind = column.kind;
  const int type = value.typeId();
  const bool isWhole = type == QMetaType::Int;
  const bool isReal = type == QMetaType::Double;
  if (value.isNull()) {
    // The database would give a number of its own to a row without one.
    if (kind == Kind::Id || kind == Kind::YesNo) throw Error(Words::Access::noValue());
    return {};
  }
  if (column.IsText() && type == QMetaType::QString) return TextToStore(value.toString());
  if (kind == Kind::YesNo && (type == QMetaType::Bool || isWhole)) return value.toBool() ? 1 : 0;
  if (kind == Kind::Real && (isReal || isWhole)) {
    // The database would store a Null in its place.
    if (std::isnan(value.toDouble())) throw Error(Words::Access::noNumber());
    return value.toDouble();
  }
  if ((kind == Kind::Id || kind == Kind::Whole) && isWhole) return value;
  throw Error(Words::Access::wrongType());
}

QSqlQuery PrepareInsert(Connection& connection, const Table& table) {
  QStringList places;
  for (const Column& column : table.columns) places += column.IsText() ? u"CAST(? AS TEXT)"_s : u"?"_s;
  QSqlQuery query(connection.Database());
  if (!query.prepare(
          u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(table.name, table.ColumnList(), places.join(u','))))
    throw DatabaseError(query.lastError().databaseText());
  return query;
}

void BindRow(QSqlQuery& insert, const Table& table, const std::vector<QVariant>& values) {
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    const Column& column = table.columns[i];
    try {
      insert.bindValue(static_cast<int>(i), ValueToStore(values[i], column));
    } catch (const Error& error) {
      throw JetError(Words::Access::column(column.name, ErrorText(error)));
    }
  }
}

void Write(QSqlQuery& insert) {
  constexpr int constraintFailed = 19;  // the library's code for a key that is there already
  Connection::BeforeOperation(u"execute"_s);
  if (insert.exec()) return;
  if ((insert.lastError().nativeErrorCode().toInt() & 0xFF) == constraintFailed)
    throw JetError(Words::Access::sameID());
  throw DatabaseError(insert.lastError().databaseText());
}

// Opened once for all tables, so that the total is known before the first row.
struct Source {
  const Table& table;
  JetTable definition;
};

// Calls rowCopied with each row's values.
void CopyRows(JetFile& file, const Source& source, Connection& connection,
              const std::function<void(const std::vector<QVariant>&)>& rowCopied) {
  QSqlQuery insert = PrepareInsert(connection, source.table);
  JetRows rows = file.Rows(source.definition, source.table.ColumnNames());
  for (qint64 row = 1; rows.Next(); ++row) {
    try {
      BindRow(insert, source.table, rows.Values());
      Write(insert);
    } catch (const JetError& error) {
      throw JetError(Words::Access::row(source.table.name, row, error.Text()));
    }
    rowCopied(rows.Values());
  }
}

// The last number that the Access file gave may be of a row that is deleted since.
void KeepLastNumber(const Source& source, Connection& connection) {
  const auto last = static_cast<qint32>(source.definition.lastNumber);
  if (source.table.columns.front().kind != Kind::Id || last <= 0 ||
      last == std::numeric_limits<qint32>::max())
    return;
  const QString& name = source.table.name;
  connection.Execute(
      u"INSERT INTO sqlite_sequence (name, seq) SELECT ?, 0 WHERE NOT EXISTS (SELECT * FROM sqlite_sequence WHERE name = ?)"_s,
      {name, name});
  connection.Execute(u"UPDATE sqlite_sequence SET seq = ? WHERE name = ? AND seq < ?"_s, {last, name, last});
}

// The elements between commas that are not blank.
qint64 CountSamples(QStringView values) {
  qint64 count = 0;
  bool blank = true;
  for (const QChar c : values) {
    if (c == u',') {
      blank = true;
    } else if (blank && !c.isSpace()) {
      blank = false;
      ++count;
    }
  }
  return count;
}

AccessImport::Counts CopyTables(const QString& accessPath, Connection& connection,
                                const AccessImport::Progress& progress) {
  JetFile file(accessPath);
  const auto state = [&] { return QFileInfo(accessPath).lastModified(); };
  const QDateTime stateBefore = state();
  std::vector<Source> sources;
  qint64 total = 0;
  for (const Table& table : Tables::All()) {
    sources.push_back({table, file.Table(table.name)});
    total += sources.back().definition.rowCount;
  }
  qint64 done = 0;
  AccessImport::Counts counts;
  for (const Source& source : sources) {
    const bool areDataSets = source.table.name == Tables::StatData().name;
    const auto valuesAt = static_cast<std::size_t>(source.table.IndexOf(u"Values"));
    qint64 rows = 0;
    CopyRows(file, source, connection, [&](const std::vector<QVariant>& values) {
      ++rows;
      if (areDataSets) counts.samples += CountSamples(values[valuesAt].toString());
      if (progress) progress(++done, total);
    });
    KeepLastNumber(source, connection);
    if (areDataSets) counts.dataSets = rows;
    if (source.table.name == Tables::Units().name) counts.units = rows;
  }
  if (state() != stateBefore) throw JetError(Words::Access::changedWhileRead());
  return counts;
}

// Runs a body that reads the Access file; what is wrong with that file is an Error that names it.
template <class Body>
auto Reading(const QString& accessPath, Body&& body) {
  try {
    return body();
  } catch (const JetError& error) {
    throw Error(u"%1: %2"_s.arg(accessPath, error.Text()), Error::Kind::Unavailable, accessPath);
  }
}

bool IsAccepted(const QString& revision) {
  try {
    return Revision::IsAccepted(revision);
  } catch (const std::exception&) {
    return false;  // no revision at all
  }
}

QString ReadRevision(JetFile& file) {
  const Table& table = Tables::Revisions();
  JetRows rows = file.Rows(file.Table(table.name), table.ColumnNames());
  QString revision;
  while (rows.Next()) revision = rows.Values().front().toString();
  return revision;
}

}  // namespace

QString AccessImport::Revision(const QString& accessPath) {
  return Reading(accessPath, [&] {
    // A pipe would keep who looks into it waiting.
    const QFileInfo info(accessPath);
    if (info.exists() && !info.isFile() && !info.isDir()) throw JetError(Words::Access::noOrdinaryFile());
    JetFile file(accessPath);
    return ReadRevision(file);
  });
}

AccessImport::Counts AccessImport::Convert(const QString& accessPath, const QString& libraryPath,
                                           const Progress& progress) {
  const QString revision = Revision(accessPath);
  if (revision.size() < 3) throw Error(Words::Access::noRevision(accessPath));
  if (!IsAccepted(revision)) throw Error(u"%1: %2"_s.arg(accessPath, Revision::RefusalOnOneLine(revision)));
  Counts counts;
  LibraryFile::Create(libraryPath, [&](Connection& connection) {
    counts = Reading(accessPath, [&] { return CopyTables(accessPath, connection, progress); });
  });
  return counts;
}
