// A page of a data set written out by hand, as painted: its shapes, and where they belong.
#pragma once

#include <gtest/gtest.h>

#include "charts/StatPage.h"
#include "tests/charts/PageData.h"
#include "tests/support/RecordingDevice.h"

using namespace Qt::StringLiterals;

namespace PaintedPages {

using Kind = PaintedShape::Kind;

inline constexpr QRectF target(0, 0, 1280, 800);
inline const QColor black(0, 0, 0), blue(0, 0, 255), red(255, 0, 0), teal(0, 128, 128), green(0, 128, 0),
    grey(128, 128, 128), lightGrey(192, 192, 192), white(255, 255, 255);
inline constexpr GraphId charts[] = {GraphId::XBar, GraphId::R};

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
inline CData Sample() {
  CData data = PageData::Simple();
  data.SetXBarOutputString(u"10.0,12.1,5.9,18,10.0,-30,10.2,50.0"_s);
  data.SetHistoLoScaleValue(8);
  data.SetHistoHiScaleValue(13);
  return data;
}

struct Wanted {
  QString text;
  double x, y;  // where it starts, or ends, and its middle
  QColor ink;
};

inline void ExpectTexts(const Painted& painted, const QRectF& area, const std::vector<Wanted>& wanted) {
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

}  // namespace PaintedPages
