#include "data/CData.h"

#include <algorithm>

#include "data/MathFunctions.h"
#include "engine/Decimal.h"

double CData::Rounded(double value) const { return MathFunctions::FormatDouble(value, PrecisionValue_); }

double CData::TwoPlaces(double value) { return MathFunctions::FormatDouble(value, 2); }

engine::ControlLimits CData::ControlLimits() const {
  return {XBarUCL(), XBarLCL(), XBarMean(), RBarUCL(), RBarLCL(), RBarMean()};
}

void CData::SetControlLimits(const engine::ControlLimits& limits) {
  SetXBarUCL(limits.xBarUpper);
  SetXBarLCL(limits.xBarLower);
  SetXBarMean(limits.xBarCentre);
  SetRBarUCL(limits.rangeUpper);
  SetRBarLCL(limits.rangeLower);
  SetRBarMean(limits.rangeCentre);
}

int CData::SpecificationDecimals() const {
  return std::max({engine::DecimalsRead(UpperSpecLimit_), engine::DecimalsRead(LowerSpecLimit_),
                   engine::DecimalsRead(NominalSpecLimit_)});
}
