// Takes over a library from a genuine Access file: every row of its tables into a new library file, or none.
#include "library/AccessImport.h"

#include <QDateTime>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <algorithm>
#include <cctype>
#include <cmath>
#include <exception>
#include <future>
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

// The elements between commas that are not blank.
qint64 CountSamples(QByteArrayView values) {
  qint64 count = 0;
  bool blank = true;
  for (const char c : values) {
    if (c == ',') {
      blank = true;
    } else if (blank && !std::isspace(static_cast<unsigned char>(c))) {
      blank = false;
      ++count;
    }
  }
  return count;
}

// Opened once for all tables, so that the total is known before the first row.
struct Source {
  const Table& table;
  JetTable definition;
};

[[noreturn]] void RefuseRow(const Table& table, qint64 row, const QString& reason) {
  throw JetError(Words::Access::row(table.name, row, reason));
}

// Some rows as they are to be stored, and what they end with.
struct Portion {
  std::vector<QVariant> values;  // row after row
  qint64 samples = 0;
  bool isLast = false;
  std::exception_ptr failure;  // behind these rows
};

class Reader {
 public:
  Reader(JetFile& file, const Source& source)
      : table_(source.table), rows_(file.Rows(source.definition, source.table.ColumnNames())) {}

  Portion Read() {
    constexpr std::size_t mostValues = 10'000;
    constexpr qsizetype mostText = 1 << 20;
    Portion portion;
    try {
      for (qsizetype text = 0; portion.values.size() < mostValues && text < mostText;) {
        portion.isLast = !rows_.Next();
        if (portion.isLast) break;
        ++row_;
        text += Take(rows_.Values(), portion);
      }
    } catch (...) {
      portion.failure = std::current_exception();
    }
    return portion;
  }

 private:
  // Gives how long its texts are.
  qsizetype Take(const std::vector<QVariant>& row, Portion& portion) const {
    qsizetype text = 0;
    for (std::size_t i = 0; i < table_.columns.size(); ++i) {
      const Column& column = table_.columns[i];
      try {
        portion.values.push_back(ValueToStore(row[i], column));
      } catch (const Error& error) {
        portion.values.resize(portion.values.size() - i);
        RefuseRow(table_, row_, Words::Access::column(column.name, ErrorText(error)));
      }
      if (column.IsText()) text += portion.values.back().toByteArray().size();
      if (column.unit == Column::Unit::Values)
        portion.samples += CountSamples(portion.values.back().toByteArray());
    }
    return text;
  }

  const Table& table_;
  JetRows rows_;
  qint64 row_ = 0;
};

// Writes so many rows in one statement.
class Writer {
 public:
  Writer(Connection& connection, const Table& table, int rows) : insert_(connection.Database()) {
    QStringList rowsOfPlaces;
    for (int row = 0; row < rows; ++row) {
      QStringList places;
      for (const Column& column : table.columns) {
        names_ << ShortName(names_.size());
        places << (column.IsText() ? u"CAST(%1 AS TEXT)"_s : u"%1"_s).arg(names_.last());
      }
      rowsOfPlaces << u'(' + places.join(u',') + u')';
    }
    if (!insert_.prepare(
            u"INSERT INTO %1 (%2) VALUES %3"_s.arg(table.name, table.ColumnList(), rowsOfPlaces.join(u','))))
      throw DatabaseError(insert_.lastError().databaseText());
  }

  // False, and nothing is written, where a row with one of their keys is there already.
  bool Write(const QVariant* values) {
    constexpr int constraintFailed = 19;
    for (const QString& name : names_) insert_.bindValue(name, *values++);
    Connection::BeforeOperation(u"execute"_s);
    if (insert_.exec()) return true;
    if ((insert_.lastError().nativeErrorCode().toInt() & 0xFF) == constraintFailed) return false;
    throw DatabaseError(insert_.lastError().databaseText());
  }

 private:
  // Values are bound quickest by short names.
  static QString ShortName(qsizetype number) {
    constexpr qsizetype letters = 26;
    const auto letter = [](qsizetype at) { return QChar(static_cast<char16_t>(u'a' + at)); };
    return u':' + QString(letter(number / letters)) + letter(number % letters);
  }

  QSqlQuery insert_;
  QStringList names_;
};

// Reads the next rows while those before are written. Gives the number of the samples.
qint64 CopyRows(JetFile& file, const Source& source, Connection& connection,
                const std::function<void()>& rowCopied) {
  constexpr int together = 16;
  const std::size_t columns = source.table.columns.size();
  Reader reader(file, source);
  Writer many(connection, source.table, together);
  Writer one(connection, source.table, 1);
  const auto read = [&reader] { return std::async(std::launch::async, [&reader] { return reader.Read(); }); };
  qint64 samples = 0;
  qint64 rows = 0;
  for (auto next = read();;) {
    const Portion portion = next.get();
    const bool isEnd = portion.isLast || portion.failure;
    if (!isEnd) next = read();
    for (auto left = static_cast<std::ptrdiff_t>(portion.values.size() / columns); left > 0;) {
      const QVariant* values =
          portion.values.data() + portion.values.size() - static_cast<std::size_t>(left) * columns;
      const int written = left >= together && many.Write(values) ? together : 1;
      if (written == 1 && !one.Write(values)) RefuseRow(source.table, rows + 1, Words::Access::sameID());
      for (int i = 0; i < written; ++i) rowCopied();
      rows += written;
      left -= written;
    }
    if (portion.failure) std::rethrow_exception(portion.failure);
    samples += portion.samples;
    if (isEnd) return samples;
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
    const qint64 before = done;
    counts.samples += CopyRows(file, source, connection, [&] {
      ++done;
      if (progress) progress(done, total);
    });
    const qint64 rows = done - before;
    KeepLastNumber(source, connection);
    if (source.table.name == Tables::StatData().name) counts.dataSets = rows;
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
