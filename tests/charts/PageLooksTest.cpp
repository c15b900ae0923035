// What the control charts look like: every line, mark and text in its colour, its dash and its place.
#include <gtest/gtest.h>

#include "charts/StatPage.h"
#include "tests/charts/PaintedPages.h"

using namespace Qt::StringLiterals;
using namespace PaintedPages;

namespace {

TEST(PageLooks, PointsOnBlueLinesAndMarksAsRedDiamondsWithTheirNumbers) {
  const std::vector<double> averages{10, 12.1, 5.9, 18, 10, -30, 10.2, 50},
      ranges{.1, .2, .3, .2, .1, .2, .3, .2};
  CData data = Sample();
  data.SetRangesOutside({3, 5});
  const Painted painted(data);
  const auto diamonds = painted.device.Where(
      [](const PaintedShape& shape) { return shape.kind == Kind::Polygon && shape.corners.size() == 4; });
  ASSERT_EQ(diamonds.size(), 3u);
  const double radius = diamonds[0].Place().width() / 2;
  const auto expectMark = [&](GraphId graph, double x, double y, const QString& number) {
    const QPointF at = painted.At(graph, x, y), up(0, radius), aside(radius, 0);
    painted.Expect(Kind::Polygon, QList{at - up, at + aside, at + up, at - aside}, {}, false, red);
    const PaintedShape text = painted.Text(number, painted.Plot(graph));
    EXPECT_EQ(text.ink, black);
    EXPECT_LT((text.Place().center() - at).manhattanLength(), 25);
  };
  expectMark(GraphId::XBar, 4, 18, u"1"_s);
  expectMark(GraphId::R, 3, .3, u"3"_s);
  expectMark(GraphId::R, 5, .1, u"5"_s);
  for (const GraphId graph : charts) {
    const std::vector<double>& values = graph == GraphId::XBar ? averages : ranges;
    QPolygonF line;
    std::vector<QPointF> points;
    for (size_t i = 0; i < values.size(); ++i) {
      line << painted.At(graph, double(i) + 1, values[i]);
      const bool isPlain = graph == GraphId::XBar ? i != 3 && i != 5 && i != 7 : i != 2 && i != 4;
      if (isPlain) points.push_back(line.back());
    }
    painted.Expect(Kind::Polyline, line, blue, false, {});
    const auto dots = painted.Of(Kind::Ellipse, painted.Frame(graph));
    ASSERT_EQ(dots.size(), points.size());
    for (size_t i = 0; i < points.size(); ++i) {
      EXPECT_LT((dots[i].Place().center() - points[i]).manhattanLength(), 0.01) << i;
      EXPECT_LT(dots[i].Place().width() / 2, radius);
      EXPECT_TRUE(dots[i].fill == blue && !dots[i].ink.isValid()) << testing::PrintToString(dots[i]);
    }
  }
}

TEST(PageLooks, AnArrowAtTheEdgePointsToAPointOutside) {
  const Painted painted(Sample());
  const QRectF plot = painted.Plot(GraphId::XBar);
  const auto arrows = painted.device.Where(
      [](const PaintedShape& shape) { return shape.kind == Kind::Polygon && shape.corners.size() == 3; });
  ASSERT_EQ(arrows.size(), 2u);
  struct {
    double x, edge, inwards;
    QColor fill;
    QString text;
  } const expected[] = {{6, plot.bottom(), -1, blue, u"#6"_s}, {8, plot.top(), 1, red, u"1 #8"_s}};
  for (size_t i = 0; i < arrows.size(); ++i) {
    const auto& [x, edge, inwards, fill, text] = expected[i];
    const QPolygonF& corners = arrows[i].corners;
    EXPECT_LT((corners[0] - QPointF(painted.At(GraphId::XBar, x, 0).x(), edge)).manhattanLength(), 0.01)
        << text.toStdString();
    for (const int side : {1, 2}) EXPECT_GT((corners[side].y() - edge) * inwards, 4);
    EXPECT_DOUBLE_EQ(corners[1].x() + corners[2].x(), 2 * corners[0].x());
    EXPECT_TRUE(arrows[i].fill == fill && !arrows[i].ink.isValid());
    const QRectF box = painted.Text(text).Place();
    EXPECT_TRUE(plot.contains(box) && (box.center() - corners[0]).manhattanLength() < 50)
        << text.toStdString();
  }
}

TEST(PageLooks, LinesOfTheControlChartsAndTheirNames) {
  const Painted painted(Sample());
  struct {
    GraphId graph;
    double value;
    QString name;
  } const levels[] = {{GraphId::XBar, 10.3, u"UCL 10.30"_s}, {GraphId::XBar, 10, u"Mean 10.00"_s},
                      {GraphId::XBar, 9.7, u"LCL 9.70"_s},   {GraphId::R, 0.5, u"UCL 0.50"_s},
                      {GraphId::R, 0.2, u"Mean 0.20"_s},     {GraphId::R, 0, u"LCL 0.00"_s}};
  double above = 0;
  for (const auto& [graph, value, name] : levels) {
    const QPointF right = painted.At(graph, 9, value);
    const bool isLimit = !name.startsWith(u"Mean");
    painted.Expect(Kind::Line, QList{painted.At(graph, 0, value), right}, isLimit ? red : black, isLimit);
    const auto leaders = painted.device.Where([&](const PaintedShape& shape) {
      return shape.kind == Kind::Line && (shape.corners[0] - right).manhattanLength() < 0.01 &&
             shape.ink == grey;
    });
    EXPECT_EQ(leaders.size(), 1u) << name.toStdString();
    const PaintedShape label = painted.Text(name);
    EXPECT_EQ(label.ink, black);
    EXPECT_GT(label.Place().left(), right.x());
    EXPECT_NEAR(label.Place().center().y(), right.y(), 25);
    EXPECT_GT(label.Place().center().y(), above) << "in the order of the lines";
    above = label.Place().center().y();
  }
  EXPECT_EQ(painted.device.Where([](const PaintedShape& shape) { return !shape.dashes.isEmpty(); }).size(),
            6u);
}

TEST(PageLooks, LabelsRoundAsFiguresDoAndTellLinesApart) {
  CData data = Sample();
  data.SetPrecisionValue(4);
  data.SetXBarMean(10.125);  // a half in two decimals, which a double holds exactly
  data.SetRBarUCL(123456.785);
  const Painted painted(data, {.fittedScale = true});
  const PaintedShape mean = painted.Text(u"10.13"_s), range = painted.Text(u"123456.79"_s);
  EXPECT_EQ(mean.font.pixelSize(), range.font.pixelSize()) << "one size on both charts";

  data.SetXBarUCL(10.1252);
  data.SetRBarUCL(0.5);
  const Painted near(data, {.fittedScale = true});
  near.Text(u"UCL 10.1252"_s);
  near.Text(u"Mean 10.1250"_s);
  near.Text(u"Mean 0.2000"_s);

  data = Sample();
  data.SetPrecisionValue(4);
  data.SetDelimitedInputString(u"10.00,12.50,"_s);
  Painted(data).Text(u"UCL 10.300"_s);
}

TEST(PageLooks, ZonesShowWhereThereIsRoomForThem) {
  const auto faint = [](const Painted& painted, GraphId graph) {
    return painted.device.Where([&](const PaintedShape& shape) {
      return shape.kind == Kind::Line && shape.ink == lightGrey &&
             painted.Plot(graph).adjusted(-1, -1, 1, 1).contains(shape.Place().center());
    });
  };
  CData data = Sample();
  data.SetXBarOutputString(u"10.0,10.1,9.9,10.2,10.0,9.8,10.2,9.9"_s);
  data.SetXBarUCL(10.6);
  const Painted fitted(data, {.fittedScale = true});
  EXPECT_EQ(faint(fitted, GraphId::XBar).size(), 4u);
  EXPECT_EQ(faint(fitted, GraphId::R).size(), 0u);
  for (const double value : {9.8, 9.9, 10.2, 10.4})
    fitted.Expect(Kind::Line, QList{fitted.At(GraphId::XBar, 0, value), fitted.At(GraphId::XBar, 9, value)},
                  lightGrey);
  EXPECT_EQ(faint(Painted(data), GraphId::XBar).size(), 0u) << "the standard scale has no room";
}

TEST(PageLooks, TheBasePeriodHasAPaleGround) {
  CData data = PageData::Random({.subgroups = 30});
  const auto ground = [&] {
    const Painted painted(StatPage(data, {.fittedScale = true}));
    std::vector<QRectF> places;
    for (const PaintedShape& shape : painted.device.Shapes())
      if (shape.fill == QColor(0xEA, 0xF1, 0xF4)) places.push_back(shape.Place());
    if (!places.empty()) {
      EXPECT_NEAR(places[0].left(), painted.At(GraphId::XBar, 3.5, 0).x(), 1);
      EXPECT_NEAR(places[0].right(), painted.At(GraphId::XBar, 20.5, 0).x(), 1);
    }
    return places.size();
  };
  EXPECT_EQ(ground(), 0u);
  QCGlobalFunctions::ClearControlLimits(data);
  data.SetDataStartPoint(4);
  data.SetDataStopPoint(20);
  ASSERT_TRUE(QCGlobalFunctions::CalculateStatistics(data));
  EXPECT_EQ(ground(), 2u) << "on both charts";
}

TEST(PageLooks, AxesWithTheirTicksLabelsAndTitles) {
  const Painted painted(Sample());
  struct {
    GraphId graph;
    QString across, up, acrossTitle, upTitle;
    size_t ticks;
  } const expected[] = {
      {GraphId::XBar, u"1 5"_s, u"-20 -5 10 25 40"_s, u"Sample"_s, u"mm"_s, 7},
      {GraphId::R, u"1 5"_s, u"-0.30 -0.05 0.20 0.45 0.70"_s, u"Sample"_s, u"mm"_s, 7},
      {GraphId::Histogram, u"9.0 9.3 9.7 10.0 10.3 10.7"_s, u"0 10"_s, u"mm"_s, u"Count"_s, 15}};
  for (const auto& [graph, across, up, acrossTitle, upTitle, tickCount] : expected) {
    SCOPED_TRACE(int(graph));
    const QRectF plot = painted.Plot(graph), frame = painted.Frame(graph);
    const QRectF below(plot.left() - 20, plot.bottom(), plot.width() + 40, frame.bottom() - plot.bottom());
    const QRectF left(frame.left(), frame.top(), plot.left() - frame.left(), frame.height());
    painted.Expect(Kind::Rectangle, frame, lightGrey);
    painted.Expect(Kind::Line, QList{plot.bottomLeft(), plot.bottomRight()}, black);
    painted.Expect(Kind::Line, QList{plot.bottomLeft(), plot.topLeft()}, black);
    const double length = 756 * 0.006;  // of a tick, away from the plot
    const auto ticks = painted.device.Where([&](const PaintedShape& shape) {
      return shape.kind == Kind::Line && shape.ink == black && frame.contains(shape.Place().center()) &&
             std::abs(shape.Place().width() + shape.Place().height() - length) < 0.01;
    });
    EXPECT_EQ(ticks.size(), tickCount);
    const double low = painted.page.Page().Graph(int(graph)).Scale().top();
    for (const QString& text : across.split(u' ')) {
      // There is room for every second label of the bins.
      const double value =
          graph == GraphId::Histogram ? 2.0 * double(across.split(u' ').indexOf(text)) : text.toDouble();
      const QPointF at = painted.At(graph, value, low);
      if (value != 1) painted.Expect(Kind::Line, QList{at, at + QPointF(0, length)}, black);
      const PaintedShape label = painted.Text(text, below);
      EXPECT_NEAR(label.Place().center().x(), at.x(), 2) << text.toStdString();
      EXPECT_EQ(label.ink, black);
    }
    for (const QString& text : up.split(u' ')) {
      const QPointF at = painted.At(graph, 0, text.toDouble());
      painted.Expect(Kind::Line, QList{at - QPointF(length, 0), at}, black);
      const PaintedShape label = painted.Text(text, left);
      EXPECT_NEAR(label.Place().center().y(), at.y(), 2) << text.toStdString();
      EXPECT_NEAR(label.Place().right(), at.x(), 10);
      EXPECT_EQ(label.ink, black);
    }
    const PaintedShape title = painted.Text(acrossTitle, below), turned = painted.Text(upTitle, left);
    EXPECT_NEAR(title.Place().center().x(), plot.center().x(), 1);
    EXPECT_NEAR(turned.Place().center().y(), plot.center().y(), 1);
    EXPECT_GT(turned.Place().height(), turned.Place().width()) << "reads upwards";
    EXPECT_TRUE(title.ink == black && turned.ink == black);
  }
}

TEST(PageLooks, TitlesLimitsAndWordsInTheirPlaces) {
  CData usual = Sample(), reversed = Sample(), single = Sample(), unmarked = Sample();
  unmarked.SetViolatingPoints({});
  unmarked.SetSensitivityValue(0);
  usual.SetRangesOutside({3, 5});
  reversed.SetXBarLCL(10.3);
  reversed.SetXBarUCL(9.7);
  single.SetSubGroupSize(1);
  const struct {
    const CData& data;
    GraphId graph;
    QString text;
    double x, y;  // 0.5 for centred, else where it starts or, above that, ends
    QColor ink;
  } texts[] = {
      {usual, GraphId::XBar, u" AVERAGE"_s, 0.5, 0.035, black},
      {usual, GraphId::R, u" RANGE"_s, 0.5, 0.035, black},
      {usual, GraphId::Histogram, u" HISTOGRAM"_s, 0.5, 0.035, black},
      {usual, GraphId::XBar, u"LCL=9.7, Mean=10, UCL=10.3"_s, 0.5, 0.08, black},
      {usual, GraphId::R, u"LCL=0, Mean=0.2, UCL=0.5"_s, 0.5, 0.08, black},
      {usual, GraphId::XBar, u"Rules:  1 beyond a limit  \u00b7  2 two of three beyond 2 sigma"_s, 0.01,
       0.965, black},
      {unmarked, GraphId::XBar, u"Rules:  1 beyond a limit  \u00b7  4 eight on one side"_s, 0.01, 0.965,
       black},
      {usual, GraphId::R, u"Beyond a limit:  3, 5"_s, 0.01, 0.965, black},
      {reversed, GraphId::XBar, u"The lower control limit stands above the upper one."_s, 0.01, 0.965, red},
      {single, GraphId::XBar, u"individuals"_s, 0.985, 0.035, black},
      {single, GraphId::R, u"moving range"_s, 0.985, 0.035, black}};
  for (const auto& [data, graph, text, x, y, ink] : texts) {
    SCOPED_TRACE(text.toStdString());
    const Painted painted(data);
    const QRectF frame = painted.Frame(graph), place = painted.Text(text, frame).Place();
    EXPECT_NEAR(x == 0.5  ? place.center().x()
                : x < 0.5 ? place.left()
                          : place.right(),
                frame.left() + x * frame.width(), 1);
    EXPECT_NEAR(place.center().y(), frame.top() + y * frame.height(), 6);
    EXPECT_EQ(painted.Text(text, frame).ink, ink);
    for (const PaintedShape& shape : Painted(&data == &single ? usual : single).Of(Kind::Text))
      EXPECT_FALSE(&data != &usual && shape.text == text) << "only where it is so";
  }
  Painted(usual, {.points = PointRange{4, 8}}).Text(u"Beyond a limit:  5"_s);
  const QRectF scale = PageData::Page(reversed).Page().Graph(0).Scale();
  EXPECT_TRUE(scale.top() <= -30 && scale.bottom() >= 50) << "all points lie on the axis";
}

TEST(PageLooks, TheSelectedGraphHasABlueFrameOnScreen) {
  StatPage page = PageData::Page(Sample());
  page.Select(GraphId::R);
  const Painted painted(page);
  const auto frames = painted.device.Where(
      [](const PaintedShape& shape) { return shape.kind == Kind::Rectangle && shape.ink == blue; });
  ASSERT_EQ(frames.size(), 1u);
  EXPECT_EQ(frames[0].width, 3);
  EXPECT_LT((frames[0].Place().center() - painted.Frame(GraphId::R).center()).manhattanLength(), 0.01);
}

}  // namespace
