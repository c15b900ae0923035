// What the page looks like: every line, mark, bar and text in its colour, its dash and its place, as
// approved.
#include <QRegularExpression>

#include "tests/charts/PageData.h"
#include "tests/support/Approved.h"
#include "tests/support/RecordingDevice.h"

namespace {

QString LineOf(const PaintedShape& shape) {
  static const char* const names[] = {"Line", "Polyline", "Polygon", "Rectangle", "Ellipse", "Text"};
  QStringList words{QString::fromLatin1(names[shape.kind])};
  if (shape.ink.isValid()) words << shape.ink.name();
  if (!shape.dashes.isEmpty()) words << u"dashed"_s;
  if (shape.ink.isValid() && shape.width > 1) words << u"wide"_s;
  if (shape.fill.isValid() && shape.kind != PaintedShape::Text) words << u"filled "_s + shape.fill.name();
  if (shape.font.bold()) words << u"bold"_s;
  if (!shape.text.isEmpty()) words << u'"' + shape.text + u'"';
  QStringList places;
  const bool isText = shape.kind == PaintedShape::Text;
  for (const QPointF at : isText ? QPolygonF{shape.Place().center()} : shape.corners)
    places << QString::number(qRound(at.x())) << QString::number(qRound(at.y()));
  return words.join(u' ') + u'\t' + places.join(u' ');
}

QStringList Painted(const StatPage& page, QRectF target = {0, 0, 1280, 800}) {
  RecordingDevice device(target.size().toSize());
  QPainter painter(&device);
  page.Paint(painter, target);
  QStringList lines;
  for (const PaintedShape& shape : device.Shapes()) lines << LineOf(shape);
  return lines;
}

// Eight points: the fourth breaks a rule, the sixth lies below the scale, the eighth above it and breaks two.
CData Sample() {
  CData data = PageData::Simple();
  SetFigures(data, Cases(u"page.json"_s, u"sample"_s)[0].toObject());
  data.SetRangesOutside({3, 5});
  return data;
}

// A page, and of those like it only what they have and it has not.
TEST(PageLooks, AreAsApproved) {
  const QStringList sample = Painted(PageData::Page(Sample(), {.libraryName = u"line.db"_s}));
  Approved::Expect(u"page"_s, sample);
  const auto expect = [&](const QString& name, auto change, StatPageOptions options = {}) {
    CData data = Sample();
    change(data);
    options.libraryName = u"line.db"_s;
    const QStringList lines = Painted(PageData::Page(data, options));
    Approved::Expect(u"page-"_s + name, Approved::Without(lines, sample) << u"%1 shapes"_s.arg(lines.size()));
  };
  expect(u"part"_s, [](CData&) {}, {.points = PointRange{4, 8}});
  for (const auto& one : Cases(u"page.json"_s, u"looks: name, figures, fitted, without capability"_s)) {
    const auto change = [&](CData& data) {
      SetFigures(data, one[1].toObject());
      if (one[3].toBool()) data.SetCapability({});
    };
    expect(one[0].toString(), change, {.fittedScale = one[2].toBool()});
  }
  expect(u"individuals"_s, [](CData& data) {
    data.SetSubGroupSize(1);
    data.SetViolatingPoints({});
    data.SetRangesOutside({});
    data.SetSensitivityValue(0);
    data.SetDetectionPeriod(0);
    data.SetIsInControl(true);
    data.SetProcessState(4);
  });
  expect(u"no-variation"_s, [](CData& data) {
    data.SetCPKValue(0);
    engine::Capability none;
    none.samplesOutside = 0;
    data.SetCapability(none);
  });
  expect(u"many-marks"_s, [](CData& data) {
    std::vector<qint16> many;
    for (qint16 point = 10001; point < 10400; point = qint16(point + 2)) many.push_back(point);
    data.SetRangesOutside(many);
    data.SetViolatingPoints({many, many, many});
  });
  const QDateTime time(QDate(2024, 5, 18), QTime(9, 7));
  const StatPageOptions printed{.printedHead = true, .pageNumber = 2, .pageCount = 3, .printedAt = time};
  Approved::Expect(u"page-printed"_s, Painted(PageData::Page(Sample(), printed)).first(9));
  StatPage page = PageData::Page(Sample(), {.libraryName = u"line.db"_s});
  page.Select(GraphId::R);
  Approved::Expect(u"page-selected"_s, Approved::Without(Painted(page), sample));
  page.Blowup(GraphId::R);
  Approved::Expect(u"page-alone"_s, Painted(page));
  CData base = PageData::Random({.subgroups = 30});
  QCGlobalFunctions::ClearControlLimits(base);
  base.SetDataStartPoint(4);
  base.SetDataStopPoint(20);
  ASSERT_TRUE(QCGlobalFunctions::CalculateStatistics(base));
  const QRegularExpression ground(u"#eaf1f4|Rules in force"_s);
  Approved::Expect(u"page-base"_s, Painted(StatPage(base, {.fittedScale = true})).filter(ground));
}

TEST(PageLooks, WhereItIsOutOfControlOutlivesWhatIsToldElsewhere) {
  CData data = Sample();
  data.SetRBarLCL(0.6);
  EXPECT_EQ(Painted(PageData::Page(data)).filter(u"WRONG WAY ROUND"_s).size(), 1) << "of the ranges too";
  data = Sample();
  data.SetRangesOutside({3});
  const StatPage page = PageData::Page(data, {});
  const auto verdict = [&](int width) {
    return Painted(page, {0, 0, double(width), 400}).filter(u"CONTROL"_s).value(0).section(u'"', 1, 1);
  };
  int width = 1280;
  while (width > 100 && verdict(width).contains(u"at 4, 8"_s)) width -= 20;
  EXPECT_EQ(verdict(width + 20), u"NOT IN CONTROL: rule 1 at 4, 8; also 2"_s);
  EXPECT_EQ(verdict(width), u"NOT IN CONTROL: rules 1, 2"_s);
}

}  // namespace
