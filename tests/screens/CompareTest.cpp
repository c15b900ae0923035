// Two data sets beside each other: from the selection in the main window to the page on paper.
#include <QCheckBox>

#include "screens/CompareChoice.h"
#include "screens/CompareForm.h"
#include "tests/screens/MainScreenFixture.h"

namespace {

class CompareTest : public MainScreenFixture {
 protected:
  void CtrlClick(int row) const {
    QTest::mouseClick(List().viewport(), Qt::LeftButton, Qt::ControlModifier, PlaceOf(row));
  }
  void Press(int key, Qt::KeyboardModifiers with = {}) const {
    QTest::keyClick(&List(), static_cast<Qt::Key>(key), with);
  }
  std::vector<qint32> Selected() const { return List().Selected(); }
};

TEST_F(CompareTest, TheListSelectsTwoAndNoOtherCommandActsOnThem) {
  StartLoaded({u"Bore"_s, u"Shaft"_s, u"Pin"_s, u"Cap"_s});
  Press(Qt::Key_M, Qt::ControlModifier);
  EXPECT_EQ(opened, QStringList{u"1 and 0"_s}) << "asks for the other one";
  CtrlClick(0);
  EXPECT_EQ(Enabled(), u"xxxxxxxx") << "the only one stays selected";
  CtrlClick(2);
  EXPECT_EQ(Selected(), (std::vector<qint32>{1, 3}));
  EXPECT_EQ(Enabled(), u"-x--x---");
  EXPECT_FALSE(Action("mnuAddMeasurements").isEnabled());
  EXPECT_TRUE(Panel().startsWith(u"2 selected"));
  Press(Qt::Key_Delete);
  opened.clear();
  Press(Qt::Key_M, Qt::ControlModifier);
  Press(Qt::Key_Return);
  Action("mnuCompare").trigger();
  EXPECT_EQ(opened, (QStringList{u"1 and 3"_s, u"1 and 3"_s, u"1 and 3"_s}));

  program.Execute(u"UPDATE StatData SET UpperSpecLimit = 13 WHERE ID IN (1, 4)"_s);
  Fire(*main, "WatchTimer");
  EXPECT_EQ(Selected(), (std::vector<qint32>{1, 3})) << "also while others work";
  program.Execute(u"DELETE FROM StatData WHERE ID = 1"_s);
  Fire(*main, "WatchTimer");
  EXPECT_EQ(Enabled(), u"xxxxxxxx") << "one is left";

  Press(Qt::Key_Home);
  Press(Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(Enabled(), u"-x--x---") << "the row with the frame is not selected";
  EXPECT_TRUE(Panel().startsWith(u"1 selected"));
  Press(Qt::Key_Down, Qt::ControlModifier);
  Press(Qt::Key_Space, Qt::ControlModifier);
  EXPECT_EQ(Selected(), (std::vector<qint32>{2, 4}));
  Press(Qt::Key_Up);
  EXPECT_EQ(Selected(), std::vector<qint32>{3});
  Press(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(Selected(), (std::vector<qint32>{3, 4}));
  CtrlClick(0);
  program.boxes.Expect(u"3 data sets are selected"_s);
  Press(Qt::Key_M, Qt::ControlModifier);
  ClickRow(1);
  Drag(*List().viewport(), PlaceOf(0), PlaceOf(2));
  EXPECT_EQ(Selected().size(), 1u) << "a hand that shakes";
  EXPECT_EQ(Enabled(), u"xxxxxxxx");
}

TEST_F(CompareTest, TheOtherOneIsFoundAmongMany) {
  StartLoaded({u"Bore"_s, u"Shaft 1"_s, u"Shaft 2"_s});
  CompareChoice choice(1);
  choice.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&choice));
  auto& list = Get<MainList>(choice, "listOther");
  EXPECT_EQ(list.Rows().Total(), 2) << "not itself";
  QTest::keyClick(&list, Qt::Key_F, Qt::ControlModifier);
  QTest::keyClicks(&Get(choice, "txtFind"), u"2"_s);
  QTest::keyClick(&Get(choice, "txtFind"), Qt::Key_Return);
  EXPECT_EQ(choice.result(), QDialog::Accepted);
  EXPECT_EQ(choice.Chosen(), 3);

  choice.show();
  Type(choice, "txtFind", u"nothing"_s);
  EXPECT_FALSE(Get<QAbstractButton>(choice, "cmdCompare").isEnabled());
  EXPECT_EQ(choice.Chosen(), 0);
  QTest::keyClick(&list, Qt::Key_Escape);
  EXPECT_TRUE(choice.isVisible()) << "shows all again first";
  QTest::keyClick(&list, Qt::Key_Escape);
  EXPECT_FALSE(choice.isVisible());
}

TEST_F(CompareTest, ShowsAndSavesTheirPageAndFollowsTheLibrary) {
  StartLoaded({u"Bore"_s, u"Shaft"_s, u"Pin"_s, u"Short"_s});
  PagePrinting printing;
  CompareForm form(1, 2, printing);
  form.show();
  const auto scale = [&form](int graph) { return form.Page()->Page().Graph(graph).Scale().bottom(); };
  auto& box = Get<QCheckBox>(form, "checkSameScale");
  EXPECT_TRUE(box.isEnabled());
  files.Expect(program.Path(u"page.pdf"_s));
  Get<QAction>(form, "Toolbar1_2_2").trigger();
  EXPECT_TRUE(files.last.folder.endsWith(u"/Bore and Shaft.pdf"));
  EXPECT_GT(QFile(program.Path(u"page.pdf"_s)).size(), 5000);

  program.Execute(u"UPDATE StatData SET \"Values\" = \"Values\" || '90,90,90,90,' WHERE ID = 2"_s);
  Fire(*main, "WatchTimer");
  EXPECT_GT(scale(0), 90) << "the first one's chart shows the second one's scale";
  EXPECT_TRUE(TextOf(form, "lblNews").startsWith(u"updated "));
  Click(form, "checkSameScale");
  EXPECT_LT(scale(0), 20);
  program.Execute(u"UPDATE StatData SET UnitOfMeasurement = 'IN' WHERE ID = 2"_s);
  Fire(*main, "WatchTimer");
  EXPECT_FALSE(box.isEnabled());
  program.Execute(u"DELETE FROM StatData WHERE ID = 1"_s);
  Fire(*main, "WatchTimer");
  EXPECT_TRUE(TextOf(form, "lblNews").contains(u"deleted \"Bore\""));
  QTest::keyClick(&form, Qt::Key_Escape);
  EXPECT_FALSE(form.isVisible());

  program.Execute(u"UPDATE StatData SET \"Values\" = '1,2,3,' WHERE ID = 4"_s);
  Fire(*main, "WatchTimer");
  program.boxes.Expect(u"\"Short\" has fewer than 8 points."_s);
  EXPECT_EQ(CompareForm(3, 4, printing).exec(), QDialog::Rejected);
}

// What the chart screen goes through.
TEST_F(CompareTest, TheListTellsItsOrder) {
  StartLoaded({u"B 1"_s, u"A 1"_s, u"C"_s});
  Action("mnuSort_1").trigger();
  EXPECT_EQ(main->ListedIDs(), (std::vector<qint32>{2, 1, 3}));
  Type(*main, "txtFind", u"1"_s);
  EXPECT_EQ(main->ListedIDs(), (std::vector<qint32>{2, 1}));
}

}  // namespace
