// Positions, and what an update may and may not overwrite: on a file and on a server.
#include "platform/ado/Recordset.h"

#include <QTemporaryDir>

#include "tests/support/Files.h"
#include "tests/support/Rows.h"
#include "tests/support/TestServer.h"

using namespace Qt::StringLiterals;

namespace {

class RecordsetTest : public testing::TestWithParam<Place> {
 protected:
  void SetUp() override {
    const QString place =
        GetParam() == Place::File ? WriteFile(folder.filePath(u"a.mdb"_s)) : TestServer::NewDatabase();
    if (place.isEmpty()) GTEST_SKIP() << TestServer::missing;
    connection.OpenWith(place);
    other.OpenWith(place);
    connection.Execute(
        u"CREATE TABLE T (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT COLLATE NOCASE, \"Values\", "
        u"Deleted INTEGER NOT NULL DEFAULT 0)"_s);
    connection.Execute(u"INSERT INTO T (Name) VALUES ('one'), ('two'), ('three')"_s);
    all.Open(u"SELECT * FROM T"_s, connection);
  }

  QString Names() {
    QStringList names;
    for (const QVariantList& row : RowsOf(other, u"SELECT Name FROM T ORDER BY ID"_s))
      names << row[0].toString();
    return names.join(u","_s);
  }

  QTemporaryDir folder;
  Connection connection, other;
  Recordset all;
};

ON_BOTH(RecordsetTest);

TEST_P(RecordsetTest, PositionsAtTheEndsAndWithoutRows) {
  EXPECT_EQ(all.AbsolutePosition(), 1);
  all.MovePrevious();
  EXPECT_EQ(all.AbsolutePosition(), -2);
  EXPECT_THROW(all.MovePrevious(), DatabaseError);
  EXPECT_THROW(all.Field(u"Name"_s), DatabaseError);
  all.MoveLast();
  EXPECT_EQ(all.AbsolutePosition(), 3);
  all.MoveNext();
  EXPECT_EQ(all.AbsolutePosition(), -3);
  EXPECT_THROW(all.MoveNext(), DatabaseError);

  Recordset none;
  none.Open(u"SELECT * FROM T WHERE ID = -1"_s, connection);
  EXPECT_TRUE(none.BOF() && none.EndOfFile());
  EXPECT_EQ(none.AbsolutePosition(), -1);
  EXPECT_THROW(none.MoveFirst(), DatabaseError);
  EXPECT_THROW(none.SetField(u"Name"_s, u"x"_s), DatabaseError);
}

TEST_P(RecordsetTest, RowsComeInTheOrderOfTheIds) {
  other.Execute(u"UPDATE T SET Name = 'first' WHERE ID = 1"_s);  // which moves the row behind the others
  all.Requery();
  EXPECT_EQ(all.Field(u"Name"_s), u"first"_s);
}

TEST_P(RecordsetTest, ColumnsAreFoundWithoutRegardToCaseAndNullIsNotEmpty) {
  EXPECT_EQ(all.Field(u"nAME"_s), u"one"_s);
  EXPECT_TRUE(all.Field(u"VALUES"_s).isNull());
  EXPECT_THROW(all.Field(u"Nam"_s), DatabaseError);
}

TEST_P(RecordsetTest, ANewRowGetsAnIdThatNoDeletedRowHad) {
  connection.Execute(u"DELETE * FROM T WHERE ID = 3"_s);
  all.AddNew();
  all.SetField(u"Name"_s, u"four"_s);
  EXPECT_TRUE(all.Field(u"ID"_s).isNull());
  all.Update();
  EXPECT_EQ(all.Field(u"ID"_s).toInt(), 4);
  EXPECT_FALSE(all.Field(u"Deleted"_s).isNull()) << "the default is read back";
  all.AddNew();
  all.CancelUpdate();
  all.Update();
  EXPECT_EQ(Names(), u"one,two,four"_s);
}

TEST_P(RecordsetTest, MovingAwayWritesAndClosingDrops) {
  all.SetField(u"Name"_s, u"first"_s);
  all.MoveNext();
  EXPECT_EQ(Names(), u"first,two,three"_s);
  all.SetField(u"Name"_s, u"second"_s);
  all.Close();
  EXPECT_EQ(Names(), u"first,two,three"_s);
}

TEST_P(RecordsetTest, AChangeByAnotherProgramIsNotOverwritten) {
  other.Execute(u"UPDATE T SET Name = 'ONE' WHERE ID = 1"_s);
  all.SetField(u"Name"_s, u"mine"_s);
  EXPECT_THROW(all.Update(), DatabaseError) << "also where only the case differs";
  all.CancelUpdate();
  EXPECT_EQ(Names(), u"ONE,two,three"_s);
  all.SetField(u"Values"_s, 1.5);
  all.Update();  // another column than the other program's
  EXPECT_EQ(Names(), u"ONE,two,three"_s);
  all.MoveNext();
  other.Execute(u"DELETE FROM T WHERE ID = 2"_s);
  all.SetField(u"Name"_s, u"mine"_s);
  EXPECT_THROW(all.Update(), DatabaseError);
  EXPECT_EQ(Names(), u"ONE,three"_s);
}

TEST_P(RecordsetTest, RequeryKeepsThePositionAsFarAsThereAreRows) {
  all.MoveLast();
  other.Execute(u"DELETE FROM T WHERE ID = 1"_s);
  all.Requery();
  EXPECT_EQ(all.AbsolutePosition(), 2);
  EXPECT_EQ(all.Field(u"Name"_s), u"three"_s);
  other.Execute(u"DELETE FROM T"_s);
  all.Requery();
  EXPECT_EQ(all.AbsolutePosition(), -1);
}

TEST_P(RecordsetTest, OnlyAPlainSelectionOfOneTableCanBeChanged) {
  Recordset rows;
  for (const QString& join : {u"SELECT a.* FROM T a, T b WHERE a.ID = b.ID"_s, u"SELECT * FROM T, T b"_s}) {
    rows.Open(join, connection);
    EXPECT_THROW(rows.AddNew(), DatabaseError);
    EXPECT_THROW(rows.SetField(u"Name"_s, u"x"_s), DatabaseError);
    rows.Close();
  }
  rows.Open(GetParam() == Place::File ? u"select * from [T] where ID=2"_s : u"select * from T where ID=2"_s,
            connection);
  rows.SetField(u"Name"_s, u"x"_s);
  rows.Update();
  EXPECT_EQ(Names(), u"one,x,three"_s);
}

}  // namespace
