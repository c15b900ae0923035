// Every database operation of every procedure fails once: the file then holds the old state or the new, the
// procedure gives its documented result, and the user sees one message.
#include <gtest/gtest.h>

#include <QFile>

#include "core/DataObjectFunctions.h"
#include "core/GlobalFunctions.h"
#include "tests/support/TestProgram.h"
#include "tests/support/WithoutPrivileges.h"

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
  void FailEach(Prepare&& prepare, Action&& action, Check&& check) {
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
      SCOPED_TRACE(u"operation %1 (%2) of %3, result %4"_s.arg(failing)
                       .arg(failed)
                       .arg(operations)
                       .arg(result)
                       .toStdString());
      EXPECT_EQ(boxes.texts.size(), result ? 0 : 1) << boxes.texts.join(u'|').toStdString();
      EXPECT_TRUE(result || !failed.isEmpty());
      check(result);
      EXPECT_FALSE(program.state.gConnection->InTransaction());
    }
  }

  TestProgram program;
  NotedBoxes boxes;
};

TEST_F(FaultsTest, SavingAnExistingDataSet) {
  program.Insert(u"A"_s);
  const CDataPtr data = TestProgram::NewDataSet(u"A"_s);
  data->SetID(1);
  data->SetDelimitedInputString(u"new"_s);
  FailEach([&] { program.Execute(u"UPDATE StatData SET \"Values\" = 'old', LastModified = 'old'"_s); },
           [&] { return SaveDataObjectToDatabase(data); },
           [&](bool saved) {
             const QVariantList row = program.Rows(u"SELECT \"Values\", LastModified FROM StatData"_s).at(0);
             EXPECT_EQ(row[0], saved ? u"new"_s : u"old"_s);
             EXPECT_EQ(row[1] == u"old"_s, !saved);
           });
}

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

TEST_F(FaultsTest, Loading) {
  program.Insert(u"A"_s);
  FailEach([] {}, [] { return InitializeCDataCollection(); },
           [&](bool loaded) { EXPECT_EQ(program.state.gDataCollection.size(), loaded ? 1U : 0U); });
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
  QString failed = u"first"_s;
  for (int failing = 1; !failed.isEmpty(); ++failing) {
    ASSERT_LT(failing, 50);
    program.state.gSetup.DatabaseName = u"before"_s;
    program.state.gDatabaseOpen = true;
    boxes.texts.clear();
    failed.clear();
    int operations = 0;
    Connection::FaultHook = [&](const QString& operation) {
      if (++operations != failing) return;
      failed = operation;
      throw DatabaseError(u"planned"_s);
    };
    GlobalFunctions::AttachDatabase(program.LibraryPath());
    Connection::FaultHook = nullptr;
    const bool attached = program.state.gSetup.DatabaseName != u"before"_s;
    EXPECT_EQ(attached, failed.isEmpty()) << failing;
    EXPECT_EQ(boxes.texts.isEmpty(), attached) << failing;
    // Refused before anything was closed, or no database any more, and the panel says so.
    EXPECT_TRUE(program.state.gDatabaseOpen || program.screen.panel == u"Current Database: <none>"_s);
    EXPECT_EQ(program.state.gDatabaseOpen, program.state.gConnection->GetState() == Connection::Open);
  }
}

TEST_F(FaultsTest, AFileThatHasBecomeReadOnlyOrLocked) {
  const qint32 id = program.Insert(u"A"_s);
  const CDataPtr data = TestProgram::NewDataSet(u"A"_s);
  data->SetID(id);
  {
    Connection other;
    other.OpenWith(program.LibraryPath());
    other.BeginTransaction();
    EXPECT_FALSE(SaveDataObjectToDatabase(data));
    EXPECT_TRUE(boxes.texts.takeFirst().endsWith(u"StatData.mdb: the file is in use by another program"_s));
  }
  ASSERT_TRUE(
      QFile::setPermissions(program.LibraryPath(), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
  const WithoutPrivileges ordinaryUser(program.folder.path());
  if (!ordinaryUser.Effective()) GTEST_SKIP() << "permissions do not bind this user";
  GlobalFunctions::AttachDatabase(program.LibraryPath());
  EXPECT_TRUE(InitializeCDataCollection());
  EXPECT_FALSE(SaveDataObjectToDatabase(data));
  EXPECT_FALSE(QCGlobalFunctions::DeleteRecordByID(u"StatData"_s, id));
  ASSERT_EQ(boxes.texts.size(), 2);
  for (const QString& text : boxes.texts)
    EXPECT_TRUE(text.endsWith(u"StatData.mdb: the file is read-only"_s));
}

}  // namespace
