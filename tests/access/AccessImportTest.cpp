// Taking over a library from an Access file: all of it, exactly, or none of it and the reason.
#include <gtest/gtest.h>

#include <QDir>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>

#include "library/AccessImport.h"
#include "platform/ado/Connection.h"
#include "platform/error/Error.h"
#include "tests/access/AccessFiles.h"

using namespace Qt::StringLiterals;
using namespace AccessFiles;

namespace {

class AccessImportTest : public testing::Test {
 protected:
  QString Write(const QByteArray& bytes) {
    QFile file(folder_.filePath(u"old.mdb"_s));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return file.fileName();
  }

  // The text of the refusal, after which nothing but the Access file may be there.
  std::string Refusal(const QByteArray& bytes) {
    const QString path = Write(bytes);
    try {
      AccessImport::Convert(path, target_);
      ADD_FAILURE() << "it was taken over";
      return {};
    } catch (const Error& error) {
      EXPECT_EQ(QDir(folder_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                QStringList(u"old.mdb"_s));
      const std::string text = error.what();
      EXPECT_EQ(text.rfind(path.toStdString() + ": ", 0), 0U) << text;
      return text.substr(static_cast<size_t>(path.size()) + 2);
    }
  }

  QJsonObject ReadLibrary() {
    Connection connection;
    connection.OpenWith(target_);
    QJsonObject contents;
    for (const QString& table : {u"StatData"_s, u"Units"_s, u"DBRevision"_s}) {
      QSqlQuery query = connection.Run(u"select"_s, u"SELECT * FROM "_s + table);
      QJsonArray rows;
      while (connection.NextRow(query)) {
        QJsonObject row;
        for (int i = 0; i < query.record().count(); ++i)
          row[query.record().fieldName(i)] = ToJson(query.value(i));
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
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly) && file.readAll() == bytes) << "the original was touched";
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
  Connection connection;
  connection.OpenWith(target_);
  connection.Execute(u"INSERT INTO StatData (Description) VALUES ('new')"_s);
  QSqlQuery query = connection.Run(u"select"_s, u"SELECT MAX(ID) FROM StatData"_s);
  ASSERT_TRUE(connection.NextRow(query));
  EXPECT_EQ(query.value(0), 13);
}

TEST_F(AccessImportTest, RefusesInOneLineAndLeavesNothing) {
  EXPECT_EQ(Refusal(Bytes(u"old_revision.mdb"_s)),
            "Invalid Database Version. Current Database Version: 1.9. Required Database Version: 2.0.");
  EXPECT_EQ(Refusal(Bytes(u"no_revision.mdb"_s)), "The table \"DBRevision\" is missing.");
  EXPECT_NE(Refusal(Bytes(u"jet3.mdb"_s)).find("Access 97"), std::string::npos);
  const QByteArray plant = Bytes(u"plant.mdb"_s);
  EXPECT_NE(Refusal(plant.left(40 * JetPages::pageSize)).find("is damaged"), std::string::npos);
  QByteArray cutLater = plant;  // the revision can be read, the last data set cannot
  cutLater[PageAt(60)] = 0;
  EXPECT_NE(Refusal(cutLater).find("\"StatData\" is damaged at row 8: column \"Values\""), std::string::npos);
}

TEST_F(AccessImportTest, NamesTheColumnsThatAreMissing) {
  QByteArray file = Bytes(u"plant.mdb"_s);
  for (const char* name : {"HiFlier", "LoFlier"}) {
    const QString text = QString::fromLatin1(name);
    const QByteArray stored(reinterpret_cast<const char*>(text.utf16()), 2 * text.size());
    for (qsizetype at = 0; (at = file.indexOf(stored, at)) >= 0;) file[at] = 'X';
  }
  EXPECT_EQ(Refusal(file), "The table \"StatData\" lacks the column \"HiFlier\", \"LoFlier\".");
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
  QFile file(target_);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly) && file.readAll() == Bytes(u"unicode.json"_s));
}

// What the new file cannot hold as it is must not become something else in it.
TEST_F(AccessImportTest, RefusesWhatWouldChange) {
  const QByteArray plant = Bytes(u"plant.mdb"_s);
  QByteArray file = plant;
  Put(file, FixedAt(file, firstRowOfPlant, "XBarUCL"), std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(
      Refusal(file),
      "The table \"StatData\" cannot be taken over at row 1: column \"XBarUCL\": the value is no number.");
  file = plant;
  Put(file, FixedAt(file, firstRowOfPlant, "ID"), 2);
  EXPECT_EQ(Refusal(file),
            "The table \"StatData\" cannot be taken over at row 2: another row has the same ID.");
  // Among so many that they are written together.
  file = Bytes(u"shrunk.mdb.z"_s);
  const quint32 owner = Open(file)->Table(u"StatData"_s).page;
  quint32 page = 1;
  while (Get<quint8>(file, PageAt(page)) != JetPages::DataPage ||
         Get<quint32>(file, PageAt(page) + 4) != owner)
    ++page;
  Put(file, FixedAt(file, (page << 8) + 2, "ID"), Get<qint32>(file, FixedAt(file, page << 8, "ID")));
  EXPECT_EQ(Refusal(file),
            "The table \"StatData\" cannot be taken over at row 3: another row has the same ID.");
  const QString text = Expected(u"plant"_s)[u"StatData"_s][7][u"Values"_s].toString();
  const qsizetype textAt = RecordAt(plant, Get<quint32>(plant, LongFieldAt(plant, text) + 4)) + 4;
  for (const quint16 unit : std::initializer_list<quint16>{0xD834, 0xFFFE, 0xFFFF}) {
    file = plant;
    Put(file, textAt, unit);
    EXPECT_NE(Refusal(file).find("column \"Values\": the text holds something that is no character"),
              std::string::npos);
  }
}
