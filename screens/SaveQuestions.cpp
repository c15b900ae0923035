#include "screens/SaveQuestions.h"

#include <QRegularExpression>
#include <algorithm>

#include "data/RawDataText.h"
#include "data/Statistics.h"
#include "platform/language/Conversions.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;
namespace W = Words::Saving;

namespace SaveQuestions {

namespace {

constexpr qsizetype mostNamed = 6;

QStringList SamplesOf(const QString& values) { return values.split(u',', Qt::SkipEmptyParts); }

// Apart from the samples by more than these and the limits are wide.
bool LieFarApart(const CData& data, double lower, double upper) {
  const double gap = std::max(data.MinValue() - upper, lower - data.MaxValue());
  return gap > std::max(data.MaxValue() - data.MinValue(), upper - lower);
}

QString Number(double value) { return Conversions::CStr(value); }

QString Joined(const QStringList& texts) {
  if (texts.size() < 2) return texts.join(QString());
  QString result = texts[0];
  for (qsizetype i = 1; i + 1 < texts.size(); ++i) result = W::commaBetween(result, texts[i]);
  return W::andBetween(result, texts.back());
}

bool IsIn1252(QChar character) {
  const char16_t code = character.unicode();
  return code < 0x80 || (code >= 0xA0 && code <= 0xFF) ||
         u"€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ"_s.contains(character);
}

}  // namespace

QString DoubtfulComma(const RawDataReadings::Doubt& doubt) {
  const QString line = RawDataText::Quoted(doubt.line), several = Joined(doubt.severalValues);
  const QString thousands =
      doubt.thousands.isEmpty() ? QString() : u"\r\n"_s + W::orThousands(doubt.thousands);
  if (doubt.more == 0) return W::oneValueOrSeveral(doubt.number, line, doubt.oneValue, several) + thousands;
  return W::oneValueOrSeveralEach(doubt.number, line, doubt.oneValue, several, doubt.more + 1) + thousands;
}

QString Fliers(const QString& values, const CData& data, qint16 subGroupSize) {
  const QStringList samples = SamplesOf(values);
  QStringList named;
  qsizetype count = 0;
  for (qsizetype i = 0; i < samples.size(); ++i) {
    const double value = Conversions::CDbl(samples[i]);
    if (data.LoFlier() < value && value < data.HiFlier()) continue;
    if (++count <= mostNamed) named << W::sampleAt(samples[i], i + 1);
  }
  if (count == 0) return {};
  QString text = count == 1 ? W::oneFlier(Number(data.LoFlier()), Number(data.HiFlier()))
                            : W::fliers(count, Number(data.LoFlier()), Number(data.HiFlier()));
  text += u"\r\n"_s + (count > mostNamed ? W::andMore(named.join(W::listComma()), count - mostNamed)
                                         : named.join(W::listComma()));
  if (subGroupSize > 1) text += u"\r\n\r\n"_s + W::subgroupsShift();
  return text + u"\r\n\r\n"_s + W::discardThem();
}

QString Excess(const QString& values, qint16 kept) {
  const QStringList samples = SamplesOf(values);
  const qsizetype dropped = samples.size() - kept;
  if (dropped <= 0) return W::noneIsDropped(samples.size());
  QStringList named = samples.sliced(kept, std::min(dropped, mostNamed));
  const QString list = dropped > mostNamed ? W::andMore(named.join(W::listComma()), dropped - mostNamed)
                                           : named.join(W::listComma());
  return W::lastAreDropped(dropped, samples.size(), list, kept);
}

QString StrangeLimits(const CData& data, bool keepsControlLimits, const CData* before) {
  if (data.NumberOfPlotPoints() == 0) return {};
  QStringList strange;
  const auto checkPlace = [&](const QString& what, double lower, double upper) {
    if (LieFarApart(data, lower, upper))
      strange << W::farFromSamples(what, Number(lower), Number(upper), Number(data.MinValue()),
                                   Number(data.MaxValue()));
  };
  const auto checkOrder = [&](const QString& what, double lower, double centre, double upper) {
    if (lower >= upper)
      strange << W::wrongWayRound(what, Number(lower), Number(upper));
    else if (centre < lower || centre > upper)
      strange << W::meanOutside(what, Number(centre), Number(lower), Number(upper));
  };
  checkPlace(W::specLimits(), data.LowerSpecLimit(), data.UpperSpecLimit());
  if (data.LoFlier() >= data.HiFlier())
    strange << W::wrongWayRound(W::flierLimits(), Number(data.LoFlier()), Number(data.HiFlier()));
  if (keepsControlLimits) {
    const engine::ControlLimits limits = data.ControlLimits();
    checkOrder(W::averageLimits(), limits.xBarLower, limits.xBarCentre, limits.xBarUpper);
    checkOrder(W::rangeLimits(), limits.rangeLower, limits.rangeCentre, limits.rangeUpper);
    checkPlace(W::averageLimits(), limits.xBarLower, limits.xBarUpper);
    const bool areThose =
        before && before->XBarLCL() == data.XBarLCL() && before->XBarUCL() == data.XBarUCL();
    if (areThose && before->SubGroupSize() != data.SubGroupSize())
      strange << W::limitsOfOtherSize(before->SubGroupSize(), data.SubGroupSize());
  }
  if (strange.isEmpty()) return {};
  return strange.join(u"\r\n"_s) + u"\r\n\r\n"_s + W::saveAllTheSame();
}

bool IsKeptAsTyped(const QString& typed, double kept) {
  constexpr qsizetype mostDigits = 15;
  QString digits = typed.section(u'e', 0, 0, QString::SectionCaseInsensitiveSeps);
  digits.remove(QRegularExpression(u"\\D"_s)).remove(QRegularExpression(u"^0+|0+$"_s));
  return Conversions::CDbl(typed) == kept && digits.size() <= mostDigits;
}

QString ReplacedLimits(const CData& before, const CData& after) {
  const engine::ControlLimits old = before.ControlLimits(), now = after.ControlLimits();
  QStringList texts;
  if (old.xBarLower != now.xBarLower || old.xBarUpper != now.xBarUpper)
    texts << W::limitsWere(Number(old.xBarLower), Number(old.xBarUpper), Number(now.xBarLower),
                           Number(now.xBarUpper));
  if (old.rangeLower != now.rangeLower || old.rangeUpper != now.rangeUpper)
    texts << W::rangeLimitsWere(Number(old.rangeLower), Number(old.rangeUpper), Number(now.rangeLower),
                                Number(now.rangeUpper));
  return texts.join(u"\r\n"_s);
}

QString LimitsHint(const CData& data, std::optional<int> basePoints) {
  constexpr int enoughPoints = QCGlobalFunctions::pointsForLimits;
  const int points = basePoints.value_or(data.NumberOfPlotPoints());
  const engine::ControlLimits limits = data.ControlLimits();
  if (data.NumberOfPlotPoints() == 0) return {};
  if (limits.xBarLower == limits.xBarUpper) return Words::Adding::withoutWidth(data.PrecisionValue());
  if (const auto few = QCGlobalFunctions::FewPointsOfLimits(data))
    return Words::Adding::restOnFew(*few, data.NumberOfPlotPoints());
  return points < enoughPoints ? Words::Adding::preliminary(points) : QString();
}

QString Unit(const QString& unit, const QStringList& list, const CData* before) {
  if (list.contains(unit) || (before && before->UnitOfMeasurement() == unit)) return unit;
  QString result = unit;
  for (QChar& character : result)
    if (const QChar capital = character.toUpper(); IsIn1252(capital)) character = capital;
  return result;
}

}  // namespace SaveQuestions
