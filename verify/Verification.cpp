#include "verify/Verification.h"

#include <QLocale>
#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace Verification {

namespace {

QString Written(double value) { return QString::number(value, 'g', QLocale::FloatingPointShortest); }

QString FifteenDigits(double value) { return QString::number(value, 'g', mostDigits); }

}  // namespace

double AgreedDigits(double expected, double actual) {
  if (!std::isfinite(actual)) return 0;
  if (FifteenDigits(actual) == FifteenDigits(expected)) return mostDigits;
  const double error = std::fabs(actual - expected);
  const double digits = -std::log10(expected == 0 ? error : error / std::fabs(expected));
  return std::clamp(digits, 0.0, double{mostDigits});
}

Quantity Quantity::OfNumbers(const QString& name, const QString& expected, double actual) {
  return {name, expected, Written(actual), AgreedDigits(expected.toDouble(), actual)};
}

Quantity Quantity::OfNumbers(const QString& name, double expected, double actual) {
  return OfNumbers(name, Written(expected), actual);
}

Quantity Quantity::OfTexts(const QString& name, const QString& expected, const QString& actual) {
  return {name, expected, actual, actual == expected ? double{mostDigits} : 0.0};
}

double Check::Digits() const {
  const auto least =
      std::min_element(quantities.begin(), quantities.end(),
                       [](const Quantity& a, const Quantity& b) { return a.digits < b.digits; });
  return least == quantities.end() ? 0 : least->digits;
}

bool AllPassed(const std::vector<Check>& checks) {
  return !checks.empty() &&
         std::all_of(checks.begin(), checks.end(), [](const Check& check) { return check.Passed(); });
}

}  // namespace Verification
