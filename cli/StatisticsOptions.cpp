#include "cli/StatisticsOptions.h"

#include "platform/error/Error.h"

using namespace Qt::StringLiterals;

namespace StatisticsOptions {

QStringList Names() { return {u"usl"_s, u"lsl"_s, u"subgroup"_s, u"sensitivity"_s, u"period"_s}; }

void CheckSpecLimits(const Arguments& arguments) {
  if (arguments.RequiredNumber(u"lsl"_s) < arguments.RequiredNumber(u"usl"_s)) return;
  throw InputError(u"the lower specification limit %1 is not below the upper one %2"_s.arg(
      arguments.Value(u"lsl"_s), arguments.Value(u"usl"_s)));
}

int SubGroupSize(const Arguments& arguments) { return arguments.Integer(u"subgroup"_s, 1, 1, 20); }

engine::Sensitivity Sensitivity(const Arguments& arguments) {
  return static_cast<engine::Sensitivity>(
      arguments.Choice(u"sensitivity"_s, {u"low"_s, u"medium"_s, u"high"_s}, 1));
}

engine::DetectionPeriod Period(const Arguments& arguments) {
  return static_cast<engine::DetectionPeriod>(arguments.Choice(u"period"_s, {u"short"_s, u"long"_s}, 1));
}

WrittenNumbers::Notation Notation(const Arguments& arguments) {
  using WrittenNumbers::Decimal;
  WrittenNumbers::Notation notation;
  const int decimal = arguments.Choice(u"decimal"_s, {u"point"_s, u"comma"_s}, -1);
  if (decimal >= 0) notation.decimal = decimal == 0 ? Decimal::Point : Decimal::Comma;
  const int separator = arguments.Choice(u"separator"_s, {u"comma"_s, u"semicolon"_s, u"tab"_s}, -1);
  if (separator >= 0) notation.separator = u",;\t"_s[separator];
  return notation;
}

}  // namespace StatisticsOptions
