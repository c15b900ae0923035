#include "core/CData.h"

#include "stats/MathFunctions.h"

double CData::Rounded(double value) const { return MathFunctions::FormatDouble(value, PrecisionValue_); }

double CData::TwoPlaces(double value) { return MathFunctions::FormatDouble(value, 2); }
