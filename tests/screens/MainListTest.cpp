// Finding one of many in the main window's list: the filter, the sorting, the keys, and what stays in its
// place while others work.
#include <QHeaderView>

#include "tests/screens/MainScreenFixture.h"

namespace {

class MainListTest : public MainScreenFixture {
 protected:
  // Out of control by its last subgroup.
  void Spoil(const QString& name, double value = 90) const {
    program.Execute(
        u"UPDATE StatData SET \"Values\" = \"Values\" || '%1,%1,%1,%1,' WHERE Description = '%2'"_s.arg(value)
            .arg(name));
  }
  void Sort(const char* column) const { Action(column).trigger(); }
  QString Counts() const { return TextOf(*main, "lblCounts"); }
  void Find(const QString& words) const {
    QTest::keyClick(main.get(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), words);
  }
  CDataPtr CurrentData() const {
    for (const CDataPtr& data : program.state.gDataCollection)
      if (data->ID() == program.state.gCurrentDataID) return data;
    return std::make_shared<CData>();
  }
};

TEST_F(MainListTest, FindsAnywhereInADescription) {
  StartLoaded({u"Bore 12 left"_s, u"Shaft"_s, u"BORE 12 right"_s, u"Bore 3"_s});
  EXPECT_EQ(Counts(), u"4 ideal");
  ClickRow(1);
  Find(u"ore right"_s);
  EXPECT_EQ(Rows(), QStringList{u"BORE 12 right"_s});
  EXPECT_EQ(Counts(), u"4 ideal (1 of 4 shown)");
  EXPECT_EQ(CurrentData()->Description(), u"BORE 12 right") << "what is not shown is not current";
  auto& box = Get<QLineEdit>(*main, "txtFind");
  QTest::keyClick(&box, Qt::Key_Return);
  EXPECT_EQ(opened, QStringList{u"chart"_s});

  Type(*main, "txtFind", u"12"_s);
  EXPECT_EQ(Current(), u"BORE 12 right") << "it fits still";
  QTest::keyClick(&box, Qt::Key_Up);
  EXPECT_EQ(CurrentData()->Description(), u"Bore 12 left");
  QTest::keyClicks(&box, u"x"_s);
  EXPECT_EQ(Enabled(), u"-x--x---") << "at once, not at the clock's next tick";
  EXPECT_EQ(Summary("SampleQty"), QString());
  EXPECT_TRUE(List().accessibleDescription().contains(u"Escape shows all"));
  QTest::keyClick(&box, Qt::Key_Delete);
  QTest::keyClick(&List(), Qt::Key_Delete);
  QTest::keyClick(&box, Qt::Key_Escape);
  EXPECT_EQ(Rows().size(), 4);
  EXPECT_EQ(CurrentData()->Description(), u"Bore 12 left") << "as before nothing was found";
  EXPECT_EQ(box.text(), QString());
  EXPECT_TRUE(List().hasFocus());
}

TEST_F(MainListTest, SortsByEachColumnAndBackToTheLibrarysOrder) {
  const QStringList names{u"Hole 10"_s, u"hole 9"_s, u"Axle"_s, u"Empty"_s};
  for (const QString& name : names) program.Insert(name);
  Spoil(u"hole 9"_s);
  Spoil(u"Axle"_s, 10);
  program.Execute(u"UPDATE StatData SET \"Values\" = '1,' WHERE Description = 'Empty'"_s);
  program.Execute(u"UPDATE StatData SET LastModified = '2023-01-01 00:00:00' WHERE Description = 'Axle'"_s);
  StartLoaded();
  EXPECT_EQ(Counts(), u"2 ideal, 1 chaos, 1 not evaluated");
  EXPECT_EQ(At(3, 3).data().toString(), QString()) << "there is no Cpk without a point";
  EXPECT_EQ(At(0, 3).data().toString(),
            QString::number(program.state.gDataCollection[0]->CPKValue(), 'f', 2));
  ClickRow(2);
  const auto order = [this] {
    QString letters;
    for (const QString& name : Rows()) letters += name.right(1);
    return letters;
  };
  using Case = std::tuple<const char*, QString, QString>;
  for (const auto& [column, ascending, descending] :
       {Case{"mnuSort_0", u"90ey"_s, u"0e9y"_s}, Case{"mnuSort_1", u"ey90"_s, u"09ye"_s},
        Case{"mnuSort_3", u"90ey"_s, u"e09y"_s}, Case{"mnuSort_4", u"y09e"_s, u"9e0y"_s},
        Case{"mnuSort_5", u"e09y"_s, u"09ye"_s}}) {
    Sort(column);
    EXPECT_EQ(order(), ascending) << column;
    Sort(column);
    EXPECT_EQ(order(), descending) << column;
    EXPECT_EQ(Current(), u"Axle");
  }
  QHeaderView& header = *List().header();
  const QPoint caption(header.sectionPosition(1) + 20, header.height() / 2);
  for (const QString& expected : {u"ey90"_s, u"09ye"_s, u"09ey"_s}) {
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, caption);
    EXPECT_EQ(order(), expected);
  }
  Sort("mnuSort_1");
  main->EnableLoadTimer();  // as when another library is attached
  Tick("InitTimer");
  EXPECT_EQ(order(), u"09ey");
}

