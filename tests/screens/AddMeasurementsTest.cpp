// Adding measurements with clicks and keys: limits that stay, the count and the verdict at once. The protocol
// of each walk is approved.
#include "screens/AddMeasurements.h"

#include "core/DataObjectFunctions.h"
#include "tests/support/Protocol.h"

namespace {

class AddMeasurementsTest : public testing::Test {
 protected:
  AddMeasurementsTest() {
    program.state.gCurrentDataID = program.Insert(u"BORE"_s);
    // A range limit of 0 is why the editor cannot keep them.
    program.Execute(
        u"UPDATE StatData SET XBarUCL = 11, XBarLCL = 9, XBarMean = 10, RBarUCL = 2, RBarMean = 1"_s);
    Open();
  }
  void TearDown() override { protocol.Expect(); }

  void Open() {
    EXPECT_TRUE(DataObjectFunctions::InitializeCDataCollection());
    data = program.state.gDataCollection.at(0);
    window = std::make_unique<AddMeasurements>();
    window->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    protocol.Begin(u"Open"_s, window.get());
  }
  void Step(const QString& what, const std::function<void()>& act,
            std::initializer_list<Answer> answers = {}) {
    for (const Answer answer : answers) program.boxes.Expect(answer);
    act();
    protocol.Step(what);
  }
  void Enter(const QString& text) {
    auto& box = Get<QPlainTextEdit>(*window, "txtNewValues");
    for (const QString& line : text.split(u'\n')) {
      QTest::keyClicks(&box, line);
      QTest::keyClick(&box, Qt::Key_Return);
    }
    Step(text, [this] { Fire(*window, "NotesTimer"); });
  }
  void Clear() { Get<QPlainTextEdit>(*window, "txtNewValues").clear(); }
  void Press(const QKeyCombination& key, std::initializer_list<Answer> answers = {}) {
    Step(
        QKeySequence(key).toString(),
        [&] { QTest::keyClick(window.get(), key.key(), key.keyboardModifiers()); }, answers);
  }
  void Choose(const char* name, std::initializer_list<Answer> answers = {}) {
    Step(
        QLatin1StringView(name), [&] { Click(*window, name); }, answers);
  }

  TestProgram program;
  CDataPtr data;
  std::unique_ptr<AddMeasurements> window;
  Protocol protocol{program, u"StatData"_s};
};

TEST_F(AddMeasurementsTest, AddsBehindWithTheLimitsKept) {
  protocol.Tell(u"as it stands"_s);
  Enter(u"14\n14.5\n13.5\n14\n13\n13\n13\n13"_s);  // nothing is stored yet
  Press(Qt::CTRL | Qt::Key_Return);
  EXPECT_FALSE(data->IsInControl()) << "the program's data set is the one that changed";
  Press(Qt::Key_Escape);  // and nothing is asked
}

TEST_F(AddMeasurementsTest, LimitsThatTheRowDoesNotKeepAreForetoldAnewAndKept) {
  program.Execute(u"UPDATE StatData SET XBarUCL = 0, XBarLCL = 0, XBarMean = 0, RBarUCL = 0, RBarMean = 0"_s);
  Open();
  protocol.Tell(u"as it stands"_s);
  Enter(u"5\n17\n5\n18"_s);
  Choose("cmdAdd");
  Enter(u"9.5\n10\n10.5\n10\n"_s.repeated(10));
  Choose("cmdAdd");
}

TEST_F(AddMeasurementsTest, OnlyWhatIsClearIsAdded) {
  Enter(u"105"_s);  // ten times its neighbours, those in the library too
  Clear();
  Enter(u"10.1\nabc"_s);
  Choose("cmdAdd");
  Clear();
  Enter(u"10,25"_s);
  Choose("cmdAdd", {Answer::Cancel});
  Choose("cmdAdd", {Answer::Yes});
  Enter(u"10,025"_s);
  Choose("cmdAdd", {Answer::Cancel});
}

TEST_F(AddMeasurementsTest, WhatOthersAddedMeanwhileStays) {
  program.Execute(u"UPDATE StatData SET \"Values\" = \"Values\" || '9.75'"_s);
  EXPECT_TRUE(DataObjectFunctions::InitializeCDataCollection());
  Step(u"added elsewhere"_s, [this] { window->LibraryChanged(); });
  Enter(u"10.25"_s);
  Choose("cmdAdd");
  Enter(u"10.5"_s);
  program.state.gDataCollection.clear();
  Step(u"deleted elsewhere"_s, [this] { window->LibraryChanged(); });  // what was typed stays
}

TEST_F(AddMeasurementsTest, ClosingAsksWhereSomethingWouldBeLost) {
  Enter(u"10.25"_s);
  Press(Qt::Key_Escape, {Answer::Cancel});
  Choose("cmdClose", {Answer::Yes});
}

}  // namespace
