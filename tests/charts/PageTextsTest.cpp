// What stands beside the control charts: the histogram, the summary, the verdict and the head.
#include <gtest/gtest.h>

#include "charts/StatPage.h"
#include "tests/charts/PaintedPages.h"

using namespace Qt::StringLiterals;
using namespace PaintedPages;

namespace {

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
  // At the end of the scale it would lie under the axis.
  data.SetHistoLoScaleValue(data.LowerSpecLimit() - 1e-9);
  data.SetLowerSpecLimit(data.HistoLoScaleValue());
  data.SetUpperSpecLimit(data.HistoHiScaleValue());
  const auto dashed = [](const Painted& page) {
    return page.device.Where([&](const PaintedShape& shape) {
      return !shape.dashes.isEmpty() && page.Frame(GraphId::Histogram).contains(shape.Place().center());
    });
  };
  const Painted painted(data);
  const auto lines = dashed(painted);
  ASSERT_EQ(lines.size(), 2u);
  const QRectF plot = painted.Plot(GraphId::Histogram);
  EXPECT_TRUE(lines[0].Place().left() >= plot.left() + 1 && lines[0].Place().left() <= plot.left() + 3);
  EXPECT_NEAR(lines[1].Place().left(), plot.right(), 0.01);
  data.SetUpperSpecLimit(data.UpperSpecLimit() + 0.5);
  EXPECT_EQ(dashed(Painted(data)).size(), 1u) << "beyond it there is none";
}

TEST(PageLooks, EachBarStandsOverItsOwnBinAsHighAsItsCount) {
  CData data = Sample();
  data.SetHistogramBinValuesOutputString(u"0,7,1,2,0,4,3,12,1,0,0,5"_s);
  const Painted painted(data);
  EXPECT_EQ(painted.page.Page().Graph(int(GraphId::Histogram)).Scale().bottom(), 20) << "no bar is cut off";
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
  data.SetCPKValue(1.5);
  data.SetIsInControl(true);
  data.SetRangesOutside({3});
  Painted(data).Text(u"caution: ranges outside"_s);
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
    EXPECT_TRUE(painted.Of(Kind::Text, QRectF(0, 0, 1280, 30))[0].text.endsWith(
        u" \u00b7 capability not judged: "_s + reason));
    size_t said = 0, without = 0;
    for (const PaintedShape& text : painted.Of(Kind::Text, painted.Frame(GraphId::Text))) {
      EXPECT_NE(text.ink, red) << text.text.toStdString();
      said += text.text == reason;
      without += text.text == u"none given";
      EXPECT_TRUE((text.text != reason && text.text != u"none given") || text.ink == grey);
    }
    EXPECT_EQ(said, reasons) << reason.toStdString();
    EXPECT_EQ(without, notGiven);
  }
}

TEST(PageLooks, WhereItIsOutOfControlOutlivesWhatIsToldElsewhere) {
  CData data = Sample();
  data.SetRangesOutside({3});
  const StatPage page = PageData::Page(data, {});
  const auto verdict = [&](int width) {
    const QRectF small(0, 0, width, 400);
    RecordingDevice device{small.size().toSize()};
    QPainter painter(&device);
    page.Paint(painter, small);
    const auto texts =
        device.Where([](const PaintedShape& shape) { return shape.text.contains(u"CONTROL"); });
    return texts.empty() ? QString() : texts[0].text;
  };
  int width = 1280;
  while (width > 100 && verdict(width).contains(u"at 4, 8"_s)) width -= 20;
  EXPECT_EQ(verdict(width + 20), u"NOT IN CONTROL: rule 1 at 4, 8; also 2"_s);
  EXPECT_EQ(verdict(width), u"NOT IN CONTROL: rules 1, 2"_s);
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
  EXPECT_EQ(
      texts[0].text,
      u"NOT IN CONTROL: rule 1 at 4, 8; rule 2 at 8 \u00b7 Brink of chaos \u00b7 capable (Cpk 1.00) \u00b7 "
      u"ranges beyond their limits at 3"_s);
  EXPECT_TRUE(texts[0].ink == red && texts[0].font.bold());
  EXPECT_EQ(texts[1].text,
            u"Rules in force: 1, 2, 3, 4 (high sensitivity, long term: all points)  \u00b7  "
            u"Limits kept as stored  \u00b7  Library: line.db"_s);

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
  EXPECT_EQ(texts[0].text, u"IN CONTROL \u00b7 Ideal \u00b7 capable (Cpk 1.00)");
  EXPECT_EQ(texts[0].ink, green);
  data.SetXBarLCL(11);
  texts = lines(data);
  EXPECT_TRUE(texts[0].text.startsWith(u"LIMITS STAND THE WRONG WAY ROUND") && texts[0].ink == red);

  data = Sample();
  std::vector<qint16> many;
  for (qint16 point = 10001; point < 10400; point = qint16(point + 2)) many.push_back(point);
  data.SetRangesOutside(many);
  data.SetViolatingPoints({many, many, many});
  texts = lines(data);
  EXPECT_TRUE(texts[0].text.contains(u"rule 1 at 10001, 10003") &&
              texts[0].text.contains(u" more; also 2, 3 \u00b7") &&
              texts[0].text.contains(u"ranges outside at 10001"))
      << texts[0].text.toStdString();
  data.SetRangesOutside({});
  EXPECT_TRUE(lines(data)[0].text.contains(u"; rule 3 at 10001")) << lines(data)[0].text.toStdString();
  EXPECT_TRUE(lines(PageData::Random({})).at(1).text.contains(u"Limits calculated from all points"_s));
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

}  // namespace
