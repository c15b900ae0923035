// The page as painted: nothing lies on anything else.
#include <gtest/gtest.h>

#include "charts/StatPage.h"
#include "tests/charts/PageData.h"
#include "tests/support/RecordingDevice.h"

namespace {

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

}  // namespace
