#include "data/MathFunctions.h"

#include <cmath>
#include <functional>
#include <stdexcept>

#include "engine/Decimal.h"
#include "platform/language/Conversions.h"

namespace MathFunctions {

namespace {

template <class IsBetter>
double FindDouble(std::span<const double> values, qint32 count, IsBetter isBetter) {
  const qint16 last = Conversions::CInt(count - 1.0);
  if (values.empty() || last >= std::ssize(values)) throw std::out_of_range("Subscript out of range");
  double found = values.front();
  for (qint32 i = 0; i <= last; ++i) {
    const double value = values[static_cast<std::size_t>(i)];
    if (isBetter(value, found)) found = value;
  }
  return found;
}

}  // namespace

double FindDoubleMin(std::span<const double> values, qint32 count) {
  return FindDouble(values, count, std::less());
}

double FindDoubleMax(std::span<const double> values, qint32 count) {
  return FindDouble(values, count, std::greater());
}

double FormatDouble(double value, qint16 places) {
  if (places < 1 || places > 8 || !std::isfinite(value)) return 0;
  return engine::RoundToPlaces(value, places);
}

}  // namespace MathFunctions
