// Taking over a library from an Access file: 5,000 data sets of 500 values, against copying the same rows
// from one library into another; and 300,000 of 6 values, against what the database needs to copy them by
// itself.
#include <benchmark/benchmark.h>

#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <algorithm>

#include "bench/Bench.h"
#include "library/AccessImport.h"
#include "library/LibraryFile.h"
#include "tests/access/AccessFiles.h"

using namespace Qt::StringLiterals;
using namespace AccessFiles;

namespace {

// A data page with one owner, whose records are added until it is full.
class PageOfRecords {
 public:
  explicit PageOfRecords(quint32 owner) {
    Put<quint16>(bytes_, 0, 0x0101);
    Put(bytes_, 4, owner);
  }
  bool Add(const QByteArray& record) {
    if (start_ - record.size() < 16 + 2 * count_) return false;
    start_ -= record.size();
    bytes_.replace(start_, record.size(), record);
    Put(bytes_, 14 + 2 * count_, static_cast<quint16>(start_));
    Put(bytes_, 12, static_cast<quint16>(++count_));
    return true;
  }
  const QByteArray& Bytes() const { return bytes_; }

 private:
  QByteArray bytes_ = QByteArray(JetPages::pageSize, '\0');
  qsizetype start_ = JetPages::pageSize;
  qsizetype count_ = 0;
};

// A row with another long value in its place.
QByteArray WithLongField(const QByteArray& row, int index, const QByteArray& field) {
  const qsizetype maskStart = row.size() - (Get<quint16>(row, 0) + 7) / 8;
  const int count = Get<quint16>(row, maskStart - 2);
  const auto offset = [&](int i) { return qsizetype{Get<quint16>(row, maskStart - 4 - 2 * i)}; };
  QByteArray result = row.left(offset(0));
  std::vector<qsizetype> offsets;
  for (int i = 0; i < count; ++i) {
    offsets.push_back(result.size());
    result += i == index ? field : row.mid(offset(i), offset(i + 1) - offset(i));
  }
  offsets.push_back(result.size());
  std::ranges::reverse(offsets);
  for (const qsizetype at : offsets) {
    result += QByteArray(2, '\0');
    Put(result, result.size() - 2, static_cast<quint16>(at));
  }
  return result + row.mid(maskStart - 2);
}

// plant.mdb with other data sets: one of its rows again and again, each with an ID and values of its own. Few
// values stand in the row itself.
QByteArray LargeAccessFile(int dataSets, int valuesEach) {
  QByteArray file = Bytes(u"plant.mdb"_s);
  const JetTable table = Open(file)->Table(u"StatData"_s);
  const bool inPlace = valuesEach < 10;
  constexpr quint32 longValueOwner = 0x4C41564C;
  constexpr qsizetype mostInPiece = 4076;
  const auto addPage = [&](const QByteArray& page) {
    file += page;
    return static_cast<quint32>(file.size() / JetPages::pageSize - 1);
  };

  const qsizetype fieldAt = LongFieldAt(file, ReadAll(file)[u"StatData"_s][7][u"Values"_s].toString());
  const auto itsPage = static_cast<quint32>(fieldAt / JetPages::pageSize);
  qsizetype end = PageAt(itsPage + 1);
  quint32 pointer = itsPage << 8;
  for (; RecordAt(file, pointer) > fieldAt; ++pointer) end = RecordAt(file, pointer);
  const qsizetype start = RecordAt(file, pointer);
  QByteArray row = file.mid(start, end - start);

  std::vector<PageOfRecords> pages = {PageOfRecords(table.page)};
  for (int i = 0; i < dataSets; ++i) {
    const QString values = QString::fromStdString(Bench::Values(valuesEach, static_cast<unsigned>(i)));
    const QByteArray text(reinterpret_cast<const char*>(values.utf16()), 2 * values.size());
    quint32 next = 0;
    for (qsizetype at = (text.size() - 1) / mostInPiece * mostInPiece; !inPlace && at >= 0;
         at -= mostInPiece) {
      PageOfRecords page(longValueOwner);
      QByteArray link(4, '\0');
      Put(link, 0, next);
      page.Add(link + text.mid(at, mostInPiece));
      next = addPage(page.Bytes()) << 8;
    }
    Put(row, 2 + table.Column(u"ID"_s)->fixedOffset, i + 1);
    QByteArray field(12, '\0');
    Put(field, 0, static_cast<quint32>(text.size()) | (inPlace ? 0x80000000 : 0));
    Put(field, 4, next);
    if (inPlace) field += text;
    const QByteArray record = WithLongField(row, table.Column(u"Values"_s)->variableIndex, field);
    if (pages.back().Add(record)) continue;
    pages.emplace_back(table.page);
    pages.back().Add(record);
  }

  const qsizetype bitmapAt = PageAt(Get<quint32>(file, RecordAt(file, table.ownedPages) + 1)) + 4;
  for (qsizetype at = bitmapAt; at % JetPages::pageSize != 0; ++at) file[at] = 0;
  for (const PageOfRecords& page : pages) {
    const quint32 number = addPage(page.Bytes());
    char& bits = file.data()[bitmapAt + number / 8];
    bits = static_cast<char>(bits | 1 << (number % 8));
  }
  Put(file, PageAt(table.page) + 16, static_cast<quint32>(dataSets));
  return file;
}

class Libraries {
 public:
  Libraries(int dataSets, int valuesEach) {
    QFile file(access);
    if (!file.open(QIODevice::WriteOnly) || file.write(LargeAccessFile(dataSets, valuesEach)) < 0)
      throw std::runtime_error("no Access file");
    file.close();
    AccessImport::Convert(access, library);
  }

