// The charts on the screen under mouse and keys: graphs, points, marks, stretches, scales.
#include "tests/screens/ChartScreenFixture.h"

#include <QSpinBox>

#include "screens/MarkList.h"

namespace {

class ChartPointsTest : public ChartScreenFixture {};

TEST_F(ChartPointsTest, ZoomsTheSelectedGraph) {
  Open();
  Click(*screen, "Toolbar1_3");
  EXPECT_FALSE(view->IsZoomed()) << "nothing is selected yet";
  QTest::mouseClick(view, Qt::LeftButton, {}, CentreOf(GraphId::R));
  Click(*screen, "Toolbar1_3");
  EXPECT_EQ(TextOf(*screen, "Toolbar1_3").remove(u'&'), u"Zoom Out");
  Click(*screen, "checkFitScale");
  EXPECT_EQ(Page().BlownUpGraph(), int(GraphId::R)) << "another scale keeps the zoom";
  EXPECT_GT(Page().Graph(0).Scale().top(), 0);

  Press(Qt::Key_Return);
  EXPECT_FALSE(view->IsZoomed());
  EXPECT_EQ(TextOf(*screen, "Toolbar1_3").remove(u'&'), u"Zoom In");
  for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Right, Qt::Key_Down}) Press(key);
  EXPECT_EQ(view->Page()->Selected(), GraphId::Text);
  QTest::mouseDClick(view, Qt::LeftButton, {}, CentreOf(GraphId::Histogram));
  EXPECT_EQ(Page().BlownUpGraph(), int(GraphId::Text));
}

TEST_F(ChartPointsTest, ExplainsThePointUnderTheMouse) {
  CData::ViolatingPointLists violations;
  violations[0] = violations[3] = {3};
  data->SetViolatingPoints(violations);
  Open();
  const QLabel& info = Info();
  const auto hover = [&](int number) {
    QTest::mouseMove(view, PlaceOf(GraphId::XBar, number));
    return info.text().split(u'\n');
  };
  const QStringList lines = hover(3);
  ASSERT_EQ(lines.size(), 4);
  EXPECT_EQ(lines[0], u"Average 3: %1"_s.arg(data->XBarOutputString().section(u',', 2, 2).toDouble()));
  EXPECT_EQ(lines[1],
            u"Samples: "_s + data->DelimitedInputString().section(u',', 8, 11).replace(u","_s, u"  "_s));
  EXPECT_TRUE(lines[2].startsWith(u"DETECTION RULE ONE: "));
  EXPECT_TRUE(lines[3].startsWith(u"DETECTION RULE FOUR: "));
  EXPECT_TRUE(info.isVisible() && view->rect().contains(info.geometry()));
  EXPECT_TRUE(hover(4)[0].startsWith(u"Average 4: "));
  QTest::mouseMove(view, CentreOf(GraphId::Text));
  EXPECT_FALSE(info.isVisible());
  QTest::mouseClick(view, Qt::LeftButton, {}, CentreOf(GraphId::R));
  Press(Qt::Key_End);
  EXPECT_TRUE(info.text().startsWith(u"Range 10: "));
}

