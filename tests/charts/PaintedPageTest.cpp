// The page as painted, through a device that records where texts and marks end up: nothing lies on anything
// else.
#include <gtest/gtest.h>

#include <QImage>
#include <QPaintEngine>

#include "charts/StatPage.h"
#include "tests/charts/PageData.h"

using namespace Qt::StringLiterals;

namespace {

struct PaintedText {
  QString text;
  QRectF ink;
};

class RecordingEngine : public QPaintEngine {
 public:
  std::vector<PaintedText> texts;
  std::vector<QRectF> marks;

  RecordingEngine() : QPaintEngine(QPaintEngine::AllFeatures) {}
  bool begin(QPaintDevice*) override { return true; }
  bool end() override { return true; }
  Type type() const override { return QPaintEngine::User; }
  void updateState(const QPaintEngineState&) override {}
  void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
  void drawPath(const QPainterPath&) override {}
  void drawLines(const QLineF*, int) override {}
  void drawRects(const QRectF*, int) override {}
  void drawEllipse(const QRectF& rect) override { marks.push_back(rect); }
  void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
    if (mode == ConvexMode) marks.push_back(QPolygonF(QList<QPointF>(points, points + count)).boundingRect());
  }
  // The box of digits and capitals, which are what the page is made of.
  void drawTextItem(const QPointF& at, const QTextItem& item) override {
    const double height = 0.78 * item.ascent();
    const QRectF ink(at.x(), at.y() - height, item.width(), height);
    texts.push_back({item.text(), state->transform().mapRect(ink)});
  }
};

class RecordingDevice : public QImage {
 public:
  explicit RecordingDevice(QSize size) : QImage(size, Format_Mono) {}
  RecordingEngine* paintEngine() const override { return &engine; }
  mutable RecordingEngine engine;
};

void ExpectNothingOverlaps(const StatPage& page, QSize size) {
  RecordingDevice device(size);
  {
    QPainter painter(&device);
    page.Paint(painter, QRectF(QPointF(0, 0), QSizeF(size)));
  }
  const auto& texts = device.engine.texts;
  ASSERT_GT(texts.size(), 20u);
  const QRectF whole(QPointF(0, 0), QSizeF(size));
  for (size_t i = 0; i < texts.size(); ++i) {
    const QRectF ink = texts[i].ink.adjusted(0.5, 0.5, -0.5, -0.5);
    EXPECT_TRUE(whole.contains(ink)) << texts[i].text.toStdString();
    for (size_t j = 0; j < i; ++j) {
      EXPECT_FALSE(ink.intersects(texts[j].ink))
          << texts[i].text.toStdString() << " on " << texts[j].text.toStdString();
    }
    for (const QRectF& mark : device.engine.marks) {
      ASSERT_FALSE(ink.intersects(mark)) << texts[i].text.toStdString() << " on a mark";
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
    ExpectNothingOverlaps(StatPage(data, {.fittedScale = run % 2 == 0}), {1280, 800});
  }
}

TEST(PaintedPage, ShowsEveryMarkedAndEveryOutsidePoint) {
  RecordingDevice device({1280, 800});
  {
    QPainter painter(&device);
    StatPage(PageData::Simple(), {}).Paint(painter, QRectF(0, 0, 1280, 800));
  }
  QStringList texts;
  for (const auto& text : device.engine.texts) texts.append(text.text);
  EXPECT_TRUE(texts.contains(u"1")) << "the rule at the fourth point";
  EXPECT_TRUE(texts.contains(u"1 #8")) << "the arrow of the eighth";
  EXPECT_EQ(device.engine.marks.size(), 16u)
      << "eight points on each chart, an arrow and a diamond among them";
}

}  // namespace
