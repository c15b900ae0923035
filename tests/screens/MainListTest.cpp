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
};

TEST_F(MainListTest, FindsAnywhereInADescription) {
  StartLoaded({u"Bore 12 left"_s, u"Shaft"_s, u"BORE 12 right"_s, u"Bore 3"_s});
  ClickRow(1);
  Press(Qt::CTRL | Qt::Key_F);
  auto& box = Get(*main, "txtFind");
  const auto type = [&](const QString& words) { Step(words, [&] { QTest::keyClicks(&box, words); }); };
  type(u"ore right"_s);  // what is not shown is not current
  Press(Qt::Key_Return);
  Enter("txtFind", u"12"_s);  // the current one fits still
  Press(Qt::Key_Up);
  type(u"x"_s);  // nothing can be done at once, not at the clock's next tick
  EXPECT_TRUE(List().accessibleDescription().contains(u"Escape shows all"));
  Press(Qt::Key_Delete);
  PressOn(List(), Qt::Key_Delete);
  PressOn(box, Qt::Key_Escape);  // as before nothing was found
}

TEST_F(MainListTest, SortsByEachColumnAndBackToTheLibrarysOrder) {
  for (const QString& name : {u"Hole 10"_s, u"hole 9"_s, u"Axle"_s, u"Empty"_s}) program.Insert(name);
  Spoil(u"hole 9"_s);
  Spoil(u"Axle"_s, 10);
  program.Execute(u"UPDATE StatData SET \"Values\" = '1,' WHERE Description = 'Empty'"_s);
  program.Execute(u"UPDATE StatData SET LastModified = '2023-01-01 00:00:00' WHERE Description = 'Axle'"_s);
  StartLoaded();
  protocol.Tell(u"as it stands"_s);  // there is no Cpk without a point
  ClickRow(2);
  for (const char* column : {"mnuSort_0", "mnuSort_1", "mnuSort_3", "mnuSort_4", "mnuSort_5"})
    for (int time = 0; time < 2; ++time) Trigger(column);
  QHeaderView& header = *List().header();
  const QPoint caption(header.sectionPosition(1) + 20, header.height() / 2);
  for (int time = 0; time < 3; ++time)
    Step(u"the caption"_s, [&] { QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, caption); });
  Trigger("mnuSort_1");
  main->EnableLoadTimer();  // as when another library is attached
  Tick("InitTimer");
}

TEST_F(MainListTest, TheListFollowsTheLibrary) {
  StartLoaded({u"One"_s, u"Two"_s, u"Three"_s});
  ClickRow(0);
  Tick("WatchTimer");
  Spoil(u"One"_s);
  Tick("WatchTimer");
  program.Execute(u"DELETE FROM StatData WHERE Description = 'Two'"_s);
  program.Insert(u"NEW"_s);
  Elsewhere(u"UPDATE StatData SET Description = 'DREI' WHERE Description = 'Three'"_s);
  Elsewhere(u"DELETE FROM StatData WHERE Description = 'One'"_s);
  Elsewhere(u"DELETE FROM StatData"_s);  // there may be something to restore
  EXPECT_TRUE(List().accessibleDescription().contains(u"Stat Data, Add"));
  program.Insert(u"LAST"_s);
  Tick("WatchTimer");
}

TEST_F(MainListTest, KeepsFilterSortingSelectionAndPlaceWhileOthersWork) {
  for (int i = 0; i < 80; ++i) {
    const QString name = u"D%1"_s.arg(i, 2, 10, QChar(u'0'));
    program.Insert(name);
    if (i >= 10 && i < 70) Spoil(name);
  }
  StartLoaded();
  Click(*main, "checkOutOfControl");
  for (int time = 0; time < 2; ++time) Action("mnuSort_1").trigger();
  EXPECT_EQ(Rows().first() + Rows().last(), u"D69D10");
  ClickRow(2);
  List().verticalScrollBar()->setValue(List().verticalScrollBar()->maximum() / 2);
  const auto place = [this] { return std::pair(TopRow(), List().visualRect(List().indexAt({0, 0})).top()); };
  const auto before = place();
  program.Execute(u"UPDATE StatData SET \"Values\" = '%1' WHERE Description IN ('D67', 'D68')"_s.arg(
      TestProgram::NewDataSet({})->DelimitedInputString()));
  program.Execute(u"DELETE FROM StatData WHERE Description = 'D66'"_s);
  Spoil(u"D75"_s);
  Fire(*main, "WatchTimer");
  EXPECT_EQ(Rows().mid(0, 4).join(u' '), u"D75 D69 D67 D65")
      << "the current one stays, though it fits no longer";
  EXPECT_EQ(Current(), u"D67");
  EXPECT_EQ(place(), before);
  QTest::keyClick(main.get(), Qt::Key_F5);
  EXPECT_EQ(Rows().size(), 59);
  EXPECT_EQ(Current(), u"D67");

  main->SelectListRow(program.state.gDataCollection[1]->ID());  // as the chart screen goes on to it
  EXPECT_EQ(Current(), u"D01") << "it is shown, whatever the filter";
  QTest::keyClick(&List(), Qt::Key_Escape);
  EXPECT_EQ(Rows().size(), 79);
  EXPECT_FALSE(Get<QCheckBox>(*main, "checkOutOfControl").isChecked());

  ClickRow(70);
  Action("mnuSort_1").trigger();  // the other way round
  const auto isInSight = [this] {
    return List().viewport()->rect().contains(List().visualRect(List().currentIndex()).topLeft());
  };
  EXPECT_TRUE(isInSight());
  Action("mnuSort_-1").trigger();
  ClickRow(0);
  inEditor = [this] { Add(u"NEW"_s); };
  Action("Toolbar1_2_1").trigger();
  EXPECT_TRUE(Current() == u"NEW" && isInSight());
}

TEST_F(MainListTest, KeysAndMouseWorkAsElsewhere) {
  StartLoaded({u"Bore"_s, u"Shaft <b>2</b>"_s, u"Shim"_s});
  QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, List().visualRect(At(0, 0)).center());
  Step(u"shi"_s, [this] { QTest::keyClicks(&List(), u"shi"_s); });  // from the icon's cell too
  QTest::mouseClick(List().viewport(), Qt::LeftButton, Qt::ControlModifier, PlaceOf(2));
  EXPECT_TRUE(List().selectionModel()->isRowSelected(2)) << "the commands would act on it all the same";
  QTest::keyClick(&List(), Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_TRUE(Get<QMenu>(*main, "MyMenu").isVisible());
  Get<QMenu>(*main, "MyMenu").close();
  Get(*main, "txtFind").setFocus();
  for (int time = 0; time < 2; ++time) QTest::keyClick(main->focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(main->focusWidget(), &List()) << "behind the box and the check box above it";
  EXPECT_TRUE(At(1, 1).data(Qt::ToolTipRole).toString().contains(u"Shaft &lt;b&gt;2"_s));
}

}  // namespace
