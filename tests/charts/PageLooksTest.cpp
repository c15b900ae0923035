// What the page looks like: every line, mark, bar and text in its colour, its dash and its place.
#include <gtest/gtest.h>

#include "charts/StatPage.h"
#include "tests/charts/PageData.h"
#include "tests/support/RecordingDevice.h"

using namespace Qt::StringLiterals;

namespace {

using Kind = PaintedShape::Kind;

constexpr QRectF target(0, 0, 1280, 800);
const QColor black(0, 0, 0), blue(0, 0, 255), red(255, 0, 0), teal(0, 128, 128), green(0, 128, 0),
    grey(128, 128, 128), lightGrey(192, 192, 192), white(255, 255, 255);
constexpr GraphId charts[] = {GraphId::XBar, GraphId::R};

// The page as painted, and where things belong on it.
struct Painted {
  explicit Painted(const StatPage& shown) : page(shown) {
    QPainter painter(&device);
    page.Paint(painter, target);
  }
  explicit Painted(const CData& data, const StatPageOptions& options = {})
      : Painted(PageData::Page(data, options)) {}

  QRectF Frame(GraphId graph, double head = 44) const {
    static constexpr double ends[][4] = {{0.005, 0.005, 0.6, 0.49},
                                         {0.005, 0.5, 0.6, 0.99},
                                         {0.61, 0.005, 0.995, 0.49},
                                         {0.61, 0.5, 0.995, 0.99}};
    const auto& [left, top, right, bottom] = ends[int(graph)];
    const double height = 800 - head;
    return {QPointF(1280 * left, head + height * top), QPointF(1280 * right, head + height * bottom)};
  }
  QRectF Plot(GraphId graph) const {
    const QRectF frame = Frame(graph);
    return {frame.left() + 0.15 * frame.width(), frame.top() + 0.1 * frame.height(), 0.75 * frame.width(),
            0.7 * frame.height()};
  }
  QPointF At(GraphId graph, double x, double y) const {
    const QRectF plot = Plot(graph);
    const QRectF scale = page.Page().Graph(int(graph)).Scale();
    return {plot.left() + (x - scale.left()) / scale.width() * plot.width(),
            plot.bottom() - (y - scale.top()) / scale.height() * plot.height()};
  }
  std::vector<PaintedShape> Of(Kind kind, const QRectF& within = target) const {
    return device.Of(kind, within);
  }

  // Fails where there is no such shape, or it has another look.
  void Expect(Kind kind, const QPolygonF& corners, const QColor& ink, bool dashed = false,
              const QColor& fill = {}) const {
    const auto there = device.Where([&](const PaintedShape& shape) {
      return shape.kind == kind && std::ranges::equal(shape.corners, corners, [](QPointF one, QPointF other) {
               return (one - other).manhattanLength() < 0.01;
             });
    });
    ASSERT_EQ(there.size(), 1u) << testing::PrintToString(PaintedShape{kind, corners, ink, {}, 0, fill});
    EXPECT_EQ(there[0].ink, ink) << testing::PrintToString(there[0]);
    EXPECT_EQ(!there[0].dashes.isEmpty(), dashed) << testing::PrintToString(there[0]);
    EXPECT_EQ(there[0].fill, fill) << testing::PrintToString(there[0]);
  }

  PaintedShape Text(const QString& text, const QRectF& within = target) const {
    for (const PaintedShape& shape : Of(Kind::Text, within))
      if (shape.text == text) return shape;
    ADD_FAILURE() << "no text " << text.toStdString();
    return {};
  }