TEST_F(ChartPointsTest, ListsTheMarksAndLeadsFromOneToTheNext) {
  CData::ViolatingPointLists violations;
  violations[0] = {3};
  violations[3] = {3, 7};
  data->SetViolatingPoints(violations);
  data->SetRangesOutside({5});
  Open();
  ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get()));
  auto& list = Get<MarkList>(*screen, "MarkList");
  QStringList rows;
  for (int row = 0; row < list.model()->rowCount(); ++row)
    rows << list.model()->index(row, 0).data().toString();
  EXPECT_EQ(rows.join(u'|'),
            u"Ranges|look here first|Range 5|Rule 1|beyond a limit|Average 3|"
            u"Rule 4|eight on one side|Average 3|Average 7");

  for (const auto begin : {u"Range 5: ", u"Average 3: ", u"Average 7: ", u"Range 5: "}) {
    QTest::keyClick(screen.get(), Qt::Key_F3);
    EXPECT_TRUE(Info().text().startsWith(begin)) << Info().text().toStdString();
  }
  QTest::keyClick(screen.get(), Qt::Key_F3, Qt::ShiftModifier);
  EXPECT_TRUE(Info().text().startsWith(u"Average 7: "));
  EXPECT_EQ(list.currentIndex().row(), 9);
  Press(Qt::Key_Home);
  Click(*screen, "cmdNextMark");
  EXPECT_TRUE(Info().text().startsWith(u"Average 3: ")) << "the next one from where the keys went";

  const auto click = [&](int row) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                      list.visualRect(list.model()->index(row, 0)).center());
  };
  Click(*screen, "Toolbar1_3");  // the averages alone
  click(2);
  EXPECT_TRUE(Info().isVisible() && Info().text().startsWith(u"Range 5: "));
  EXPECT_EQ(Page().BlownUpGraph(), int(GraphId::R));
  QTest::keyClick(&list, Qt::Key_End);
  EXPECT_TRUE(Info().text().startsWith(u"Average 7: "));
  click(4);
  EXPECT_TRUE(Info().text().startsWith(u"Average 7: ")) << "a heading leads nowhere";

  QTest::keyClick(&list, Qt::Key_End);
  QTest::mouseMove(view, CentreOf(GraphId::R));
  violations[0].clear();
  data->SetViolatingPoints(violations);
  list.Show(StatPage(*data, {}));  // as after a change of the library
  EXPECT_EQ(list.currentIndex().data(), u"Average 7"_s);
  EXPECT_FALSE(Info().isVisible()) << "and nothing moves";

  data->SetViolatingPoints({});
  data->SetRangesOutside({});
  Open();
  QTest::keyClick(screen.get(), Qt::Key_F3);
  EXPECT_FALSE(Info().isVisible());
}

TEST_F(ChartPointsTest, ShowsAStretchThatTheMouseIsDraggedOver) {
  Open();
  QWidget& bar = Get<QWidget>(*screen, "PointsBar");
  const auto shown = [this] {
    const auto [first, last] = view->Page()->ShownPoints();
    return u"%1-%2"_s.arg(first).arg(last);
  };
  const auto offeredByBar = [this] {
    return u"%1-%2"_s.arg(Get<QSpinBox>(*screen, "spinFromPoint").value())
        .arg(Get<QSpinBox>(*screen, "spinToPoint").value());
  };
  Drag(*view, PlaceOf(GraphId::R, 6), PlaceOf(GraphId::R, 3) + QPoint(0, 40));
  EXPECT_TRUE(bar.isVisible());
  EXPECT_EQ(offeredByBar(), u"3-6");
  EXPECT_EQ(shown(), u"1-10");
  Click(*screen, "Toolbar1_4");
  EXPECT_EQ(offered->first, 3) << "to recalculate from";
  EXPECT_EQ(offered->last, 6);
  Click(*screen, "cmdShowPoints");
  EXPECT_EQ(shown(), u"3-6");
  QTest::mouseClick(view, Qt::LeftButton, {}, CentreOf(GraphId::R));
  Press(Qt::Key_Home);
  EXPECT_TRUE(Info().text().startsWith(u"Range 3: "));
  Press(Qt::Key_PageUp);
  EXPECT_TRUE(Info().text().startsWith(u"Range 3: "));
  Click(*screen, "cmdAllPoints");
  EXPECT_EQ(shown(), u"1-10");
  EXPECT_FALSE(bar.isVisible());

  QTest::mouseClick(view, Qt::LeftButton, {}, CentreOf(GraphId::XBar));
  Press(Qt::Key_Home);
  for (int step = 0; step < 2; ++step) {
    QTest::keyClick(view, Qt::Key_PageDown, Qt::ShiftModifier);
    QCoreApplication::processEvents();  // the bar takes its room from the charts
  }
  EXPECT_EQ(offeredByBar(), u"1-3");
  QTest::mouseClick(view, Qt::LeftButton, {}, CentreOf(GraphId::XBar));
  EXPECT_FALSE(bar.isVisible()) << "taken back";

  Trigger("Toolbar1_5_5");
  EXPECT_EQ(offeredByBar(), u"1-10");
  QTest::keyClicks(&Get<QSpinBox>(*screen, "spinFromPoint"), u"8"_s);
  QTest::keyClick(&Get<QSpinBox>(*screen, "spinFromPoint"), Qt::Key_Return);
  EXPECT_EQ(shown(), u"8-10");
  EXPECT_TRUE(screen->isVisible());
}

TEST_F(ChartPointsTest, AMarkBesideTheStretchMovesIt) {
  data->SetRangesOutside({9});
  Open();
  ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get()));
  Drag(*view, PlaceOf(GraphId::R, 2), PlaceOf(GraphId::R, 4));
  Click(*screen, "cmdShowPoints");
  QTest::keyClick(screen.get(), Qt::Key_F3);
  EXPECT_EQ(view->Page()->ShownPoints().first, 8);
  EXPECT_EQ(view->Page()->ShownPoints().last, 10);
  EXPECT_TRUE(Info().text().startsWith(u"Range 9: "));
}

