#include "data/RawDataLines.h"

#include <QRegularExpression>
#include <algorithm>

#include "data/WrittenNumbers.h"
#include "platform/language/Conversions.h"

using namespace Qt::StringLiterals;

namespace RawDataLines {

namespace {

QStringList IfNumbers(const QStringList& pieces) {
  const bool areNumbers =
      std::ranges::all_of(pieces, [](const QString& piece) { return Conversions::IsNumeric(piece); });
  return pieces.size() > 1 && areNumbers ? pieces : QStringList();
}

}  // namespace

bool HasThousandsSeparators(QStringView text) {
  static const QRegularExpression form(u"^[+-]?\\d{1,3}(?:(?:,\\d{3})+\\.\\d*|(?:\\.\\d{3})+,\\d+)$"_s);
  return text.contains(u',') && text.contains(u'.') && form.match(text).hasMatch();
}

Readings ReadingsOf(QStringView text) {
  Readings readings;
  QStringView number = text.trimmed();
  if (number.isEmpty()) return readings;
  const auto read = [&] {
    readings.point = WrittenNumbers::Read(number, WrittenNumbers::Decimal::Point);
    readings.comma = WrittenNumbers::Read(number, WrittenNumbers::Decimal::Comma);
    return readings.Any();
  };
  if (read()) return readings;
  // A unit may hold single digits, as "m3" and "mm H2O" do. A letter amid digits that looks like one of them
  // is a typing error.
  static const QRegularExpression form(
      u"^([-+\\x{2212}]?[0-9.,'\\x{2019}\\s]*[0-9]\\.?(?:[eE][-+\\x{2212}]?[0-9]+)?)\\s*"
      u"(?!(?<=[0-9.])[oOlI][0-9.])([^\\s0-9.,;:+\\-\\x{2212}](?:[^0-9,;:]|(?<!\\s)[0-9](?![0-9])){0,11})$"_s,
      QRegularExpression::UseUnicodePropertiesOption);
  if (const auto match = form.match(number); match.hasMatch()) {
    number = number.first(match.capturedLength(1));
    if (read()) readings.unit = match.captured(2);
  }
  return readings;
}

QStringList NumbersBetweenCommas(QStringView text) {
  QStringList pieces;
  for (const QStringView piece : text.split(u',')) pieces << piece.trimmed().toString();
  return IfNumbers(pieces);
}

QStringList NumbersBetweenBlanks(QStringView text) {
  return IfNumbers(text.toString().simplified().split(u' '));
}

}  // namespace RawDataLines