  StatPage page;
  RecordingDevice device{target.size().toSize()};
};

// Eight points: the fourth breaks a rule, the sixth lies below the scale, the eighth above it and breaks two.
CData Sample() {
  CData data = PageData::Simple();
  data.SetXBarOutputString(u"10.0,12.1,5.9,18,10.0,-30,10.2,50.0"_s);
  data.SetHistoLoScaleValue(8);
  data.SetHistoHiScaleValue(13);
  return data;
}
const std::vector<double> averages{10, 12.1, 5.9, 18, 10, -30, 10.2, 50},
    ranges{.1, .2, .3, .2, .1, .2, .3, .2};

TEST(PageLooks, PointsOnBlueLines) {
  const Painted painted(Sample());
  for (const GraphId graph : charts) {
    const std::vector<double>& values = graph == GraphId::XBar ? averages : ranges;
    QPolygonF line;
    std::vector<QPointF> points;
    for (size_t i = 0; i < values.size(); ++i) {
      line << painted.At(graph, double(i) + 1, values[i]);
      if (graph == GraphId::R || (i != 3 && i != 5 && i != 7)) points.push_back(line.back());
    }
    painted.Expect(Kind::Polyline, line, blue, false, {});
    const auto dots = painted.Of(Kind::Ellipse, painted.Frame(graph));
    ASSERT_EQ(dots.size(), points.size());
    for (size_t i = 0; i < points.size(); ++i) {
      EXPECT_LT((dots[i].Place().center() - points[i]).manhattanLength(), 0.01) << i;
      EXPECT_TRUE(dots[i].fill == blue && !dots[i].ink.isValid()) << testing::PrintToString(dots[i]);
    }
  }
}

TEST(PageLooks, AMarkIsARedDiamondWithItsNumberBesideIt) {
  const Painted painted(Sample());
  const QPointF at = painted.At(GraphId::XBar, 4, 18);
  const auto marks = painted.device.Where(
      [](const PaintedShape& shape) { return shape.kind == Kind::Polygon && shape.corners.size() == 4; });
  ASSERT_EQ(marks.size(), 1u);
  const double radius = marks[0].Place().width() / 2;
  EXPECT_GT(radius, painted.Of(Kind::Ellipse)[0].Place().width() / 2);
  painted.Expect(Kind::Polygon,
                 QList{at - QPointF(0, radius), at + QPointF(radius, 0), at + QPointF(0, radius),
                       at - QPointF(radius, 0)},
                 {}, false, red);
  const PaintedShape number = painted.Text(u"1"_s, painted.Plot(GraphId::XBar));
  EXPECT_EQ(number.ink, black);
  EXPECT_LT((number.Place().center() - at).manhattanLength(), 25);
  EXPECT_FALSE(number.Place().intersects(marks[0].Place()));
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

TEST(PageLooks, LimitsTheWrongWayRoundAreSaidAndTheChartIsDrawn) {
  CData data = Sample();
  data.SetXBarLCL(10.3);
  data.SetXBarUCL(9.7);
  const Painted painted(data);
  EXPECT_EQ(painted.Text(u"The lower control limit stands above the upper one."_s).ink, red);
  const QRectF scale = painted.page.Page().Graph(0).Scale();
  EXPECT_TRUE(scale.top() <= -30 && scale.bottom() >= 50) << "all points lie on the axis";
}

TEST(PageLooks, SingleValuesAreNamedSo) {
  CData data = Sample();
  const auto named = [&] {
    int count = 0;
    for (const PaintedShape& text : Painted(data).Of(Kind::Text))
      count += text.text == u"individuals" || text.text == u"moving range";
    return count;
  };
  EXPECT_EQ(named(), 0);
  data.SetSubGroupSize(1);
  EXPECT_EQ(named(), 2);
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

TEST(PageLooks, TheNormalCurvePeaksAtTheMean) {
  CData data = Sample();
  const Painted painted(data);
  const auto curves = painted.device.Where([&](const PaintedShape& shape) {
    return shape.kind == Kind::Polyline && shape.ink == teal &&
           painted.Frame(GraphId::Histogram).contains(shape.Place().center());
  });
  ASSERT_EQ(curves.size(), 1u);
  const QPointF peak = std::ranges::min(curves[0].corners, {}, &QPointF::y);
  // 16 samples, bins of 5 / 12, sigma 0.5: 16 * 0.41667 / 0.5 * 0.39894.
  const QPointF expected = painted.At(GraphId::Histogram, (10.05 - 8) / 5 * 12, 5.3192);
  EXPECT_NEAR(peak.x(), expected.x(), 3);
  EXPECT_NEAR(peak.y(), expected.y(), 2);
}

TEST(PageLooks, SpecificationLinesStandAtTheirValuesAlsoAtZero) {
  using Three = std::array<double, 3>;
  CData data = Sample();
  for (const auto& limits :
       {Three{9, 10, 11.5}, Three{0, 1, 3}, Three{-4, -2, 0}, Three{-1, 0, 2}, Three{}}) {
    data.SetLowerSpecLimit(limits[0]);
    data.SetNominalSpecLimit(limits[1]);
    data.SetUpperSpecLimit(limits[2]);
    data.SetHistoLoScaleValue(limits[0] - 1);
    data.SetHistoHiScaleValue(limits[2] + 2);
    const Painted painted(data);
    const QRectF frame = painted.Frame(GraphId::Histogram);
    const auto dashed = painted.device.Where([&](const PaintedShape& shape) {
      return !shape.dashes.isEmpty() && frame.contains(shape.Place().center());
    });
    EXPECT_EQ(dashed.size(), limits == Three{} ? 0u : 2u) << "none where there is no specification";
    if (limits == Three{}) continue;
    for (size_t i = 0; i < 3; ++i) {
      const double x = (limits[i] - limits[0] + 1) / (limits[2] - limits[0] + 3) * 12;
      const QPointF top = painted.At(GraphId::Histogram, x, 10);
      painted.Expect(Kind::Line, QList{painted.At(GraphId::Histogram, x, 0), top}, i == 1 ? black : red,
                     i != 1);
      const QString name =
          QStringList{u"LSL "_s, u"Nominal "_s, u"USL "_s}[qsizetype(i)] + QString::number(limits[i]);
      const QRectF label = painted.Text(name, frame).Place();
      EXPECT_LT(label.bottom(), top.y());
      EXPECT_NEAR(label.center().x(), top.x(), 60);
    }
  }
}

TEST(PageLooks, ASpecificationLineAtTheEndOfTheScaleStandsBesideTheAxis) {
  CData data = Sample();
  data.SetLowerSpecLimit(8);
  data.SetUpperSpecLimit(13);
  const Painted painted(data);
  const QRectF plot = painted.Plot(GraphId::Histogram);
  const auto dashed = [](const Painted& page) {
    return page.device.Where([&](const PaintedShape& shape) {
      return !shape.dashes.isEmpty() && page.Frame(GraphId::Histogram).contains(shape.Place().center());
    });
  };
  const auto lines = dashed(painted);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_GE(lines[0].Place().left(), plot.left() + 1);
  EXPECT_LE(lines[0].Place().left(), plot.left() + 3);
  EXPECT_NEAR(lines[1].Place().left(), plot.right(), 0.01);
  data.SetUpperSpecLimit(13.5);
  EXPECT_EQ(dashed(Painted(data)).size(), 1u) << "beyond it there is none";
}

TEST(PageLooks, EachBarStandsOverItsOwnBinAsHighAsItsCount) {
  CData data = Sample();
  data.SetHistogramBinValuesOutputString(u"0,7,1,2,0,4,3,12,1,0,0,5"_s);
  const Painted painted(data);
  const double counts[] = {0, 7, 1, 2, 0, 4, 3, 12, 1, 0, 0, 5};
  for (int bin = 0; bin < 12; ++bin) {
    if (counts[bin] == 0) continue;
    const QPointF top = painted.At(GraphId::Histogram, bin + 0.05, counts[bin]);
    painted.Expect(Kind::Rectangle, QRectF(top, painted.At(GraphId::Histogram, bin + 0.95, 0)), black, false,
                   teal);
  }
  const auto filled = painted.device.Where([](const PaintedShape& shape) { return shape.fill == teal; });
  EXPECT_EQ(filled.size(), 8u);
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

struct Wanted {
  QString text;
  double x, y;  // where it starts, or ends, and its middle
  QColor ink;
};

void ExpectTexts(const Painted& painted, const QRectF& area, const std::vector<Wanted>& wanted) {
  EXPECT_EQ(painted.Of(Kind::Text, area).size(), wanted.size());
  for (const auto& [text, x, y, ink] : wanted) {
    const bool ends = x > 0.9;
    auto shapes = painted.Of(Kind::Text, area);
    std::erase_if(shapes, [&, &wanted = text](const PaintedShape& shape) { return shape.text != wanted; });
    ASSERT_FALSE(shapes.empty()) << "no text " << text.toStdString();
    const QPointF place(area.left() + x * area.width(), area.top() + y * area.height());
    const PaintedShape shape = std::ranges::min(shapes, {}, [&](const PaintedShape& one) {
      return (one.Place().center() - place).manhattanLength();
    });
    EXPECT_NEAR(ends ? shape.Place().right() : shape.Place().left(), area.left() + x * area.width(), 2)
        << text.toStdString();
    EXPECT_NEAR(shape.Place().center().y(), area.top() + y * area.height(), 3) << text.toStdString();
    EXPECT_EQ(shape.ink, ink) << text.toStdString();
  }
}

TEST(PageLooks, LinesOfTheTextWindow) {
  CData data = Sample();
  const auto addBlock = [](std::vector<Wanted>& wanted) {
    const struct {
      QStringList texts;
      std::vector<double> places;
    } rows[] = {{u"Mean|10.05|Nominal|10"_s.split(u'|'), {0.08, 0.25, 0.52, 0.69}},
                {u"Cp|1.88|Pp|1.33"_s.split(u'|'), {0.08, 0.25, 0.52, 0.69}},
                {u"Cpk|1.00|Ppk|1.27"_s.split(u'|'), {0.08, 0.25, 0.52, 0.69}},
                {u"Sigma within (R-bar / d2)|0.1773"_s.split(u'|'), {0.08, 0.52}},
                {u"Sigma overall (n \u2212 1)|0.5"_s.split(u'|'), {0.08, 0.52}},
                {u"Outside spec. limits|1 of 16"_s.split(u'|'), {0.08, 0.52}},
                {u"Expected outside|0.27 %"_s.split(u'|'), {0.08, 0.52}}};
    double y = 0.565;
    for (const auto& [texts, places] : rows) {
      for (qsizetype i = 0; i < texts.size(); ++i)
        wanted.push_back({texts[i], places[size_t(i)], y, i % 2 == 0 ? black : blue});
      y += 0.054;
    }
  };
  for (const auto& [cpk, shown, ink] : {std::tuple{1.0, u"1.00"_s, green}, {0.99, u"0.99"_s, red}}) {
    data.SetCPKValue(cpk);
    const QStringList rows =
        u"Sample Qty|16|Sub Group Size|2|Min|9.1|Max|10.9|Std. Dev|0.25|Upper Spec Limit|11|"
        u"Lower Spec Limit|9|Cpk|%1|Last Modified|2024-05-17"_s.arg(shown)
            .split(u'|');
    std::vector<Wanted> wanted;
    for (int row = 0; row < 9; ++row) {
      const double y = 0.045 + 0.056 * row;
      wanted.push_back({rows[2 * row], 0.08, y, black});
      wanted.push_back({rows[2 * row + 1], 0.52, y, row == 7 ? ink : blue});
    }
    addBlock(wanted);
    wanted.push_back({u"Cpk from R-bar / d2"_s, 0.08, 0.565 + 0.054 * 7, grey});
    if (ink == green) wanted.push_back({u"caution: not in control"_s, 0.67, 0.045 + 0.056 * 7, red});
    const Painted painted(data);
    ExpectTexts(painted, painted.Frame(GraphId::Text), wanted);
  }
}

TEST(PageLooks, AValueThatThereIsNotIsSaidAndNotZero) {
  struct {
    double lower, upper, nominal;
    QString reason;
    size_t reasons, notGiven;
  } const cases[] = {{0, 0, 0, u"no specification"_s, 7, 3},
                     {11, 9, 10, u"USL is not above LSL"_s, 7, 0},
                     {9, 11, 10, u"no variation"_s, 6, 0}};
  for (const auto& [lower, upper, nominal, reason, reasons, notGiven] : cases) {
    CData data = Sample();
    data.SetLowerSpecLimit(lower);
    data.SetUpperSpecLimit(upper);
    data.SetNominalSpecLimit(nominal);
    data.SetCPKValue(0);
    engine::Capability none;
    if (reasons == 6) none.samplesOutside = 0;
    data.SetCapability(none);
    const Painted painted(data);
    size_t said = 0, without = 0;
    for (const PaintedShape& text : painted.Of(Kind::Text, painted.Frame(GraphId::Text))) {
      EXPECT_NE(text.ink, red) << text.text.toStdString();
      said += text.text == reason;
      without += text.text == u"none given";
    }
    EXPECT_EQ(said, reasons) << reason.toStdString();
    EXPECT_EQ(without, notGiven);
  }
}

TEST(PageLooks, TheVerdictStandsAboveTheGraphsWithWhatItRestsOn) {
  CData data = Sample();
  data.SetRangesOutside({3});
  const QRectF strip(0, 0, 1280, 44);
  const auto lines = [&](const CData& shown, const QString& library = {}) {
    const Painted painted(shown, {.libraryName = library});
    const auto texts = painted.Of(Kind::Text, strip);
    EXPECT_EQ(texts.size(), 2u);
    return texts;
  };
  auto texts = lines(data, u"line.db"_s);
  EXPECT_EQ(texts[0].text,
            u"NOT IN CONTROL: rule 1 at 4, 8; rule 2 at 8 \u00b7 Brink of chaos \u00b7 "
            u"ranges beyond their limits at 3"_s);
  EXPECT_TRUE(texts[0].ink == red && texts[0].font.bold());
  EXPECT_EQ(texts[1].text,
            u"Rules in force: 1, 2, 3, 4 (high sensitivity, long term: all points)  \u00b7  "
            u"Limits kept, not calculated from these points  \u00b7  Library: line.db"_s);

  data.SetIsInControl(true);
  data.SetProcessState(4);
  data.SetSensitivityValue(0);
  data.SetDetectionPeriod(0);
  texts = lines(data);
  EXPECT_EQ(texts[0].ink, black) << "no plain green while a range lies outside";
  EXPECT_TRUE(
      texts[1].text.startsWith(u"Rules in force: 1, 4 (low sensitivity, short term: the last eight points)"));
  data.SetRangesOutside({});
  texts = lines(data);
  EXPECT_EQ(texts[0].text, u"IN CONTROL \u00b7 Ideal");
  EXPECT_EQ(texts[0].ink, green);
  EXPECT_TRUE(lines(PageData::Random({})).at(1).text.contains(u"Limits calculated from all points"_s));
}

TEST(PageLooks, ARangeOutsideIsMarkedByItsNumber) {
  CData data = Sample();
  data.SetRangesOutside({3, 5});
  const Painted painted(data);
  const auto marks = painted.device.Where([&](const PaintedShape& shape) {
    return shape.kind == Kind::Polygon && shape.corners.size() == 4 && shape.fill == red &&
           painted.Plot(GraphId::R).contains(shape.Place().center());
  });
  ASSERT_EQ(marks.size(), 2u);
  EXPECT_LT((marks[0].Place().center() - painted.At(GraphId::R, 3, 0.3)).manhattanLength(), 0.01);
  painted.Text(u"5"_s, painted.Plot(GraphId::R));
  painted.Text(u"Beyond a limit:  3, 5"_s, painted.Frame(GraphId::R));
}

TEST(PageLooks, ThePrintedHeadStandsAboveThePage) {
  const Painted painted(Sample(), {.printedHead = true,
                                   .pageNumber = 2,
                                   .pageCount = 3,
                                   .printedAt = QDateTime(QDate(2024, 5, 18), QTime(9, 7))});
  const QRectF head(0, 0, 1280, 60);
  constexpr double both = 60 + 44;
  painted.Expect(Kind::Rectangle, head, {}, false, white);
  ExpectTexts(painted, head,
              {{u"Shaft"_s, 0.01, 0.36, black},
               {u"Page 2 of 3"_s, 0.99, 0.36, black},
               {u"Unit: mm     Samples: 16     Subgroup size: 2"_s, 0.01, 0.79, black},
               {u"Printed: 2024-05-18 09:07"_s, 0.99, 0.79, black}});
  EXPECT_TRUE(painted.Text(u"Shaft"_s).font.bold());
  for (const GraphId graph : {GraphId::XBar, GraphId::R, GraphId::Histogram, GraphId::Text})
    painted.Expect(Kind::Rectangle, painted.Frame(graph, both), lightGrey);
}

TEST(PageLooks, TitlesLimitsAndRulesInTheirPlaces) {
  const Painted painted(Sample());
  struct {
    GraphId graph;
    QString text;
    double y;
    bool centred = true;
  } const texts[] = {{GraphId::XBar, u" AVERAGE"_s, 0.035},
                     {GraphId::R, u" RANGE"_s, 0.035},
                     {GraphId::Histogram, u" HISTOGRAM"_s, 0.035},
                     {GraphId::XBar, u"LCL=9.7, Mean=10, UCL=10.3"_s, 0.08},
                     {GraphId::R, u"LCL=0, Mean=0.2, UCL=0.5"_s, 0.08},
                     {GraphId::XBar, u"Rules:  1 beyond a limit"_s, 0.965, false}};
  for (const auto& [graph, text, y, centred] : texts) {
    const QRectF frame = painted.Frame(graph);
    const PaintedShape shape = painted.Text(text, frame);
    EXPECT_NEAR(centred ? shape.Place().center().x() - frame.width() / 2
                        : shape.Place().left() - 0.01 * frame.width(),
                frame.left(), 1);
    EXPECT_NEAR(shape.Place().center().y(), frame.top() + y * frame.height(), 6) << text.toStdString();
    EXPECT_EQ(shape.ink, black);
  }
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