TEST_F(ChartPointsTest, RemembersTheFittedScale) {
  const auto isOffered = [this] { return Get<QWidget>(*screen, "cmdFitScale").isVisible(); };
  Open();
  EXPECT_TRUE(isOffered());
  const double standard = Page().Graph(0).Scale().top();
  Click(*screen, "cmdFitScale");
  EXPECT_FALSE(isOffered());
  const double fitted = Page().Graph(0).Scale().top();
  EXPECT_GT(fitted, standard);
  Open();
  EXPECT_EQ(Page().Graph(0).Scale().top(), fitted);
  Click(*screen, "checkFitScale");
  Open();
  EXPECT_EQ(Page().Graph(0).Scale().top(), standard);

  data->SetXBarUCL(2e7);
  Open();
  EXPECT_TRUE(TextOf(*screen, "lblScale").contains(u"ten million"));
  EXPECT_TRUE(Get<QWidget>(*screen, "lblScale").isVisible());
  EXPECT_FALSE(isOffered() || Get<QWidget>(*screen, "checkFitScale").isEnabled());
}

TEST_F(ChartPointsTest, OpensTheEditorAtTheSamplesOfAPoint) {
  Open();
  Trigger("Toolbar1_4");
  program.boxes.Expect(Answer::Cancel, u"Data has changed");
  QTest::mouseDClick(view, Qt::LeftButton, {}, PlaceOf(GraphId::XBar, 3));
  EXPECT_TRUE(edited.isEmpty()) << "new limits would have been lost";
  program.boxes.Expect(Answer::No);
  QTest::mouseDClick(view, Qt::LeftButton, {}, PlaceOf(GraphId::XBar, 3));
  EXPECT_EQ(edited, QList<int>({9}));
  EXPECT_EQ(view->Page()->PointCount(GraphId::XBar), 11) << "what was saved there";
  EXPECT_FALSE(view->IsZoomed());

  QTest::mouseClick(view, Qt::LeftButton, {}, CentreOf(GraphId::R));
  Press(Qt::Key_End);
  Trigger("Toolbar1_5_6");
  EXPECT_EQ(edited.last(), 41);
  QTest::mouseMove(view, CentreOf(GraphId::Text));
  program.boxes.Expect(u"Choose a point first");
  Trigger("Toolbar1_5_6");
}

TEST_F(ChartPointsTest, LeadsToTheNextDataSetOfTheList) {
  for (const auto& name : {u"Short"_s, u"Bore"_s}) program.Insert(name);
  program.Execute(u"UPDATE StatData SET \"Values\" = '1,2,3,4,5,6,7,8,' WHERE Description = 'Short'"_s);
  ASSERT_TRUE(DataObjectFunctions::InitializeCDataCollection());
  const auto isEnabled = [this](const char* name) { return Get<QWidget>(*screen, name).isEnabled(); };
  Open();
  ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get()));
  EXPECT_FALSE(isEnabled("cmdPrevious"));
  Trigger("Toolbar1_4");
  program.boxes.Expect(Answer::Cancel, u"Data has changed");
  Click(*screen, "cmdNext");
  EXPECT_EQ(TextOf(*screen, "lblDescription"), u"Shaft");
  program.boxes.Expect(Answer::No);
  QTest::keyClick(screen.get(), Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(TextOf(*screen, "lblDescription"), u"Bore");
  EXPECT_EQ(TextOf(*screen, "lblNews"), u"Short was skipped: it has fewer than 8 points.");
  EXPECT_FALSE(isEnabled("cmdNext"));
  EXPECT_EQ(program.screen.calls.last(), u"SelectListRow %1"_s.arg(program.state.gCurrentDataID));
  Click(*screen, "Toolbar1_4");
  Click(*screen, "Toolbar1_2");
  EXPECT_NE(program.Rows(u"SELECT XBarUCL FROM StatData WHERE Description = 'Bore'"_s)[0][0].toDouble(),
            StoredLimit());
  QTest::keyClick(screen.get(), Qt::Key_PageUp, Qt::ControlModifier);
  EXPECT_EQ(TextOf(*screen, "lblDescription"), u"Shaft");
}

}  // namespace
