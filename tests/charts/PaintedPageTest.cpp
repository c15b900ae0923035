// The page as painted: nothing lies on anything else.
#include <gtest/gtest.h>

#include <random>
#include <set>

#include "charts/StatPage.h"
#include "tests/charts/PageData.h"
#include "tests/support/RecordingDevice.h"

using namespace Qt::StringLiterals;

namespace {

// Whether a line of these corners runs through the box.
bool Touches(const QPolygonF& corners, const QRectF& box) {
  for (qsizetype i = 1; i < corners.size(); ++i) {
    const QLineF line(corners[i - 1], corners[i]);
    if (box.contains(line.p1())) return true;
    for (const QLineF& diagonal :
         {QLineF(box.topLeft(), box.bottomRight()), QLineF(box.topRight(), box.bottomLeft())}) {
      if (line.intersects(diagonal) == QLineF::BoundedIntersection) return true;
    }
  }
  return false;
}

void ExpectNothingOverlaps(const StatPage& page, QSize size) {
  RecordingDevice device(size);
  {
    QPainter painter(&device);
    page.Paint(painter, QRectF(QPointF(0, 0), QSizeF(size)));
  }
  const QRectF whole(QPointF(0, 0), QSizeF(size));
  const auto texts = device.Of(PaintedShape::Text, whole);
  const auto marks = device.Where([](const auto& shape) {
    return shape.kind == PaintedShape::Ellipse || shape.kind == PaintedShape::Polygon;
  });
  ASSERT_GT(texts.size(), 20u);
  for (size_t i = 0; i < texts.size(); ++i) {
    const QRectF ink = texts[i].Place().adjusted(0.5, 0.5, -0.5, -0.5);
    EXPECT_TRUE(whole.contains(ink)) << texts[i].text.toStdString();
    for (size_t j = 0; j < i; ++j) {
      EXPECT_FALSE(ink.intersects(texts[j].Place()))
          << texts[i].text.toStdString() << " on " << texts[j].text.toStdString();
    }
    for (const PaintedShape& mark : marks) {
      ASSERT_FALSE(ink.intersects(mark.Place())) << texts[i].text.toStdString() << " on a mark";
    }
  }
}

TEST(PaintedPage, NothingLiesOnAnythingElse) {
  const std::vector<PageData::Shape> shapes = {
      {.subgroups = 8, .subgroupSize = 1, .decimals = 1},
      {.subgroups = 25},
      {.subgroups = 60, .mean = -5, .deviation = 2},
      {.subgroups = 200, .mean = 0.00012, .deviation = 1e-5, .decimals = 6, .precision = 7},
      {.subgroups = 25, .mean = 123456.7, .deviation = 400, .precision = 1},
      {.subgroups = 40, .mean = 9e6, .deviation = 1, .precision = 8},
      {.subgroups = 30, .mean = 5, .deviation = 0},
      {.subgroups = 2000, .subgroupSize = 3}};
  for (PageData::Shape shape : shapes) {
    for (const QSize size : {QSize(1280, 800), QSize(900, 500), QSize(3840, 2160), QSize(3508, 2480)}) {
      for (const bool fitted : {false, true}) {
        SCOPED_TRACE(testing::Message() << shape.subgroups << " subgroups of mean " << shape.mean << ", "
                                        << size.width() << " wide, fitted " << fitted);
        ++shape.seed;
        const StatPage page(PageData::Random(shape), {.fittedScale = fitted, .printedHead = fitted});
        ExpectNothingOverlaps(page, size);
      }
    }
  }
}

TEST(PaintedPage, LabelsOfNearLimitsMoveApart) {
  CData data = PageData::Simple();
  for (int run = 0; run < 40; ++run) {
    data.SetXBarLCL(10 - 0.05 * run * run);
    data.SetXBarUCL(10 + 0.01 * run);
    data.SetLowerSpecLimit(10 - 0.02 * run);
    data.SetUpperSpecLimit(10 + 0.02 * run);
    ExpectNothingOverlaps(PageData::Page(data, {.fittedScale = run % 2 == 0}), {1280, 800});
  }
}

// Pages whose marks lie anywhere: the numbers cannot rely on what a rule would mark.
TEST(PaintedPage, EveryMarkHasItsNumberOnFreePaper) {
  std::mt19937 generator(11);
  std::normal_distribution<double> noise(0, 1);
  constexpr QSize size(1280, 800);
  int numbers = 0;
  for (int run = 0; run < 1000 && !testing::Test::HasFailure(); ++run) {
    const int points = 8 + static_cast<int>(generator() % 53);
    CData data = PageData::Simple();
    QStringList averages, ranges;
    for (int i = 0; i < points; ++i) {
      averages << QString::number(10 + 0.15 * noise(generator), 'f', 2);
      ranges << u"0.2"_s;
    }
    data.SetXBarOutputString(averages.join(u','));
    data.SetRBarOutputString(ranges.join(u','));
    data.SetNumberOfPlotPoints(static_cast<qint16>(points));
    std::set<qint16> marked;
    const size_t wanted = 1 + generator() % std::min<size_t>(15, static_cast<size_t>(points));
    const bool isRun = generator() % 3 == 0;
    const auto first = static_cast<qint16>(1 + generator() % static_cast<unsigned>(points - int(wanted) + 1));
    while (marked.size() < wanted) {
      marked.insert(isRun ? static_cast<qint16>(first + int(marked.size()))
                          : static_cast<qint16>(1 + generator() % static_cast<unsigned>(points)));
    }
    CData::ViolatingPointLists lists;
    for (const qint16 point : marked) lists[generator() % 4].push_back(point);
    data.SetViolatingPoints(lists);
    numbers += static_cast<int>(wanted);

    const StatPage page = PageData::Page(data, {.fittedScale = run % 4 != 0});
    RecordingDevice device(size);
    {
      QPainter painter(&device);
      page.Paint(painter, QRectF(QPointF(0, 0), QSizeF(size)));
    }
    const QRectF plot = page.Page().Geometry(0, QRectF(0, 44, 1280, 756)).plot;
    const auto texts = device.Of(PaintedShape::Text, plot);
    const auto marks = device.Where([&](const PaintedShape& shape) {
      return (shape.kind == PaintedShape::Ellipse || shape.kind == PaintedShape::Polygon) &&
             plot.adjusted(-1, -1, 1, 1).contains(shape.Place().center());
    });
    SCOPED_TRACE(testing::Message() << "run " << run << ", " << points << " points");
    EXPECT_EQ(texts.size(), wanted);
    EXPECT_EQ(
        std::ranges::count_if(marks, [](const PaintedShape& mark) { return mark.fill == QColor(255, 0, 0); }),
        std::ptrdiff_t(wanted));
    for (size_t i = 0; i < texts.size(); ++i) {
      const QRectF ink = texts[i].Place();
      for (size_t j = 0; j < i; ++j) EXPECT_FALSE(ink.intersects(texts[j].Place()));
      for (const PaintedShape& mark : marks) EXPECT_FALSE(ink.intersects(mark.Place()));
      for (const PaintedShape& line : device.Shapes()) {
        const bool isLine = line.kind == PaintedShape::Line || line.kind == PaintedShape::Polyline;
        EXPECT_FALSE(isLine && Touches(line.corners, ink)) << testing::PrintToString(line);
      }
    }
  }
  EXPECT_GT(numbers, 5000);
}

}  // namespace
