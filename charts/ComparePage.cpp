#include "charts/ComparePage.h"

#include <algorithm>

#include "charts/ControlChart.h"
#include "charts/Histogram.h"
#include "charts/LimitsOrigin.h"
#include "charts/TextWindow.h"
#include "charts/VerdictStrip.h"
#include "data/Names.h"
#include "data/Statistics.h"
#include "platform/chart/Palette.h"
#include "texts/PageWords.h"

using namespace Qt::StringLiterals;

namespace {

using TextParameters = ChartGraph::TextParameters;
using enum ChartGraph::Alignment;

constexpr std::pair<double, double> sides[] = {{0.005, 0.34}, {0.345, 0.68}, {0.685, 0.995}};

ChartGraph Strip() { return ChartGraph(QRectF(0, 0, 1, 1), false); }

ControlCharts ChartsOf(const CData& data, const QString& letter) {
  ControlCharts charts = SetupControlCharts(data, QCGlobalFunctions::ResultsOf(data), true);
  if (const auto origin = KnownOrigin(data); origin && origin->kind == LimitsOrigin::Points)
    ShowBase(charts, {origin->first, origin->last});
  for (ControlChart* chart : {&charts.xbar, &charts.r})
    chart->title = Words::Comparison::graph(letter, chart->title);
  return charts;
}

// What tells two long names apart stands mostly at their ends.
QString Shortened(const QString& name, qsizetype length) {
  return name.size() <= length ? name : name.left(length / 2) + u'\u2026' + name.right(length / 2);
}

}  // namespace

bool ComparePage::UnitsAgree(const CData& one, const CData& other) {
  return Names::Key(one.UnitOfMeasurement().trimmed()) == Names::Key(other.UnitOfMeasurement().trimmed());
}

ComparePage::ComparePage(const CData& one, const CData& other, const ComparePageOptions& options)
    : description_(Words::Comparison::both(one.Description(), other.Description())),
      heads_{Strip(), Strip(), Strip()},
      verdicts_{Strip(), Strip(), Strip()} {
  const bool isSameScale = options.sameScale && UnitsAgree(one, other);
  const QString letters[] = {Words::Comparison::one(), Words::Comparison::other()};
  const CData* both[] = {&one, &other};
  ControlCharts charts[] = {ChartsOf(one, letters[0]), ChartsOf(other, letters[1])};
  if (isSameScale) {
    ShareScale(charts[0].xbar, charts[1].xbar);
    ShareScale(charts[0].r, charts[1].r);
  }
  for (int column = 0; column < 2; ++column) {
    RecordOf(*both[column], letters[column], column);
    const auto& [left, right] = sides[column];
    DrawGraph(page_.WGCreateGraph(left, 0.005, right, 0.49), charts[column].xbar);
    DrawGraph(page_.WGCreateGraph(left, 0.5, right, 0.99), charts[column].r);
  }
  const auto& [left, right] = sides[2];
  if (isSameScale) {
    DrawHistograms(page_.WGCreateGraph(left, 0.005, right, 0.49), one, other);
  } else {
    const double middle = (left + right) / 2, gap = 0.0025;
    const std::pair<double, double> halves[] = {{left, middle - gap}, {middle + gap, right}};
    for (int half = 0; half < 2; ++half) {
      ChartGraph& graph = page_.WGCreateGraph(halves[half].first, 0.005, halves[half].second, 0.49);
      DrawHistogramGraph(graph, *both[half], QCGlobalFunctions::ResultsOf(*both[half]), letters[half]);
    }
  }
  DrawFiguresOfTwo(page_.WGCreateGraph(left, 0.5, right, 0.99), one, other);
  RecordFacts(one, other, isSameScale, options);
}

void ComparePage::RecordOf(const CData& data, const QString& letter, int column) {
  const auto at = static_cast<size_t>(column);
  const QString name = data.Description();
  QStringList shorter;
  for (const qsizetype length : {60, 44, 32, 24})
    if (length < name.size()) shorter << Words::Comparison::named(letter, Shortened(name, length));
  heads_[at].Draw(ChartGraph::Text{{0.01, 0.5},
                                   LeftMiddle,
                                   Words::Comparison::named(letter, name),
                                   {Palette::Black, 16, 8, 3},
                                   0.98,
                                   shorter});
  DrawVerdict(verdicts_[at], data, KnownOrigin(data), {}, {});
}

// What holds for both, above what shows both.
void ComparePage::RecordFacts(const CData& one, const CData& other, bool isSameScale,
                              const ComparePageOptions& options) {
  const auto unit = [](const CData& data) {
    return data.UnitOfMeasurement().isEmpty() ? Words::Comparison::noUnit() : data.UnitOfMeasurement();
  };
  const bool agree = UnitsAgree(one, other);
  const QString note = isSameScale ? Words::Comparison::sameScale()
                       : agree     ? Words::Comparison::ownScales()
                                   : Words::Comparison::unitsDiffer(unit(one), unit(other));
  const QStringList shorter = agree ? QStringList() : QStringList{Words::Comparison::unitsDifferShort()};
  heads_[2].Draw(ChartGraph::Text{{0.01, 0.5},
                                  LeftMiddle,
                                  note,
                                  {agree ? Palette::Black : Palette::WarningText, 16, 6, 3},
                                  0.98,
                                  shorter});
  const TextParameters small{Palette::Black, 16, 4, 0};
  if (!options.libraryName.isEmpty())
    verdicts_[2].Draw(ChartGraph::Text{
        {0.01, 0.32}, LeftMiddle, Words::Verdict::library(options.libraryName), small, 0.98});
  if (options.printedAt.isValid()) {
    const QString printed = Words::Page::printed(options.printedAt.toString(u"yyyy-MM-dd HH:mm"_s));
    verdicts_[2].Draw(ChartGraph::Text{{0.01, 0.77}, LeftMiddle, printed, small, 0.98});
  }
}

void ComparePage::PaintOut(QPainter& painter, const QRectF& target, double smallestText) const {
  constexpr double lineHeight = 1.3, headPart = 0.04, verdictPart = 0.055;
  const double unit = PageUnit(target);
  const auto line = [&](int size) { return lineHeight * TextPixels(size, unit, smallestText); };
  const double head = std::max(headPart * target.height(), line(8));
  const double verdict = std::max(verdictPart * target.height(), line(7) + line(4));
  painter.fillRect(target, Palette::Colour(Palette::White));
  for (size_t column = 0; column < columns; ++column) {
    const auto& [left, right] = sides[column];
    QRectF area(target.x() + left * target.width(), target.y(), (right - left) * target.width(), head);
    PaintGraph(painter, heads_[column], LayOut(heads_[column], {}, area, unit, smallestText));
    area = QRectF(area.x(), area.bottom(), area.width(), verdict);
    PaintGraph(painter, verdicts_[column], LayOut(verdicts_[column], {}, area, unit, smallestText));
  }
  ChartPage page = page_;
  page.SetSmallestText(smallestText);
  page.Paint(painter, target.adjusted(0, head + verdict, 0, 0));
}
