// Every database operation of a command, and of editing records one by one, fails once.
#include "platform/ado/Recordset.h"
#include "tests/faults/Command.h"

using namespace Qt::StringLiterals;

namespace {

class FailingCallsTest : public LibraryTest {
 protected:
  ~FailingCallsTest() override { Connection::FaultHook = nullptr; }

  // Calls action with the nth operation failing, and check with what failed (empty: nothing any more).
  template <class Action, class Check>
  void FailEach(Action&& action, Check&& check) {
    QString failed = u"first"_s;
    for (int failing = 1; !failed.isEmpty(); ++failing) {
      ASSERT_LT(failing, 50);
      failed.clear();
      int operations = 0;
      Connection::FaultHook = [&](const QString& operation) {
        if (++operations != failing) return;
        failed = operation;
        throw DatabaseError(u"planned"_s);
      };
      auto result = action();
      Connection::FaultHook = nullptr;
      SCOPED_TRACE(u"operation %1 (%2)"_s.arg(failing).arg(failed).toStdString());
      check(result, failed);
    }
  }

  // The commands fail with one line and leave the rows. A backup that fails is a warning; the look-up of the
  // ID of a row that is written already has no say.
  void FailEachOf(const QStringList& words, const std::function<void()>& expectWritten) {
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
                 expectWritten();
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

TEST_F(FailingCallsTest, ImportAndAppend) {
  FailEachOf(ImportWords(u"A"_s, "1\n2\n"), [&] { EXPECT_EQ(Values(library), u"1,2,"_s); });
  ASSERT_EQ(RunCommand(ImportWords(u"A"_s, "1\n2\n")).status, 0);
  FailEachOf(AppendWords(u"A"_s, u"3"_s), [&] { EXPECT_EQ(Values(library), u"1,2,3,"_s); });
}

TEST_F(FailingCallsTest, Reading) {
  ASSERT_EQ(RunCommand(ImportWords(u"A"_s, "1\n2\n")).status, 0);
  FailEach(
      [&] {
        return RunCommand({u"status"_s, library});
      },
      [&](const CommandResult& result, const QString& failed) {
        if (failed.isEmpty())
          EXPECT_EQ(result.status, 0);
        else
          result.ExpectRefusal({u"planned"_s});
      });
}

// A unit is added, another changed by moving off it, and the list read anew: each step writes as a whole or
// not at all, and after a failure the same recordset goes on.
TEST_F(FailingCallsTest, EditingRecords) {
  Connection connection;
  connection.OpenWith(library);
  const auto names = [&] {
    QStringList all;
    for (const QVariantList& row : RowsOf(library, u"SELECT Name FROM Units ORDER BY ID"_s))
      all << row[0].toString();
    return all.join(u',');
  };
  FailEach(
      [&] {
        QString reached = u"none"_s;
        try {
          Recordset units;
          units.Open(u"SELECT * FROM Units"_s, connection);
          units.AddNew();
          units.SetField(u"Name"_s, u"MM"_s);
          units.Update();
          reached = u"added"_s;
          units.AddNew();
          units.SetField(u"Name"_s, u"KG"_s);
          units.MoveFirst();
          reached = u"second"_s;
          units.SetField(u"Name"_s, u"CM"_s);
          units.MoveNext();
          reached = u"changed"_s;
          units.Requery();
          EXPECT_EQ(units.Field(u"Name"_s), u"KG"_s);
          reached = u"all"_s;
        } catch (const DatabaseError& error) {
          EXPECT_STREQ(error.what(), "planned");
        }
        return reached;
      },
      [&](const QString& reached, const QString& failed) {
        EXPECT_EQ(reached == u"all"_s, failed.isEmpty());
        const QString expected = reached == u"none"_s     ? QString()
                                 : reached == u"added"_s  ? u"MM"_s
                                 : reached == u"second"_s ? u"MM,KG"_s
                                                          : u"CM,KG"_s;
        EXPECT_EQ(names(), expected);
        EXPECT_FALSE(connection.InTransaction());
        connection.Execute(u"DELETE * FROM Units"_s);
      });
}

}  // namespace
