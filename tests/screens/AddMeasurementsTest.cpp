// Adding measurements with clicks and keys: limits that stay, the count and the verdict at once. The protocol
// of each walk is approved.
#include "screens/AddMeasurements.h"

#include "core/DataObjectFunctions.h"
#include "tests/support/Walk.h"

namespace {

class AddMeasurementsTest : public Walk {
 protected:
  AddMeasurementsTest() {
    program.state.gCurrentDataID = program.Insert(u"BORE"_s);
    // A range limit of 0 is why the editor cannot keep them.
    program.Execute(
        u"UPDATE StatData SET XBarUCL = 11, XBarLCL = 9, XBarMean = 10, RBarUCL = 2, RBarMean = 1"_s);
    Open();
  }
  QWidget& Form() const override { return *window; }

  void Open() {
    EXPECT_TRUE(DataObjectFunctions::InitializeCDataCollection());
    data = program.state.gDataCollection.at(0);
    window = std::make_unique<AddMeasurements>();
    window->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    protocol.Begin(u"Open"_s, window.get());
  }
  void EnterValues(const QString& text) {
    auto& box = Get<QPlainTextEdit>(*window, "txtNewValues");
    for (const QString& line : text.split(u'\n')) {
      QTest::keyClicks(&box, line);
      QTest::keyClick(&box, Qt::Key_Return);
    }
    Step(text, [this] { Fire(*window, "NotesTimer"); });
  }
  void Press(const QKeyCombination& key, Answers answers = {}) { PressOn(*window, key, answers); }
  void Clear() { Get<QPlainTextEdit>(*window, "txtNewValues").clear(); }
  CDataPtr data;
  std::unique_ptr<AddMeasurements> window;
};

TEST_F(AddMeasurementsTest, AddsBehindWithTheLimitsKept) {
  protocol.Tell(u"as it stands"_s);
  EnterValues(u"14\n14.5\n13.5\n14\n13\n13\n13\n13"_s);  // nothing is stored yet
  Press(Qt::CTRL | Qt::Key_Return);
  EXPECT_FALSE(data->IsInControl()) << "the program's data set is the one that changed";
  Press(Qt::Key_Escape);  // and nothing is asked
}

TEST_F(AddMeasurementsTest, LimitsThatTheRowDoesNotKeepAreForetoldAnewAndKept) {
  program.Execute(u"UPDATE StatData SET XBarUCL = 0, XBarLCL = 0, XBarMean = 0, RBarUCL = 0, RBarMean = 0"_s);
  Open();
  protocol.Tell(u"as it stands"_s);
  EnterValues(u"5\n17\n5\n18"_s);
  Choose("cmdAdd");
  EnterValues(u"9.5\n10\n10.5\n10\n"_s.repeated(10));
  Choose("cmdAdd");
}

TEST_F(AddMeasurementsTest, OnlyWhatIsClearIsAdded) {
  EnterValues(u"105"_s);  // ten times its neighbours, those in the library too
  Clear();
  EnterValues(u"10.1\nabc\n10,25"_s);  // what cannot be added is not asked about
  Choose("cmdAdd");
  Clear();
  EnterValues(u"10.1\n10 mm"_s);
  Choose("cmdAdd");
  Clear();
  EnterValues(u"10,25"_s);
  Choose("cmdAdd", {Answer::Cancel});
  Choose("cmdAdd", {Answer::Yes});
  EnterValues(u"10,025"_s);
  Choose("cmdAdd", {Answer::Cancel});
  Clear();
  EnterValues({});  // what was added before is no news any more
}

TEST_F(AddMeasurementsTest, WhatOthersAddedMeanwhileStays) {
  program.Execute(u"UPDATE StatData SET \"Values\" = \"Values\" || '9.75'"_s);
  EXPECT_TRUE(DataObjectFunctions::InitializeCDataCollection());
  Step(u"added elsewhere"_s, [this] { window->LibraryChanged(); });
  EnterValues(u"10.25"_s);
  Choose("cmdAdd");
  EnterValues(u"10.5"_s);
  program.state.gDataCollection.clear();
  Step(u"deleted elsewhere"_s, [this] { window->LibraryChanged(); });  // what was typed stays
}

TEST_F(AddMeasurementsTest, ClosingAsksWhereSomethingWouldBeLost) {
  EnterValues(u"10 mm"_s);
  for (const Answer answer : {Answer::Cancel, Answer::Yes})
    Press(Qt::Key_Escape, {answer});  // it is not added
  Clear();
  EnterValues(u"10.25"_s);
  Choose("cmdClose", {Answer::Yes});
}

}  // namespace
