// The charts on the screen under mouse and keys: graphs, points, marks, stretches, scales. The protocol of
// each walk is approved.
#include <QSpinBox>

#include "screens/MarkList.h"
#include "tests/screens/ChartScreenFixture.h"

namespace {

class ChartPointsTest : public ChartScreenFixture {
 protected:
  void OpenInFront() {
    Open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get()));
  }
  void ClickOn(GraphId graph) { ClickAt(u"click on graph %1"_s.arg(int(graph)), CentreOf(graph)); }
  void DoubleClick(QPoint place, Answers answers = {}) {
    Step(
        u"double click"_s, [&] { QTest::mouseDClick(view, Qt::LeftButton, {}, place); }, answers);
  }
  void DragOver(int from, int to) {
    const auto act = [&] { Drag(*view, PlaceOf(GraphId::R, from), PlaceOf(GraphId::R, to) + QPoint(0, 40)); };
    Step(u"drag from %1 to %2"_s.arg(from).arg(to), act);
  }
  void Hover(QPoint place) {
    Step(u"hover"_s, [&] { QTest::mouseMove(view, place); });
  }
};

TEST_F(ChartPointsTest, ZoomsTheSelectedGraph) {
  Open();
  Choose("Toolbar1_3");  // nothing is selected yet
  ClickOn(GraphId::R);
  Choose("Toolbar1_3");
  Choose("checkFitScale");  // another scale keeps the zoom
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Up, Qt::Key_Right, Qt::Key_Down}) Press(key);
  DoubleClick(CentreOf(GraphId::Histogram));
}

TEST_F(ChartPointsTest, ExplainsThePointUnderTheMouse) {
  CData::ViolatingPointLists violations;
  violations[0] = violations[3] = {3};
  data->SetViolatingPoints(violations);
  Open();
  for (const int number : {3, 4}) {
    Hover(PlaceOf(GraphId::XBar, number));
    EXPECT_TRUE(view->rect().contains(Info().geometry()));
  }
  Hover(CentreOf(GraphId::Text));
  ClickOn(GraphId::R);
  Press(Qt::Key_End);
}

TEST_F(ChartPointsTest, ListsTheMarksAndLeadsFromOneToTheNext) {
  CData::ViolatingPointLists violations;
  violations[0] = {3};
  violations[3] = {3, 7};
  data->SetViolatingPoints(violations);
  data->SetRangesOutside({5});
  OpenInFront();
  protocol.Tell(u"as it stands"_s);
  auto& list = Get<MarkList>(*screen, "MarkList");
  for (int time = 0; time < 4; ++time) PressOn(*screen, Qt::Key_F3);
  PressOn(*screen, Qt::SHIFT | Qt::Key_F3);
  Press(Qt::Key_Home);
  Choose("cmdNextMark");  // the next one from where the keys went
  const auto click = [&](int row) {
    const auto place = list.visualRect(list.model()->index(row, 0)).center();
    Step(u"row %1"_s.arg(row), [&] { QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place); });
  };
  Choose("Toolbar1_3");  // the averages alone
  click(2);
  PressOn(list, Qt::Key_End);
  click(4);  // a heading leads nowhere
  PressOn(list, Qt::Key_End);
  Hover(CentreOf(GraphId::R));
  violations[0].clear();
  data->SetViolatingPoints(violations);
  list.Show(StatPage(*data, {}));
  protocol.Step(u"a change of the library"_s);

  data->SetViolatingPoints({});
  data->SetRangesOutside({});
  Open();
  PressOn(*screen, Qt::Key_F3);
}

TEST_F(ChartPointsTest, ShowsAStretchThatTheMouseIsDraggedOver) {
  Open();
  DragOver(6, 3);
  Choose("Toolbar1_4");  // to recalculate from
  Choose("cmdShowPoints");
  ClickOn(GraphId::R);
  for (const Qt::Key key : {Qt::Key_Home, Qt::Key_PageUp}) Press(key);
  Choose("cmdAllPoints");
  ClickOn(GraphId::XBar);
  Press(Qt::Key_Home);
  for (int step = 0; step < 2; ++step) {
    Press(Qt::SHIFT | Qt::Key_PageDown);
    QCoreApplication::processEvents();  // the bar takes its room from the charts
  }
  ClickOn(GraphId::XBar);  // taken back
  Trigger("Toolbar1_5_5");
  auto& from = Get<QSpinBox>(*screen, "spinFromPoint");
  QTest::keyClicks(&from, u"8"_s);
  PressOn(from, Qt::Key_Return);
}

TEST_F(ChartPointsTest, AMarkBesideTheStretchMovesIt) {
  data->SetRangesOutside({9});
  OpenInFront();
  DragOver(2, 4);
  Choose("cmdShowPoints");
  PressOn(*screen, Qt::Key_F3);
}

TEST_F(ChartPointsTest, RemembersTheFittedScale) {
  const auto open = [this] {
    Open();
    protocol.Step(u"scale from %1, %2"_s.arg(Page().Graph(0).Scale().top())
                      .arg(TextOf(*screen, "lblScale") +
                           (Get<QWidget>(*screen, "cmdFitScale").isVisible() ? u", offered"_s : u""_s)));
  };
  open();
  Choose("cmdFitScale");
  open();
  Choose("checkFitScale");
  open();
  data->SetXBarUCL(2e7);
  open();
  EXPECT_FALSE(Get<QWidget>(*screen, "checkFitScale").isEnabled());
}

TEST_F(ChartPointsTest, OpensTheEditorAtTheSamplesOfAPoint) {
  Open();
  Trigger("Toolbar1_4");
  DoubleClick(PlaceOf(GraphId::XBar, 3), {Answer::Cancel});  // new limits would have been lost
  DoubleClick(PlaceOf(GraphId::XBar, 3), {Answer::No});
  ClickOn(GraphId::R);
  Press(Qt::Key_End);
  Trigger("Toolbar1_5_6");
  Hover(CentreOf(GraphId::Text));
  Trigger("Toolbar1_5_6", {Answer::Ok});
}

TEST_F(ChartPointsTest, LeadsToTheNextDataSetOfTheList) {
  for (const auto& name : {u"Short"_s, u"Bore"_s}) program.Insert(name);
  program.Execute(u"UPDATE StatData SET \"Values\" = '1,2,3,4,5,6,7,8,' WHERE Description = 'Short'"_s);
  ASSERT_TRUE(DataObjectFunctions::InitializeCDataCollection());
  OpenInFront();
  protocol.Tell(u"as it stands"_s);
  Trigger("Toolbar1_4");
  Choose("cmdNext", {Answer::Cancel});
  PressOn(*screen, Qt::CTRL | Qt::Key_PageDown, {Answer::No});
  Choose("Toolbar1_4");
  Choose("Toolbar1_2");
  PressOn(*screen, Qt::CTRL | Qt::Key_PageUp);
}

}  // namespace
