#include "charts/VerdictStrip.h"

#include <algorithm>

#include "charts/PointList.h"
#include "charts/TextWindow.h"
#include "platform/chart/Palette.h"
#include "texts/DetectionRules.h"
#include "texts/PageWords.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

// How much of the verdict a line tells.
struct Detail {
  qsizetype mostPieces;     // of the points of each rule, and of the ranges; without, none is named
  bool isTerse = false;     // in as few words as can be
  bool hasAllRules = true;  // rather than the points of the lowest one and the numbers of the others
  bool hasRules = true;
  bool hasState = true;  // and ranges outside beside averages outside
  bool hasCapability = true;
};

QString BrokenRules(const CData& data, const Detail& detail) {
  QStringList numbers, broken;
  for (const int rule : DetectionRules::ActiveRules(data.SensitivityValue())) {
    const std::vector<qint16>& points = data.ViolatingPoints().at(static_cast<size_t>(rule - 1));
    if (points.empty()) continue;
    numbers.append(QString::number(rule));
    broken.append(Words::Verdict::ruleAt(rule, PointList(points, detail.mostPieces)));
  }
  if (broken.isEmpty()) return {};
  if (detail.mostPieces == 0) return Words::Verdict::rules(numbers.join(u", "_s));
  if (detail.hasAllRules || broken.size() == 1) return broken.join(u"; "_s);
  return Words::Verdict::alsoRules(broken.first(), numbers.mid(1).join(u", "_s));
}

QString ActiveRules(const CData& data) {
  QStringList rules;
  for (const int rule : DetectionRules::ActiveRules(data.SensitivityValue()))
    rules.append(QString::number(rule));
  return rules.join(u", "_s);
}

QString RulesInForce(const CData& data) {
  const qint32 sensitivity = data.SensitivityValue();
  const Text<>& name = sensitivity == 0   ? Words::Verdict::low
                       : sensitivity == 1 ? Words::Verdict::medium
                                          : Words::Verdict::high;
  return Words::Verdict::rulesInForce(
      ActiveRules(data), name(),
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

QString ShortFacts(const CData& data, const LimitsOrigin& origin) {
  switch (origin.kind) {
    case LimitsOrigin::AllPoints:
      return Words::Verdict::shortFromAll(ActiveRules(data));
    case LimitsOrigin::Points:
      return Words::Verdict::shortFromPoints(ActiveRules(data), origin.first, origin.last);
    default:
      return Words::Verdict::shortKept(ActiveRules(data));
  }
}

bool AreLimitsReversed(const CData& data) {
  return data.XBarLCL() > data.XBarUCL() || data.RBarLCL() > data.RBarUCL();
}

int VerdictInk(const CData& data) {
  if (data.NumberOfPlotPoints() == 0) return Palette::FaintText;
  if (!data.IsInControl() || AreLimitsReversed(data)) return Palette::WarningText;
  return data.RangesOutside().empty() ? Palette::Green : Palette::Black;
}

QString CapabilityText(const CData& data, bool isTerse) {
  if (!data.Capability().cpk)
    return isTerse ? Words::Verdict::notJudged() : Words::Verdict::notJudgedFor(WhyNoCpk(data));
  const QString cpk = QString::number(data.CPKValue(), 'f', 2);
  return data.CPKValue() >= 1.0 ? Words::Verdict::capable(cpk) : Words::Verdict::notCapable(cpk);
}

QString RangesText(const CData& data, const Detail& detail) {
  if (detail.mostPieces == 0) return Words::Verdict::rangesOutside();
  const QString points = PointList(data.RangesOutside(), detail.mostPieces);
  return detail.isTerse ? Words::Verdict::rangesAtShort(points) : Words::Verdict::rangesAt(points);
}

QString LineWith(const CData& data, const Detail& detail) {
  const bool isReversed = AreLimitsReversed(data);  // what lies beyond such limits tells nothing
  QString verdict = isReversed           ? Words::Verdict::limitsReversed()
                    : data.IsInControl() ? Words::Verdict::inControl()
                                         : Words::Verdict::notInControl();
  const bool hasRules = detail.hasRules && !isReversed && !data.IsInControl();
  const QString broken = hasRules ? BrokenRules(data, detail) : QString();
  if (!broken.isEmpty()) verdict = Words::Verdict::because(verdict, broken);
  QStringList parts{verdict};
  if (detail.hasState) parts.append(ProcessState::Name(data.ProcessState()));
  if (detail.hasCapability) parts.append(CapabilityText(data, detail.isTerse));
  const bool isFirstNews = detail.hasState || data.IsInControl();
  if (isFirstNews && !isReversed && !data.RangesOutside().empty()) parts.append(RangesText(data, detail));
  return parts.join(u" \u00b7 "_s);
}

// The verdict, and the same in fewer and fewer words: for a narrow page.
QStringList VerdictLines(const CData& data) {
  if (data.NumberOfPlotPoints() == 0) return {ProcessState::Name(0)};
  QStringList lines;
  for (const auto& [isTerse, hasAllRules] : {std::pair{false, true}, {true, true}, {true, false}}) {
    for (qsizetype pieces = MostPointPieces; pieces > 0; --pieces)
      lines.append(LineWith(data, {pieces, isTerse, hasAllRules}));
  }
  // Where it is outlives what is told elsewhere: the state, and then the capability.
  for (const bool hasCapability : {true, false}) {
    for (qsizetype pieces = MostPointPieces; pieces > 0; --pieces)
      lines.append(LineWith(data, {pieces, true, false, true, false, hasCapability}));
  }
  for (const bool hasRules : {true, false})
    lines.append(LineWith(data, {0, true, false, hasRules, false, false}));
  lines.removeDuplicates();
  return lines;
}

}  // namespace

void DrawVerdict(ChartGraph& strip, const CData& data, const std::optional<LimitsOrigin>& origin,
                 const QString& scaleNote, const QString& libraryName) {
  using enum ChartGraph::Alignment;
  const auto draw = [&](double y, const QStringList& lines, const ChartGraph::TextParameters& parameters) {
    strip.Draw(ChartGraph::Text{{0.01, y}, LeftMiddle, lines[0], parameters, 0.98, lines.mid(1)});
  };
  draw(0.32, VerdictLines(data), {VerdictInk(data), 16, 7, 3});
  QStringList facts{RulesInForce(data)};
  if (origin) facts.append(OriginText(*origin));
  if (!scaleNote.isEmpty()) facts.append(scaleNote);
  if (!libraryName.isEmpty()) facts.append(Words::Verdict::library(libraryName));
  QStringList shorter = facts;
  shorter[0] = Words::Verdict::rulesInForceShort(ActiveRules(data));
  QStringList lines;
  for (const QStringList& some : {facts, shorter, shorter.mid(0, 3), shorter.mid(0, 2)})
    lines << some.join(u"  \u00b7  "_s);
  if (origin) lines << ShortFacts(data, *origin);
  draw(0.77, lines, {Palette::Black, 16, 4, 0});
}
