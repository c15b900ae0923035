// Taking over a library from an Access file: all of it, exactly, or none of it and the reason.
#include <QTemporaryDir>

#include "library/AccessImport.h"
#include "tests/access/AccessFiles.h"
#include "tests/support/Rows.h"

using namespace Qt::StringLiterals;
using namespace AccessFiles;

namespace {

class AccessImportTest : public testing::Test {
 protected:
  QString Write(const QByteArray& bytes) { return WriteFile(folder_.filePath(u"old.mdb"_s), bytes); }

  // Why they are refused; and nothing but the Access file may be there.
  void ExpectRefusals(const Damaged& files) {
    AccessFiles::ExpectRefusals(files, [this](const QByteArray& bytes) {
      const QString path = Write(bytes);
      const QString refusal = Refusal([&] { AccessImport::Convert(path, target_); });
      EXPECT_EQ(EntriesOf(folder_.path()), QStringList(u"old.mdb"_s));
      return QString(refusal).replace(path, u"FILE"_s);
    });
  }

  QJsonObject ReadLibrary() {
    Connection connection;
    connection.OpenWith(target_);
    QJsonObject contents;
    for (const QString& table : {u"StatData"_s, u"Units"_s, u"DBRevision"_s}) {
      const Query query = connection.Run(u"select"_s, u"SELECT * FROM "_s + table);
      QJsonArray rows;
      while (connection.NextRow(query)) {
        QJsonObject row;
        for (int i = 0; i < query->record().count(); ++i)
          row[query->record().fieldName(i)] = ToJson(query->value(i));
        if (table == u"Units"_s) row[u"Deleted"_s] = row[u"Deleted"_s].toInt() != 0;
        rows.append(row);
      }
      contents[table] = rows;
    }
    return contents;
  }

  QTemporaryDir folder_;
  QString target_ = folder_.filePath(u"new.lib"_s);
};

// A row's number.
qsizetype FixedAt(const QByteArray& file, quint32 pointer, const char* column) {
  const JetTable table = Open(file)->Table(u"StatData"_s);
  return RecordAt(file, pointer) + 2 + table.Column(QString::fromLatin1(column))->fixedOffset;
}

}  // namespace

TEST_F(AccessImportTest, TakesOverEveryValueOfEveryValidFile) {
  for (const auto& [name, json] : Valid()) {
    QFile::remove(target_);
    const QByteArray bytes = Bytes(name);
    const QString path = Write(bytes);
    const QJsonObject expected = Expected(json);
    qint64 rows = 0;
    for (const auto& table : expected) rows += table.toArray().size();
    qint64 last = 0;
    AccessImport::Convert(path, target_, [&](qint64 done, qint64 total) {
      EXPECT_EQ(done, ++last);
      EXPECT_EQ(total, rows);
    });
    EXPECT_EQ(last, rows);
    EXPECT_EQ(Dump(ReadLibrary()), Dump(expected)) << name.toStdString();
    EXPECT_EQ(ReadFile(path), bytes) << "the original was touched";
  }
}

// A data set that was deleted last must not lend its number to the next one.
TEST_F(AccessImportTest, CountsAndGivesNoNumberTwice) {
  const AccessImport::Counts counts = AccessImport::Convert(Write(Bytes(u"lastdeleted.mdb.z"_s)), target_);
  const QJsonObject expected = Expected(u"lastdeleted"_s);
  qint64 samples = 0;
  for (const auto& row : expected[u"StatData"_s].toArray())
    samples += row[u"Values"_s].toString().split(u',', Qt::SkipEmptyParts).size();
  EXPECT_EQ(counts.dataSets, expected[u"StatData"_s].toArray().size());
  EXPECT_EQ(counts.samples, samples);
  EXPECT_EQ(counts.units, expected[u"Units"_s].toArray().size());
  RunSql(target_, u"INSERT INTO StatData (Description) VALUES ('new')"_s);
  EXPECT_EQ(RowsOf(target_, u"SELECT max(ID) FROM StatData"_s)[0][0], 13);
}

TEST_F(AccessImportTest, RefusesInOneLineAndLeavesNothing) {
  const QByteArray plant = Bytes(u"plant.mdb"_s);
  QByteArray renamed = plant;
  for (const QString& name : {u"HiFlier"_s, u"LoFlier"_s}) {
    const QByteArray stored(reinterpret_cast<const char*>(name.utf16()), 2 * name.size());
    renamed.replace(stored, QByteArray(stored).replace(0, 1, "X"));
  }
  QByteArray cutLater = plant;  // the revision can be read, the last data set cannot
  cutLater[PageAt(60)] = 0;
  ExpectRefusals({{u"of an old revision"_s, Bytes(u"old_revision.mdb"_s)},
                  {u"of none"_s, Bytes(u"no_revision.mdb"_s)},
                  {u"of Access 97"_s, Bytes(u"jet3.mdb"_s)},
                  {u"cut off"_s, plant.left(40 * JetPages::pageSize)},
                  {u"damaged later"_s, cutLater},
                  {u"without two columns"_s, renamed}});
}

TEST_F(AccessImportTest, RefusesAFileThatIsWrittenMeanwhile) {
  const QString path = Write(Bytes(u"plant.mdb"_s));
  const auto write = [&](qint64, qint64) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadWrite) &&
                file.setFileTime(QDateTime::currentDateTime().addSecs(9), QFile::FileModificationTime));
  };
  EXPECT_THROW(AccessImport::Convert(path, target_, write), Error);
  EXPECT_FALSE(QFile::exists(target_));
}

TEST_F(AccessImportTest, NeverReplacesAFile) {
  ASSERT_TRUE(QFile::copy(Path(u"unicode.json"_s), target_));
  EXPECT_THROW(AccessImport::Convert(Path(u"plant.mdb"_s), target_), Error);
  EXPECT_EQ(ReadFile(target_), Bytes(u"unicode.json"_s));
}

// What the new file cannot hold as it is must not become something else in it.
TEST_F(AccessImportTest, RefusesWhatWouldChange) {
  const QByteArray plant = Bytes(u"plant.mdb"_s);
  QByteArray noNumber = plant, sameId = plant, later = Bytes(u"shrunk.mdb.z"_s);
  Put(noNumber, FixedAt(plant, firstRowOfPlant, "XBarUCL"), std::numeric_limits<double>::quiet_NaN());
  Put(sameId, FixedAt(plant, firstRowOfPlant, "ID"), 2);
  // Among so many that they are written together.
  const quint32 owner = Open(later)->Table(u"StatData"_s).page;
  quint32 page = 1;
  while (Get<quint8>(later, PageAt(page)) != JetPages::DataPage ||
         Get<quint32>(later, PageAt(page) + 4) != owner)
    ++page;
  Put(later, FixedAt(later, (page << 8) + 2, "ID"), Get<qint32>(later, FixedAt(later, page << 8, "ID")));
  Damaged files{{u"no number"_s, noNumber}, {u"an ID twice"_s, sameId}, {u"the same, of many"_s, later}};
  const QString text = Expected(u"plant"_s)[u"StatData"_s][7][u"Values"_s].toString();
  const qsizetype textAt = RecordAt(plant, Get<quint32>(plant, LongFieldAt(plant, text) + 4)) + 4;
  for (const quint16 unit : std::initializer_list<quint16>{0xD834, 0xFFFE, 0xFFFF}) {
    QByteArray file = plant;
    files.emplace_back(u"the character %1"_s.arg(unit, 0, 16), Put(file, textAt, unit));
  }
  ExpectRefusals(files);
}