TEST_F(MainListTest, TheListFollowsTheLibrary) {
  QStringList names;
  for (int i = 0; i < 60; ++i) names << u"D%1"_s.arg(i, 2, 10, QChar(u'0'));
  StartLoaded(names);
  ClickRow(0);
  QScrollBar& bar = *List().verticalScrollBar();
  bar.setValue(bar.maximum() / 2);
  const int scrolled = bar.value();
  const QString topID = TopRow();
  Tick("WatchTimer");
  EXPECT_EQ(opened, QStringList());

  const QString before = StateOf(0);
  Spoil(u"D00"_s);
  Tick("WatchTimer");
  EXPECT_NE(StateOf(0), before) << "the state";
  EXPECT_EQ(Summary("SampleQty"), u"44");
  program.Execute(u"DELETE FROM StatData WHERE Description = 'D01'"_s);
  program.Insert(u"NEW"_s);
  program.Execute(u"UPDATE StatData SET Description = 'TWO' WHERE Description = 'D02'"_s);
  Tick("WatchTimer");
  QStringList expected = names;
  expected.removeAt(1);
  expected[1] = u"TWO"_s;
  EXPECT_EQ(Rows(), expected << u"NEW"_s);
  EXPECT_EQ(Current(), u"D00");
  EXPECT_EQ(TopRow(), topID);
  EXPECT_NEAR(bar.value(), scrolled, List().visualRect(At(0, 1)).height() + 1);
  EXPECT_EQ(int(program.state.gDataCollection.size()), Rows().size());

  program.Execute(u"DELETE FROM StatData WHERE Description = 'D00'"_s);
  Tick("WatchTimer");
  EXPECT_TRUE(Panel().contains(u"deleted \"D00\""_s));
  EXPECT_NE(program.state.gCurrentDataID, 0);
  program.Execute(u"DELETE FROM StatData"_s);
  Tick("WatchTimer");
  EXPECT_EQ(Enabled(), u"-x--x---");
  EXPECT_TRUE(Action("Toolbar1_2_5").isEnabled()) << "there may be something to restore";
  EXPECT_EQ(Summary("SampleQty"), QString());
  EXPECT_TRUE(List().accessibleDescription().contains(u"Stat Data, Add"));
  program.Insert(u"LAST"_s);
  Tick("WatchTimer");
  EXPECT_EQ(Enabled(), u"xxxxxxxx");
  EXPECT_EQ(Current(), u"LAST");
}

TEST_F(MainListTest, KeepsFilterSortingSelectionAndPlaceWhileOthersWork) {
  QStringList names;
  for (int i = 0; i < 80; ++i) names << u"D%1"_s.arg(i, 2, 10, QChar(u'0'));
  for (const QString& name : names) program.Insert(name);
  for (int i = 10; i < 70; ++i) Spoil(names[i]);
  StartLoaded();
  Click(*main, "checkOutOfControl");
  Sort("mnuSort_1");
  Sort("mnuSort_1");
  EXPECT_EQ(Rows().first() + Rows().last(), u"D69D10");
  ClickRow(2);
  List().verticalScrollBar()->setValue(List().verticalScrollBar()->maximum() / 2);
  const QString before = TopRow();
  const int place = List().visualRect(List().indexAt({0, 0})).top();
  program.Execute(u"UPDATE StatData SET \"Values\" = '%1' WHERE Description IN ('D67', 'D68')"_s.arg(
      TestProgram::NewDataSet({})->DelimitedInputString()));
  program.Execute(u"DELETE FROM StatData WHERE Description = 'D66'"_s);
  Spoil(u"D75"_s);
  Tick("WatchTimer");
  EXPECT_EQ(Rows().mid(0, 4), (QStringList{u"D75"_s, u"D69"_s, u"D67"_s, u"D65"_s}))
      << "the current one stays although it no longer fits";
  EXPECT_EQ(CurrentData()->Description(), u"D67");
  EXPECT_EQ(Current(), u"D67");
  EXPECT_EQ(TopRow(), before);
  EXPECT_EQ(List().visualRect(List().indexAt({0, 0})).top(), place);
  QTest::keyClick(main.get(), Qt::Key_F5);
  EXPECT_EQ(Rows().size(), 59);
  EXPECT_EQ(Current(), u"D67");

  main->SelectListRow(program.state.gDataCollection[1]->ID());  // as the chart screen goes on to it
  EXPECT_EQ(Current(), u"D01") << "it is shown, whatever the filter";
  QTest::keyClick(&List(), Qt::Key_Escape);
  EXPECT_EQ(Rows().size(), 79);
  EXPECT_FALSE(Get<QCheckBox>(*main, "checkOutOfControl").isChecked());
}

TEST_F(MainListTest, KeysAndMouseWorkAsElsewhere) {
  StartLoaded({u"Bore"_s, u"Shaft <b>2</b>"_s, u"Shim"_s});
  QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, List().visualRect(At(0, 0)).center());
  QTest::keyClicks(&List(), u"shi"_s);
  EXPECT_EQ(CurrentData()->Description(), u"Shim") << "from the icon's cell too";
  QTest::mouseClick(List().viewport(), Qt::LeftButton, Qt::ControlModifier, PlaceOf(2));
  EXPECT_TRUE(List().selectionModel()->isRowSelected(2)) << "the commands would act on it all the same";
  QTest::keyClick(&List(), Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_TRUE(Get<QMenu>(*main, "MyMenu").isVisible());
  Get<QMenu>(*main, "MyMenu").close();
  EXPECT_TRUE(At(1, 1).data(Qt::ToolTipRole).toString().contains(u"Shaft &lt;b&gt;2"_s));
}

}  // namespace
