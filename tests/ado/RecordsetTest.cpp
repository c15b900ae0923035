// Positions, and what an update may and may not overwrite.
#include "platform/ado/Recordset.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

class RecordsetTest : public testing::Test {
 protected:
  void SetUp() override {
    const QString path = folder.filePath(u"a.mdb"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    connection.OpenWith(path);
    other.OpenWith(path);
    connection.Execute(
        u"CREATE TABLE T (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT COLLATE NOCASE, \"Values\" DOUBLE, "
        u"Deleted INTEGER NOT NULL DEFAULT 0)"_s);
    connection.Execute(u"INSERT INTO T (Name) VALUES ('one'), ('two'), ('three')"_s);
    all.Open(u"SELECT * FROM T"_s, connection);
  }

  QString Names() {
    Recordset rows;
    rows.Open(u"SELECT * FROM T ORDER BY ID"_s, other);
    QStringList names;
    for (; !rows.EndOfFile(); rows.MoveNext()) names << rows.Field(u"Name"_s).toString();
    return names.join(u","_s);
  }

  QTemporaryDir folder;
  Connection connection, other;
  Recordset all;
};

TEST_F(RecordsetTest, PositionsAtTheEndsAndWithoutRows) {
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

TEST_F(RecordsetTest, ColumnsAreFoundWithoutRegardToCaseAndNullIsNotEmpty) {
  EXPECT_EQ(all.Field(u"nAME"_s), u"one"_s);
  EXPECT_TRUE(all.Field(u"VALUES"_s).isNull());
  EXPECT_THROW(all.Field(u"Nam"_s), DatabaseError);
}

TEST_F(RecordsetTest, ANewRowGetsAnIdThatNoDeletedRowHad) {
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

TEST_F(RecordsetTest, MovingAwayWritesAndClosingDrops) {
  all.SetField(u"Name"_s, u"first"_s);
  all.MoveNext();
  EXPECT_EQ(Names(), u"first,two,three"_s);
  all.SetField(u"Name"_s, u"second"_s);
  all.Close();
  EXPECT_EQ(Names(), u"first,two,three"_s);
}

TEST_F(RecordsetTest, AChangeByAnotherProgramIsNotOverwritten) {
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

TEST_F(RecordsetTest, RequeryKeepsThePositionAsFarAsThereAreRows) {
  all.MoveLast();
  other.Execute(u"DELETE FROM T WHERE ID = 1"_s);
  all.Requery();
  EXPECT_EQ(all.AbsolutePosition(), 2);
  EXPECT_EQ(all.Field(u"Name"_s), u"three"_s);
  other.Execute(u"DELETE FROM T"_s);
  all.Requery();
  EXPECT_EQ(all.AbsolutePosition(), -1);
}

TEST_F(RecordsetTest, OnlyAPlainSelectionOfOneTableCanBeChanged) {
  Recordset rows;
  for (const QString& join : {u"SELECT a.* FROM T a, T b WHERE a.ID = b.ID"_s, u"SELECT * FROM T, T b"_s}) {
    rows.Open(join, connection);
    EXPECT_THROW(rows.AddNew(), DatabaseError);
    EXPECT_THROW(rows.SetField(u"Name"_s, u"x"_s), DatabaseError);
    rows.Close();
  }
  rows.Open(u"select * from [T] where ID=2"_s, connection);
  rows.SetField(u"Name"_s, u"x"_s);
  rows.Update();
  EXPECT_EQ(Names(), u"one,x,three"_s);
}

}  // namespace
