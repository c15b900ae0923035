// Every database operation of a command, and of editing records one by one, fails once.
#include "platform/ado/Recordset.h"
#include "tests/faults/Command.h"
#include "tests/support/FailEach.h"

using namespace Qt::StringLiterals;

namespace {

class FailingCallsTest : public LibraryTest {
 protected:
  // The commands fail with one line and leave the rows. A backup that fails is a warning; the look-up of the
  // ID of a row that is written already has no say.
  void FailEachOf(const QStringList& words, const QString& values) {
    const auto before = DataRows(library);
    const QByteArray bytes = Read(library);
    QStringList operations;
    FailEach([&] { return RunCommand(words); },
             [&](const CommandResult& result, const QString& failed) {
               operations << failed;
               if (result.status == 0) {
                 EXPECT_EQ(result.error.startsWith(u"kestrel: warning: No backup "_s),
                           failed == u"backup"_s || failed == u"open"_s);
                 EXPECT_NE(failed, u"begin"_s);
                 EXPECT_NE(failed, u"commit"_s);
                 EXPECT_EQ(Values(library), values);
                 Write(library, bytes);
               } else {
                 result.ExpectRefusal({u"planned"_s});
                 EXPECT_EQ(DataRows(library), before);
               }
             });
    for (const QString& operation : {u"open"_s, u"check"_s, u"backup"_s, u"begin"_s, u"commit"_s})
      EXPECT_TRUE(operations.contains(operation)) << operation.toStdString();
  }
};

TEST_F(FailingCallsTest, ImportAppendAndStatus) {
  FailEachOf(ImportWords(u"A"_s, "1\n2\n"), u"1,2,"_s);
  ASSERT_EQ(RunCommand(ImportWords(u"A"_s, "1\n2\n")).status, 0);
  FailEachOf(AppendWords(u"A"_s, u"3"_s), u"1,2,3,"_s);
  const QStringList status{u"status"_s, library};
  FailEach([&] { return RunCommand(status); },
           [&](const CommandResult& result, const QString& failed) {
             if (failed.isEmpty())
               EXPECT_EQ(result.status, 0);
             else
               result.ExpectRefusal({u"planned"_s});
           });
}

// A unit is added, another changed by moving off it, and the list read anew: each step writes as a whole or
// not at all, and after a failure the same connection goes on.
TEST_F(FailingCallsTest, EditingRecords) {
  Connection connection;
  connection.OpenWith(library);
  FailEach(
      [&] {
        QString written;
        try {
          Recordset units;
          units.Open(u"SELECT * FROM Units"_s, connection);
          units.AddNew();
          units.SetField(u"Name"_s, u"MM"_s);
          units.Update();
          written = u"MM"_s;
          units.AddNew();
          units.SetField(u"Name"_s, u"KG"_s);
          units.MoveFirst();
          written = u"MM,KG"_s;
          units.SetField(u"Name"_s, u"CM"_s);
          units.MoveNext();
          written = u"CM,KG"_s;
          units.Requery();
          EXPECT_EQ(units.Field(u"Name"_s), u"KG"_s);
          return std::pair(written, true);
        } catch (const DatabaseError& error) {
          EXPECT_STREQ(error.what(), "planned");
          return std::pair(written, false);
        }
      },
      [&](const auto& result, const QString& failed) {
        EXPECT_EQ(result.second, failed.isEmpty());
        QStringList names;
        for (const auto& row : RowsOf(library, u"SELECT Name FROM Units ORDER BY ID"_s))
          names << row[0].toString();
        EXPECT_EQ(names.join(u','), result.first);
        EXPECT_FALSE(connection.InTransaction());
        connection.Execute(u"DELETE * FROM Units"_s);
      });
}

}  // namespace
