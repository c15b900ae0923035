// What opening may do to the disk, what may run in one text, and in which words failures are told.
#include "platform/ado/Connection.h"

#include <QTemporaryDir>
#include <map>

#include "tests/support/Files.h"
#include "tests/support/Refusal.h"

using namespace Qt::StringLiterals;

namespace {

class ConnectionTest : public testing::Test {
 protected:
  QString MakeTable(const QString& name) {
    const QString path = WriteFile(folder.filePath(name));  // an empty database
    Connection connection;
    connection.OpenWith(path);
    connection.Execute(u"CREATE TABLE T (ID INTEGER PRIMARY KEY, Name TEXT COLLATE NOCASE)"_s);
    connection.Execute(u"INSERT INTO T (Name) VALUES ('one')"_s);
    return path;
  }

  QTemporaryDir folder;
};

TEST_F(ConnectionTest, OpeningNeverMakesAFileAndNamesWhatIsWrong) {
  const QString text = WriteFile(folder.filePath(u"letter.mdb"_s), QByteArray(5000, 'x'));
  const QString missing = folder.filePath(u"missing.mdb"_s);
  for (const auto& [path, reason] :
       std::map<QString, QString>{{missing, u"there is no such file"_s},
                                  {folder.path(), u"it is a folder, not a file"_s},
                                  {{}, u"no file is named"_s},
                                  {text, u"the file is not a database"_s}})
    EXPECT_EQ(Refusal<DatabaseError>([&] { Connection().OpenWith(path); }), path + u": "_s + reason);
  EXPECT_EQ(EntriesOf(folder.path()), QStringList(u"letter.mdb"_s));
  EXPECT_EQ(ReadFile(text), QByteArray(5000, 'x'));
}

TEST_F(ConnectionTest, OddFileNamesAreOpenedAsTheyAre) {
  for (const QString& name :
       {u"50% full.mdb"_s, u"a?mode=memory&b#c.mdb"_s, u"Prüfstück ±.mdb"_s, u"%41.mdb"_s})
    EXPECT_GT(QFileInfo(MakeTable(name)).size(), 0) << name.toStdString();
}

TEST_F(ConnectionTest, ASecondStatementInOneTextIsRefusedAndTheFirstDoesNotRun) {
  Connection connection;
  connection.OpenWith(MakeTable(u"a.mdb"_s));
  for (const QString& text : {u"DELETE * FROM T; SELECT 1"_s, u"SELECT 1; DROP TABLE T"_s,
                              u"DELETE FROM T garbage"_s, u"DELETE FROM T; garbage"_s})
    EXPECT_THROW(connection.Execute(text), DatabaseError) << text.toStdString();
  EXPECT_EQ(connection.Execute(u"  delete *  from T WHERE Name = 'ONE';\n"_s), 1) << "the row is still there";
}

TEST_F(ConnectionTest, ACommitThatFailsSaysThatNothingWasWritten) {
  Connection connection;
  connection.OpenWith(MakeTable(u"a.mdb"_s));
  connection.Execute(u"PRAGMA foreign_keys = ON"_s);
  connection.Execute(u"CREATE TABLE C (T INTEGER REFERENCES T (ID) DEFERRABLE INITIALLY DEFERRED)"_s);
  const QString refusal = Refusal<DatabaseError>([&] {
    Transaction transaction(connection);
    connection.Execute(u"INSERT INTO C VALUES (7)"_s);
    transaction.Commit();
  });
  EXPECT_TRUE(refusal.contains(u"a.mdb: the database refuses it ("_s)) << refusal.toStdString();
  EXPECT_TRUE(refusal.endsWith(u"; nothing was written"_s)) << refusal.toStdString();
  EXPECT_EQ(connection.Execute(u"DELETE FROM C"_s), 0);
}

TEST_F(ConnectionTest, WithoutAnOdbcDriverOpeningFails) {
  Connection connection;
  connection.Provider = Connection::OdbcProvider;
  EXPECT_THROW(connection.OpenWith(u"DSN=none such"_s), DatabaseError);
  EXPECT_EQ(connection.GetState(), Connection::Closed);
}

}  // namespace
