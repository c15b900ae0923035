#include "charts/VerdictStrip.h"

#include "charts/PointList.h"
#include "platform/chart/Palette.h"
#include "texts/DetectionRules.h"
#include "texts/PageWords.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

QString BrokenRules(const CData& data, qsizetype mostPieces) {
  QStringList broken;
  for (const int rule : DetectionRules::ActiveRules(data.SensitivityValue())) {
    const std::vector<qint16>& points = data.ViolatingPoints().at(static_cast<size_t>(rule - 1));
    if (!points.empty()) broken.append(Words::Verdict::ruleAt(rule, PointList(points, mostPieces)));
  }
  return broken.join(u"; "_s);
}

QString RulesInForce(const CData& data) {
  QStringList rules;
  for (const int rule : DetectionRules::ActiveRules(data.SensitivityValue()))
    rules.append(QString::number(rule));
  const qint32 sensitivity = data.SensitivityValue();
  const Text<>& name = sensitivity == 0   ? Words::Verdict::low
                       : sensitivity == 1 ? Words::Verdict::medium
                                          : Words::Verdict::high;
  return Words::Verdict::rulesInForce(
      rules.join(u", "_s), name(),
      data.DetectionPeriod() == 0 ? Words::Verdict::shortTerm() : Words::Verdict::longTerm());
}

QString OriginText(const LimitsOrigin& origin) {
  switch (origin.kind) {
    case LimitsOrigin::AllPoints:
      return Words::Verdict::limitsFromAll();
    case LimitsOrigin::Points:
      return Words::Verdict::limitsFromPoints(origin.first, origin.last);
    default:
      return Words::Verdict::limitsKept();
  }
}

int VerdictInk(const CData& data) {
  if (data.NumberOfPlotPoints() == 0) return Palette::Grey;
  if (!data.IsInControl()) return Palette::Red;
  return data.RangesOutside().empty() ? Palette::Green : Palette::Black;
}

QString LineWith(const CData& data, qsizetype mostPieces) {
  QString verdict = data.IsInControl() ? Words::Verdict::inControl() : Words::Verdict::notInControl();
  const QString broken = BrokenRules(data, mostPieces);
  if (!data.IsInControl() && !broken.isEmpty()) verdict = Words::Verdict::because(verdict, broken);
  QStringList parts{verdict, ProcessState::Name(data.ProcessState())};
  if (!data.RangesOutside().empty())
    parts.append(Words::Verdict::rangesAt(PointList(data.RangesOutside(), mostPieces)));
  return parts.join(u" \u00b7 "_s);
}

}  // namespace

QString VerdictLine(const CData& data) {
  if (data.NumberOfPlotPoints() == 0) return ProcessState::Name(0);
  // More than that is too small to be read across the page: the lists are shortened before it is.
  constexpr qsizetype longest = 130;
  QString line = LineWith(data, MostPointPieces);
  for (qsizetype pieces = MostPointPieces - 1; line.size() > longest && pieces > 0; --pieces)
    line = LineWith(data, pieces);
  return line;
}

void DrawVerdict(ChartGraph& strip, const CData& data, const std::optional<LimitsOrigin>& origin,
                 const QString& libraryName) {
  using enum ChartGraph::Alignment;
  strip.Draw(
      ChartGraph::Text{{0.01, 0.32}, LeftMiddle, VerdictLine(data), {VerdictInk(data), 16, 7, 3}, 0.98});
  QStringList facts{RulesInForce(data)};
  if (origin) facts.append(OriginText(*origin));
  if (!libraryName.isEmpty()) facts.append(Words::Verdict::library(libraryName));
  strip.Draw(ChartGraph::Text{
      {0.01, 0.77}, LeftMiddle, facts.join(u"  \u00b7  "_s), {Palette::Black, 16, 4, 0}, 0.98});
}
