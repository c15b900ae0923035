#include "platform/language/Conversions.h"

#include <QVarLengthArray>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

#include "engine/Parse.h"

using namespace Qt::StringLiterals;

namespace Conversions {

namespace {

engine::Reading Read(QStringView text, double& value) {
  QVarLengthArray<char, 64> bytes(text.size());
  std::ranges::transform(text, bytes.begin(), [](QChar character) { return character.toLatin1(); });
  return engine::ReadDecimal({bytes.constData(), static_cast<std::size_t>(bytes.size())}, value);
}

template <class Integer>
Integer RoundTo(double value) {
  // remainder takes the nearest whole number, the even one in the middle, in every rounding mode.
  const double rounded = value - std::remainder(value, 1.0);
  if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max())) {
    throw Overflow();
  }
  return static_cast<Integer>(rounded);
}

}  // namespace

bool IsNumeric(QStringView text) {
  double value = 0;
  return Read(text, value) == engine::Reading::Number;
}

double CDbl(QStringView text) {
  double value = 0;
  switch (Read(text, value)) {
    case engine::Reading::NoNumber:
      throw TypeMismatch();
    case engine::Reading::TooLarge:
      throw Overflow();
    case engine::Reading::Number:
      break;
  }
  return value;
}

qint16 CInt(double value) { return RoundTo<qint16>(value); }
qint16 CInt(QStringView text) { return CInt(CDbl(text)); }
qint32 CLng(double value) { return RoundTo<qint32>(value); }
qint32 CLng(QStringView text) { return CLng(CDbl(text)); }

QString CStr(double value) {
  constexpr int significantDigits = 15;
  if (!std::isfinite(value)) throw Overflow();
  if (value == 0) return u"0"_s;

  // "d.dddE+xx" gives the digits and the power of ten of the first.
  std::array<char, 32> buffer;
  const auto end = std::to_chars(buffer.begin(), buffer.end(), std::fabs(value),
                                 std::chars_format::scientific, significantDigits - 1)
                       .ptr;
  const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  const std::size_t mark = text.find('e');
  int exponent = 0;
  std::from_chars(text.data() + mark + (text[mark + 1] == '+' ? 2 : 1), end, exponent);
  QString digits = QLatin1Char(text[0]) + QString::fromLatin1(text.substr(2, mark - 2));
  while (digits.size() > 1 && digits.endsWith(u'0')) digits.chop(1);

  const QString sign = value < 0 ? u"-"_s : QString();
  const int decimals = static_cast<int>(digits.size()) - 1 - exponent;
  if (exponent >= significantDigits || decimals > significantDigits) {
    if (digits.size() > 1) digits.insert(1, u'.');
    return sign + digits + (exponent < 0 ? u"E-"_s : u"E+"_s) +
           QString::number(std::abs(exponent)).rightJustified(2, u'0');
  }
  if (exponent < 0) digits.prepend(QString(-exponent, u'0'));
  if (decimals < 0) digits.append(QString(-decimals, u'0'));
  if (decimals > 0) digits.insert(digits.size() - decimals, u'.');
  return sign + digits;
}

QString CStr(bool value) { return value ? u"True"_s : u"False"_s; }

qsizetype SplitUpperBound(QStringView text, QChar separator) {
  if (text.isEmpty()) return -1;
  // Counted in stretches whose count fits into 16 bits: so the compiler compares eight characters at a time.
  constexpr qsizetype stretch = 32768;
  qsizetype count = 0;
  for (qsizetype start = 0; start < text.size(); start += stretch) {
    const qsizetype end = std::min(start + stretch, text.size());
    const char16_t* const characters = text.utf16();
    quint16 found = 0;
    for (qsizetype i = start; i < end; ++i)
      found = static_cast<quint16>(found + (characters[i] == separator.unicode()));
    count += found;
  }
  return count;
}

}  // namespace Conversions
