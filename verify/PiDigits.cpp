#include "verify/PiDigits.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

// A number of many decimals: digits of the base 10^9, the whole part first.
class LongNumber {
 public:
  LongNumber(std::size_t count, quint64 whole) : parts_(count, 0) { parts_[0] = whole; }

  void Divide(quint64 divisor) {
    quint64 rest = 0;
    for (quint64& part : parts_) {
      const quint64 dividend = rest * base + part;
      part = dividend / divisor;
      rest = dividend % divisor;
    }
  }
  void Add(const LongNumber& other) {
    quint64 carry = 0;
    for (std::size_t i = parts_.size(); i-- > 0;) {
      const quint64 sum = parts_[i] + other.parts_[i] + carry;
      parts_[i] = sum % base;
      carry = sum / base;
    }
  }
  void Subtract(const LongNumber& other) {
    quint64 borrow = 0;
    for (std::size_t i = parts_.size(); i-- > 0;) {
      const quint64 lessened = other.parts_[i] + borrow;
      borrow = parts_[i] < lessened;
      parts_[i] += borrow * base - lessened;
    }
  }
  bool IsZero() const {
    return std::all_of(parts_.begin(), parts_.end(), [](quint64 part) { return part == 0; });
  }
  QString Digits() const {
    QString text = QString::number(parts_[0]);
    for (std::size_t i = 1; i < parts_.size(); ++i) text += u"%1"_s.arg(parts_[i], 9, 10, QChar(u'0'));
    return text;
  }

 private:
  static constexpr quint64 base = 1'000'000'000;
  std::vector<quint64> parts_;
};

// factor * arctan(1 / x), by its series.
LongNumber ScaledArcTangent(std::size_t count, quint64 factor, quint64 x) {
  LongNumber power(count, factor);
  power.Divide(x);
  LongNumber sum = power;
  for (quint64 k = 3; !power.IsZero(); k += 2) {
    power.Divide(x * x);
    LongNumber term = power;
    term.Divide(k);
    if (k % 4 == 3) {
      sum.Subtract(term);
    } else {
      sum.Add(term);
    }
  }
  return sum;
}

}  // namespace

// Machin's formula: pi = 16 arctan(1/5) - 4 arctan(1/239).
QString DigitsOfPi(qsizetype count) {
  // Some digits more than wanted take up what the divisions cut off.
  const auto parts = static_cast<std::size_t>(count) / 9 + 4;
  LongNumber pi = ScaledArcTangent(parts, 16, 5);
  pi.Subtract(ScaledArcTangent(parts, 4, 239));
  return pi.Digits().left(count);
}
