#include "data/CData.h"

#include <algorithm>

#include "data/MathFunctions.h"
#include "engine/Decimal.h"

engine::ControlLimits CData::ControlLimits() const {
  return {XBarUCL(), XBarLCL(), XBarMean(), RBarUCL(), RBarLCL(), RBarMean()};
}

int CData::SpecificationDecimals() const {
  return std::max({engine::DecimalsRead(upperSpecLimit_), engine::DecimalsRead(lowerSpecLimit_),
                   engine::DecimalsRead(nominalSpecLimit_)});
}

double CData::Rounded(double value) const { return MathFunctions::FormatDouble(value, precisionValue_); }

double CData::WithTwoDecimals(double value) { return MathFunctions::FormatDouble(value, 2); }
