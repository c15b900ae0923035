// The page as painted: nothing lies on anything else.
#include <map>
#include <set>

#include "tests/charts/PageData.h"
#include "tests/charts/Painting.h"

namespace {

using Kind = Painting::Kind;
const QColor red(255, 0, 0);

// Something red lies within two pixels of where the point of each mark does; of each so many-th.
void ExpectEveryMark(const StatPage& page, const QImage& picture, size_t step = 1) {
  const QRectF target(QPointF(), picture.deviceIndependentSize());
  const auto marks = page.Marks();
  for (size_t which = 0; which < marks.size(); which += step) {
    const StatPage::Mark& mark = marks[which];
    const QPointF point = page.Point(mark.graph, mark.number, target)->position;
    const QPoint at = (point * picture.devicePixelRatio()).toPoint();
    bool isThere = false;
    for (int i = 0; i < 25 && !isThere; ++i)
      isThere = picture.pixel(at + QPoint(i / 5 - 2, i % 5 - 2)) == red.rgb();
    EXPECT_TRUE(isThere) << "mark " << mark.number << " left out";
  }
}

// No text on another one, on a point or on a mark, none outside the page and none too small to read; and
// each mark as a diamond, or as an arrow at the edge of the plot area.
void ExpectNothingOverlaps(const StatPage& page, QSize size, int smallest) {
  const Painting painting(page, size, smallest);
  const Shapes texts = painting.Texts(), marks = painting.Find(Kind::Polygon, red);
  QImage picture(size, QImage::Format_RGB32);
  picture.fill(Qt::white);
  for (const PaintedShape& mark : marks) {
    const QPointF at = mark.corners.size() == 3 ? mark.corners[0] : mark.Place().center();
    picture.setPixelColor(at.toPoint(), red);
    EXPECT_GE(mark.Place().width(), 0.4 * smallest) << "too small to be seen";
  }
  ExpectEveryMark(page, picture, 1 + marks.size() / 200);
  ASSERT_GT(texts.size(), 20u);
  for (const PaintedShape& text : texts) {
    EXPECT_TRUE(QRectF(picture.rect()).contains(text.Place().adjusted(0.5, 0.5, -0.5, -0.5)))
        << text.text.toStdString();
    EXPECT_GE(text.font.pixelSize(), smallest) << text.text.toStdString();
  }
  ExpectApart(texts, texts);
  ExpectApart(texts, marks);
  ExpectApart(texts, painting.Find(Kind::Ellipse));
}

std::map<std::string, CData> AllKinds() {
  using PageData::Random;
  std::map<std::string, CData> kinds = {
      {"8 points", Random({.subgroups = 8, .subgroupSize = 1, .decimals = 1})},
      {"25 points", Random({.subgroups = 25})},
      {"200 points", Random({.subgroups = 200})},
      {"5,000 points", Random({.subgroups = 5000})},
      {"32,767 points", Random({.subgroups = 32767, .subgroupSize = 1})},
      {"constant", Random({.subgroups = 30, .mean = 5, .deviation = 0})},
      {"about 0.00012",
       Random({.subgroups = 60, .mean = 0.00012, .deviation = 1e-5, .decimals = 6, .precision = 7})},
      {"about 123456.7", Random({.mean = 123456.7, .deviation = 400, .decimals = 1, .precision = 4})},
      {"about 123456789", Random({.mean = 123456789, .deviation = 4000, .decimals = 2, .precision = 5})},
      {"about -5", Random({.subgroups = 60, .mean = -5, .deviation = 2})},
      {"a far scale", Random({.subgroups = 40, .mean = 9e6, .deviation = 1, .precision = 8})}};
  for (const auto& one : Cases(u"page.json"_s, u"kinds: name, figures"_s)) {
    CData& data = kinds.emplace(one[0].toString().toStdString(), Random({.subgroups = 40})).first->second;
    SetFigures(data, one[1].toObject());
    if (!QCGlobalFunctions::CalculateStatistics(data)) throw std::runtime_error("no statistics");
  }
  return kinds;
}

TEST(PaintedPage, NothingLiesOnAnythingElse) {
  const std::tuple<QSize, int> papers[] = {{{416, 258}, 9},   {{478, 390}, 14},  {{640, 400}, 9},
                                           {{800, 600}, 9},   {{800, 600}, 16},  {{1280, 800}, 9},
                                           {{1280, 800}, 16}, {{3840, 2160}, 9}, {{3508, 2480}, 29}};
  for (const auto& [name, data] : AllKinds()) {
    for (const bool fitted : {false, true}) {
      StatPage page(data, {.fittedScale = fitted, .printedHead = fitted, .libraryName = u"line.db"_s});
      for (const auto& [size, smallest] : papers) {
        SCOPED_TRACE(testing::Message() << name << ", " << size.width() << " wide, letters from " << smallest
                                        << ", fitted " << fitted);
        page.SetSmallestText(smallest);
        ExpectNothingOverlaps(page, size, smallest);
      }
    }
  }
}

// On a screen the marks of a crowded chart are stamped and not drawn.
TEST(PaintedPage, EveryMarkIsStampedOnAPicture) {
  const StatPage page(PageData::Random({.subgroups = 5000}), {.fittedScale = true});
  for (const double scale : {1.0, 2.0}) {
    QImage picture(QSize(1280, 800) * scale, QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    QPainter painter(&picture);
    page.Paint(painter, {0, 0, 1280, 800});
    ExpectEveryMark(page, picture);
  }
}

TEST(PaintedPage, LabelsOfNearLimitsMoveApart) {
  CData data = PageData::Simple();
  for (int run = 0; run < 40; ++run) {
    data.SetXBarLCL(10 - 0.05 * run * run);
    data.SetXBarUCL(10 + 0.01 * run);
    data.SetLowerSpecLimit(10 - 0.02 * run);
    data.SetUpperSpecLimit(10 + 0.02 * run);
    ExpectNothingOverlaps(PageData::Page(data, {.fittedScale = run % 2 == 0}), {1280, 800}, 9);
  }
}

// So many different numbers from 1 to the largest, in a row or anywhere.
std::vector<qint16> SomePoints(std::mt19937& generator, size_t count, int largest) {
  std::set<qint16> points;
  const bool isRun = generator() % 3 == 0;
  const auto first = 1 + generator() % static_cast<unsigned>(largest - int(count) + 1);
  while (points.size() < count)
    points.insert(static_cast<qint16>(isRun ? first + points.size() : 1 + generator() % unsigned(largest)));
  return {points.begin(), points.end()};
}

// Pages whose marks lie anywhere: the numbers cannot rely on what a rule would mark.
TEST(PaintedPage, EveryMarkHasItsNumberOnFreePaper) {
  std::mt19937 generator(11);
  std::normal_distribution<double> noise(0, 1);
  size_t numbers = 0;
  for (int run = 0; run < 1000 && !testing::Test::HasFailure(); ++run) {
    const int points = 8 + static_cast<int>(generator() % 53);
    CData data = PageData::Simple();
    QStringList averages, ranges;
    for (int i = 0; i < points; ++i) {
      averages << QString::number(10 + 0.15 * noise(generator), 'f', 2);
      ranges << QString::number(std::abs(0.2 + 0.15 * noise(generator)), 'f', 2);
    }
    data.SetXBarOutputString(averages.join(u','));
    data.SetRBarOutputString(ranges.join(u','));
    data.SetNumberOfPlotPoints(static_cast<qint16>(points));
    if (run % 5 == 0) data.SetXBarUCL(10.02 + 0.0001 * run);  // labels that move apart, zones that crowd
    if (run % 7 == 0) data.SetSubGroupSize(1);
    const auto most = std::min<unsigned>(15, unsigned(points) - 1);
    CData::ViolatingPointLists lists;
    for (const qint16 point : SomePoints(generator, 1 + generator() % most, points))
      lists[generator() % 4].push_back(point);
    data.SetViolatingPoints(lists);
    std::vector<qint16> outside = SomePoints(generator, generator() % most, points);
    if (data.SubGroupSize() == 1) std::erase(outside, 1);  // there is no first moving range
    data.SetRangesOutside(outside);

    StatPageOptions options{.fittedScale = run % 4 != 0, .libraryName = u"line.db"_s};
    if (run % 3 == 0) options.points = PointRange{1 + int(generator() % 4), points - int(generator() % 4)};
    const StatPage page = PageData::Page(data, options);
    const auto [first, last] = page.ShownPoints();
    size_t wanted = 0;
    for (const StatPage::Mark& mark : page.Marks()) wanted += mark.number >= first && mark.number <= last;
    numbers += wanted;
    const Painting painting(page, {1280, 800}, 9);
    const Shapes texts = painting.Texts(), marks = painting.Find(Kind::Polygon, red);
    Shapes inPlots;
    for (const int graph : {0, 1}) {
      const QRectF plot = page.Page().Geometry(graph, QRectF(0, 44, 1280, 756)).plot;
      for (const PaintedShape& text : texts)
        if (plot.contains(text.Place().center())) inPlots.push_back(text);
    }
    SCOPED_TRACE(testing::Message() << "run " << run << ", " << points << " points");
    EXPECT_EQ(inPlots.size(), wanted);
    EXPECT_EQ(marks.size(), wanted);
    ExpectApart(texts, texts);
    ExpectApart(inPlots, marks);
    ExpectApart(inPlots, painting.Find(Kind::Ellipse));
    for (const Kind kind : {Kind::Line, Kind::Polyline})
      for (const PaintedShape& line : painting.Find(kind))
        for (const PaintedShape& text : inPlots)
          EXPECT_FALSE(Crosses(line.corners, text.Place())) << testing::PrintToString(line);
  }
  EXPECT_GT(numbers, 10000u);
}

}  // namespace
