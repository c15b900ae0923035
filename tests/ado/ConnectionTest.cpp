// What opening may do to the disk, what may run in one text, and in which words failures are told.
#include "platform/ado/Connection.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include "tests/support/WithoutPrivileges.h"

using namespace Qt::StringLiterals;

namespace {

class ConnectionTest : public testing::Test {
 protected:
  // An empty file is an empty database.
  QString MakeFile(const QString& name, const QByteArray& content = {}) {
    const QString path = folder.filePath(name);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    return path;
  }

  QString MakeTable(const QString& name) {
    const QString path = MakeFile(name);
    Connection connection;
    connection.OpenWith(path);
    connection.Execute(u"CREATE TABLE T (ID INTEGER PRIMARY KEY, Name TEXT COLLATE NOCASE)"_s);
    connection.Execute(u"INSERT INTO T (Name) VALUES ('one')"_s);
    return path;
  }

  QTemporaryDir folder;
};

// The message of the DatabaseError that `action` throws.
template <class Action>
std::string FailureOf(Action&& action) {
  try {
    action();
  } catch (const DatabaseError& error) {
    return error.what();
  }
  return "no failure";
}

std::string OpenFailure(const QString& path) {
  return FailureOf([&] { Connection().OpenWith(path); });
}

TEST_F(ConnectionTest, OpeningNeverMakesAFileAndNamesWhatIsWrong) {
  const QString missing = folder.filePath(u"missing.mdb"_s);
  EXPECT_EQ(OpenFailure(missing), missing.toStdString() + ": there is no such file");
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList());
  EXPECT_EQ(OpenFailure(folder.path()), folder.path().toStdString() + ": it is a folder, not a file");
  EXPECT_EQ(OpenFailure({}), ": no file is named");
  const QString text = MakeFile(u"letter.mdb"_s, QByteArray(5000, 'x'));
  EXPECT_EQ(OpenFailure(text), text.toStdString() + ": the file is not a database");
  QFile file(text);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), QByteArray(5000, 'x'));
}

TEST_F(ConnectionTest, OddFileNamesAreOpenedAsTheyAre) {
  for (const QString& name :
       {u"50% full.mdb"_s, u"a?mode=memory&b#c.mdb"_s, u"Prüfstück ±.mdb"_s, u"%41.mdb"_s}) {
    const QString path = MakeTable(name);
    EXPECT_GT(QFileInfo(path).size(), 0) << name.toStdString();
  }
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 4);
}

TEST_F(ConnectionTest, ASecondStatementInOneTextIsRefusedAndTheFirstDoesNotRun) {
  Connection connection;
  connection.OpenWith(MakeTable(u"a.mdb"_s));
  const auto rowCount = [&] {
    QSqlQuery query = connection.Run(u"select"_s, u"SELECT count(*) FROM T"_s);
    connection.NextRow(query);
    return query.value(0).toInt();
  };
  EXPECT_THROW(connection.Execute(u"DELETE * FROM T; SELECT 1"_s), DatabaseError);
  EXPECT_THROW(connection.Execute(u"SELECT 1; DROP TABLE T"_s), DatabaseError);
  EXPECT_THROW(connection.Execute(u"DELETE FROM T garbage"_s), DatabaseError);
  EXPECT_THROW(connection.Execute(u"DELETE FROM T; garbage"_s), DatabaseError);
  EXPECT_EQ(rowCount(), 1);
  EXPECT_EQ(connection.Execute(u"  delete *  from T WHERE Name = 'ONE';\n"_s), 1);
  EXPECT_EQ(rowCount(), 0);
}

TEST_F(ConnectionTest, ALockedFileIsAClearFailureAfterAShortWait) {
  const QString path = MakeTable(u"a.mdb"_s);
  Connection first;
  first.OpenWith(path);
  Connection second;
  second.OpenWith(path);
  first.BeginTransaction();
  QElapsedTimer timer;
  timer.start();
  EXPECT_EQ(FailureOf([&] { second.Execute(u"DELETE FROM T"_s); }),
            path.toStdString() + ": the file is in use by another program");
  EXPECT_LT(timer.elapsed(), 10000);
  first.RollbackTransaction();
  EXPECT_EQ(second.Execute(u"DELETE FROM T"_s), 1);
}

TEST_F(ConnectionTest, AReadOnlyFileIsReadAndNotWritten) {
  const QString path = MakeTable(u"a.mdb"_s);
  ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
  const WithoutPrivileges ordinaryUser(folder.path());
  if (!ordinaryUser.Effective()) GTEST_SKIP() << "permissions do not bind this user";
  Connection connection;
  connection.OpenWith(path);
  EXPECT_NO_THROW(connection.Run(u"select"_s, u"SELECT * FROM T"_s));
  EXPECT_EQ(FailureOf([&] { connection.Execute(u"DELETE FROM T"_s); }),
            path.toStdString() + ": the file is read-only");
}

TEST_F(ConnectionTest, ATransactionIsUndoneUnlessCommitted) {
  const QString path = MakeTable(u"a.mdb"_s);
  Connection connection;
  connection.OpenWith(path);
  {
    Transaction transaction(connection);
    connection.Execute(u"DELETE FROM T"_s);
    EXPECT_THROW(connection.BeginTransaction(), DatabaseError);
  }
  EXPECT_FALSE(connection.InTransaction());
  EXPECT_EQ(connection.Execute(u"DELETE FROM T"_s), 1);
}

TEST_F(ConnectionTest, WithoutAnOdbcDriverOpeningFails) {
  Connection connection;
  connection.Provider = Connection::OdbcProvider;
  EXPECT_THROW(connection.OpenWith(u"DSN=none such"_s), DatabaseError);
  EXPECT_EQ(connection.GetState(), Connection::Closed);
}

}  // namespace
