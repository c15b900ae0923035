// Every database operation of saving, deleting and attaching fails once: the file then holds the old state or
// the new, the procedure gives its documented result, and the user is told once.
#include <gtest/gtest.h>

#include "core/DataObjectFunctions.h"
#include "core/GlobalFunctions.h"
#include "tests/support/TestProgram.h"

using namespace Qt::StringLiterals;
using namespace DataObjectFunctions;

namespace {

class NotedBoxes : public MessageBox::Presenter {
 public:
  NotedBoxes() : previous_(MessageBox::Install(this)) {}
  ~NotedBoxes() override { MessageBox::Install(previous_); }
  MessageBox::Answer Show(const MessageBox::Request& request) override {
    texts << request.text;
    return MessageBox::Answer::Ok;
  }
  QStringList texts;

 private:
  MessageBox::Presenter* previous_;
};

class FaultsTest : public testing::Test {
 protected:
  // Runs prepare, and action with the nth operation failing; check(result, what failed) follows. From the
  // first operation on until action gets by without meeting the failure.
  template <class Prepare, class Action, class Check>
  void FailEach(Prepare&& prepare, Action&& action, Check&& check, int mostBoxes = 1) {
    QString failed = u"first"_s;
    for (int failing = 1; !failed.isEmpty(); ++failing) {
      ASSERT_LT(failing, 50);
      prepare();
      boxes.texts.clear();
      failed.clear();
      int operations = 0;
      Connection::FaultHook = [&](const QString& operation) {
        if (++operations != failing) return;
        failed = operation;
        throw DatabaseError(u"planned"_s);
      };
      const bool result = action();
      Connection::FaultHook = nullptr;
      SCOPED_TRACE(u"operation %1 (%2), result %3"_s.arg(failing).arg(failed).arg(result).toStdString());
      EXPECT_EQ(boxes.texts.isEmpty(), result) << boxes.texts.join(u'|').toStdString();
      EXPECT_LE(boxes.texts.size(), mostBoxes) << boxes.texts.join(u'|').toStdString();
      EXPECT_TRUE(result || !failed.isEmpty());
      check(result);
      EXPECT_FALSE(program.state.gConnection->InTransaction());
    }
  }

  TestProgram program;
  NotedBoxes boxes;
};

TEST_F(FaultsTest, SavingANewDataSet) {
  CDataPtr data;
  FailEach(
      [&] {
        program.Execute(u"DELETE FROM StatData"_s);
        DeleteAllDataObjects();
        data = TestProgram::NewDataSet(u"A"_s);
      },
      [&] { return SaveDataObjectToDatabase(data); },
      [&](bool saved) {
        EXPECT_EQ(program.Rows(u"SELECT ID FROM StatData"_s).size(), saved ? 1U : 0U);
        EXPECT_EQ(program.state.gDataCollection.size(), saved ? 1U : 0U);
        EXPECT_EQ(data->ID(), 0);
      });
}

TEST_F(FaultsTest, Deleting) {
  FailEach(
      [&] {
        program.Execute(u"DELETE FROM Units"_s);
        program.Execute(u"INSERT INTO Units (ID, Name) VALUES (1, 'MM')"_s);
      },
      [] { return QCGlobalFunctions::MarkRecordAsDeletedByID(u"Units"_s, 1); },
      [&](bool deleted) {
        EXPECT_EQ(program.Rows(u"SELECT Deleted FROM Units"_s).at(0)[0].toInt(), deleted);
      });
  FailEach(
      [] {}, [] { return QCGlobalFunctions::DeleteRecordByID(u"Units"_s, 1); },
      [&](bool deleted) { EXPECT_EQ(program.Rows(u"SELECT ID FROM Units"_s).size(), deleted ? 0U : 1U); });
}

TEST_F(FaultsTest, Attaching) {
  FailEach(
      [&] {
        program.state.gSetup.DatabaseName = u"before"_s;
        program.state.gDatabaseOpen = true;
      },
      [&] {
        GlobalFunctions::AttachDatabase(program.LibraryPath());
        return program.state.gSetup.DatabaseName != u"before"_s;
      },
      [&](bool) {
        // Refused before anything was closed, or no database any more, and the panel says so.
        EXPECT_TRUE(program.state.gDatabaseOpen || program.screen.panel == u"Current Database: <none>"_s);
        EXPECT_EQ(program.state.gDatabaseOpen, program.state.gConnection->GetState() == Connection::Open);
      },
      2);
}

}  // namespace