  QTemporaryDir folder;
  QString access = folder.filePath(u"large.mdb"_s);
  QString library = folder.filePath(u"large.kestrel"_s);
  QString target = folder.filePath(u"target.kestrel"_s);
};

Libraries& LongRows() {
  static Libraries libraries(5000, 500);
  return libraries;
}

Libraries& ShortRows() {
  static Libraries libraries(300'000, 6);
  return libraries;
}

void Convert(benchmark::State& state, const Libraries& files) {
  for ([[maybe_unused]] auto _ : state) {
    QFile::remove(files.target);
    AccessImport::Convert(files.access, files.target);
  }
}
void ConvertLibrary(benchmark::State& state) { Convert(state, LongRows()); }
BENCHMARK(ConvertLibrary)->Unit(benchmark::kMillisecond)->Repetitions(5)->MeasureProcessCPUTime();
void ConvertShortRows(benchmark::State& state) { Convert(state, ShortRows()); }
BENCHMARK(ConvertShortRows)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(5)
    ->MeasureProcessCPUTime();

void CopyTheRows(Connection& from, Connection& to) {
  QSqlQuery rows(from.Database());
  rows.setForwardOnly(true);
  rows.exec(u"SELECT * FROM StatData"_s);
  const int columns = rows.record().count();
  QSqlQuery insert(to.Database());
  insert.prepare(u"INSERT INTO StatData VALUES (?%1)"_s.arg(u",?"_s.repeated(columns - 1)));
  while (rows.next()) {
    for (int i = 0; i < columns; ++i) insert.bindValue(i, rows.value(i));
    if (!insert.exec()) throw std::runtime_error("the rows cannot be copied");
  }
}

void CopyRows(benchmark::State& state) {
  const Libraries& files = LongRows();
  for ([[maybe_unused]] auto _ : state) {
    QFile::remove(files.target);
    Connection from;
    from.OpenWith(files.library);
    LibraryFile::Create(files.target, [&](Connection& to) { CopyTheRows(from, to); });
  }
}
BENCHMARK(CopyRows)->Unit(benchmark::kMillisecond)->Repetitions(5)->MeasureProcessCPUTime();

void CopyShortRows(benchmark::State& state) {
  const Libraries& files = ShortRows();
  for ([[maybe_unused]] auto _ : state) {
    QFile::remove(files.target);
    LibraryFile::Create(files.target);
    Connection to;
    to.OpenWith(files.target);
    to.Execute(u"ATTACH DATABASE ? AS source"_s, {files.library});
    to.Execute(u"INSERT INTO StatData SELECT * FROM source.StatData"_s);
  }
}
BENCHMARK(CopyShortRows)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(5)
    ->MeasureProcessCPUTime();

}  // namespace
