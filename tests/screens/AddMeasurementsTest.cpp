// Adding measurements with clicks and keys: limits that stay, the count and the verdict at once.
#include "screens/AddMeasurements.h"

#include "core/DataObjectFunctions.h"
#include "tests/support/TestProgram.h"
#include "tests/support/Widgets.h"

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

  void Open() {
    EXPECT_TRUE(DataObjectFunctions::InitializeCDataCollection());
    data = program.state.gDataCollection.at(0);
    window = std::make_unique<AddMeasurements>();
    window->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
  }

  void Enter(const QString& text) {
    for (const QString& line : text.split(u'\n')) {
      QTest::keyClicks(&box(), line);
      QTest::keyClick(&box(), Qt::Key_Return);
    }
    Fire(*window, "NotesTimer");
  }
  QPlainTextEdit& box() const { return Get<QPlainTextEdit>(*window, "txtNewValues"); }
  QString Note() const { return TextOf(*window, "lblRawDataNote"); }
  QString Verdict() const { return TextOf(*window, "lblVerdict"); }
  QVariant Stored(const QString& column) const {
    return program.Rows(u"SELECT \"%1\" FROM StatData"_s.arg(column)).at(0).at(0);
  }

  TestProgram program;
  CDataPtr data;
  std::unique_ptr<AddMeasurements> window;
};

TEST_F(AddMeasurementsTest, AddsBehindWithTheLimitsKept) {
  EXPECT_EQ(QApplication::focusWidget(), &box());
  const QString before = Stored(u"Values"_s).toString();
  EXPECT_EQ(Verdict(), u"In control"_s);
  Enter(u"14\n14.5\n13.5\n14\n13\n13\n13\n13"_s);
  EXPECT_EQ(Note(), u"8 new values, 48 in all: 12 subgroups of 4."_s);
  EXPECT_EQ(Verdict(), u"With these values: Out of control at point 12: rule 1 beyond a limit"_s);
  EXPECT_EQ(Stored(u"Values"_s), before) << "nothing is stored yet";

  QTest::keyClick(window.get(), Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(Stored(u"Values"_s).toString(), before + u"14,14.5,13.5,14,13,13,13,13,"_s);
  EXPECT_EQ(Stored(u"XBarUCL"_s), 11.0);
  EXPECT_EQ(Stored(u"RBarLCL"_s), 0.0);
  EXPECT_EQ(box().toPlainText(), QString());
  EXPECT_EQ(Note(), u"Added: 8 new values, 48 in all: 12 subgroups of 4."_s);
  EXPECT_TRUE(Verdict().startsWith(u"Out of control at point 12: "_s));
  EXPECT_FALSE(data->IsInControl()) << "the program's data set is the one that changed";
  EXPECT_EQ(program.screen.calls, QStringList{u"UpdateListRow BORE"_s});
  QTest::keyClick(window.get(), Qt::Key_Escape);  // and nothing is asked
  EXPECT_FALSE(window->isVisible());
}

TEST_F(AddMeasurementsTest, LimitsThatTheRowDoesNotKeepAreForetoldAnewAndKept) {
  program.Execute(u"UPDATE StatData SET XBarUCL = 0, XBarLCL = 0, XBarMean = 0, RBarUCL = 0, RBarMean = 0"_s);
  EXPECT_EQ(TextOf(*window, "lblLimits").section(u'\n', 0, 0), u"The control limits stay as they are."_s);
  Open();
  EXPECT_TRUE(TextOf(*window, "lblLimits").startsWith(u"No control limits are kept yet"));
  Enter(u"5\n17\n5\n18"_s);
  const QString foretold = Verdict();
  Click(*window, "cmdAdd");
  EXPECT_EQ(foretold, u"With these values: "_s + Verdict());
  EXPECT_EQ(Verdict(), u"In control"_s);
  EXPECT_GT(Stored(u"XBarUCL"_s).toDouble(), Stored(u"XBarLCL"_s).toDouble());
  EXPECT_TRUE(TextOf(*window, "lblLimits").startsWith(u"The control limits stay"));
  EXPECT_TRUE(Note().endsWith(u", are kept from now on."_s));
  EXPECT_TRUE(TextOf(*window, "lblLimits").contains(u"preliminary: they rest on 11 points"_s));
  Enter(u"9.5\n10\n10.5\n10\n"_s.repeated(10));
  Click(*window, "cmdAdd");
  EXPECT_TRUE(
      TextOf(*window, "lblLimits").contains(u"rest on the first 11 points only, and there are 21 by now"_s));
}

TEST_F(AddMeasurementsTest, OnlyWhatIsClearIsAdded) {
  const QString before = Stored(u"Values"_s).toString();
  Enter(u"105"_s);
  EXPECT_TRUE(Note().contains(u"Line 1 is ten times its neighbours"_s)) << "those in the library too";
  box().clear();
  Enter(u"10.1\nabc"_s);
  EXPECT_TRUE(Note().contains(u"Line 2 is not a number"_s));
  Click(*window, "cmdAdd");
  EXPECT_EQ(Stored(u"Values"_s).toString(), before);
  box().clear();
  Enter(u"10,25"_s);
  program.boxes.Expect(Answer::Cancel, u"Is that one value, 10.25?");
  Click(*window, "cmdAdd");
  EXPECT_EQ(Stored(u"Values"_s).toString(), before);
  program.boxes.Expect(Answer::Yes);
  Click(*window, "cmdAdd");
  EXPECT_EQ(Stored(u"Values"_s).toString(), before + u"10.25,"_s);
  Enter(u"10,025"_s);
  program.boxes.Expect(Answer::Cancel, u"Is 10025 meant? Cancel, and choose the reading with thousands");
  Click(*window, "cmdAdd");
}

TEST_F(AddMeasurementsTest, WhatOthersAddedMeanwhileStays) {
  program.Execute(u"UPDATE StatData SET \"Values\" = \"Values\" || '9.75'"_s);
  EXPECT_TRUE(DataObjectFunctions::InitializeCDataCollection());
  window->LibraryChanged();
  Enter(u"10.25"_s);
  EXPECT_TRUE(Note().startsWith(u"1 new value, 42 in all"_s));
  EXPECT_TRUE(Verdict().startsWith(u"With these values: "_s));
  Click(*window, "cmdAdd");
  EXPECT_TRUE(Stored(u"Values"_s).toString().endsWith(u",9.75,10.25,"_s));
  EXPECT_TRUE(Note().startsWith(u"Added: 1 new value, 42 in all"_s));
  Enter(u"10.5"_s);
  program.state.gDataCollection.clear();
  window->LibraryChanged();
  EXPECT_TRUE(TextOf(*window, "lblLimits").startsWith(u"13:45:59: somebody else deleted"_s));
  EXPECT_FALSE(Get<QPushButton>(*window, "cmdAdd").isEnabled());
  EXPECT_TRUE(box().toPlainText().startsWith(u"10.5"_s)) << "what was typed stays";
}

TEST_F(AddMeasurementsTest, ClosingAsksWhereSomethingWouldBeLost) {
  Enter(u"10.25"_s);
  program.boxes.Expect(Answer::Cancel);
  QTest::keyClick(window.get(), Qt::Key_Escape);
  EXPECT_TRUE(window->isVisible());
  program.boxes.Expect(Answer::Yes);
  Click(*window, "cmdClose");
  EXPECT_FALSE(window->isVisible());
  EXPECT_TRUE(Stored(u"Values"_s).toString().endsWith(u",10.25,"_s));
}

}  // namespace
