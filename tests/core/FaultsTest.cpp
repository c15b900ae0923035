// Every database operation of saving, deleting and attaching fails once: the file then holds the old state or
// the new, the procedure gives its documented result, and the user is told once.
#include <gtest/gtest.h>

#include "core/DataObjectFunctions.h"
#include "core/GlobalFunctions.h"
#include "tests/support/FailEach.h"
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
  // Before each call of action comes prepare; check(result) follows.
  template <class Prepare, class Action, class Check>
  void FailEachAfter(Prepare&& prepare, Action&& action, Check&& check, int mostBoxes = 1) {
    prepare();
    FailEach(action, [&](bool result, const QString& failed) {
      EXPECT_EQ(boxes.texts.isEmpty(), result) << boxes.texts.join(u'|').toStdString();
      EXPECT_LE(boxes.texts.size(), mostBoxes) << boxes.texts.join(u'|').toStdString();
      EXPECT_TRUE(result || !failed.isEmpty());
      check(result);
      EXPECT_FALSE(program.state.gConnection->InTransaction());
      boxes.texts.clear();
      prepare();
    });
  }

  TestProgram program;
  NotedBoxes boxes;
};

TEST_F(FaultsTest, SavingANewDataSet) {
  CDataPtr data;
  FailEachAfter(
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
  const auto prepare = [&] {
    program.Execute(u"DELETE FROM Units"_s);
    program.Execute(u"INSERT INTO Units (ID, Name) VALUES (1, 'MM')"_s);
  };
  FailEachAfter(
      prepare, [] { return QCGlobalFunctions::MarkRecordAsDeletedByID(u"Units"_s, 1); },
      [&](bool deleted) {
        EXPECT_EQ(program.Rows(u"SELECT Deleted FROM Units"_s).at(0)[0].toInt(), deleted);
      });
  FailEachAfter(
      prepare, [] { return QCGlobalFunctions::DeleteRecordByID(u"Units"_s, 1); },
      [&](bool deleted) { EXPECT_EQ(program.Rows(u"SELECT ID FROM Units"_s).size(), deleted ? 0U : 1U); });
}

TEST_F(FaultsTest, Attaching) {
  FailEachAfter(
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
