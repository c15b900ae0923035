#include "data/RawDataText.h"

#include <algorithm>
#include <cmath>

#include "data/MathFunctions.h"
#include "data/RawDataLines.h"
#include "platform/language/Conversions.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace RawDataText {

namespace {

constexpr double largestSubGroup = 20;

void Note(Line& first, qsizetype number, QStringView text) {
  if (first.number == 0) first = {number, text.trimmed().toString()};
}

// A line that is no number as it stands.
void ExamineUnclear(qsizetype number, QStringView line, Examination& found) {
  if (std::ranges::any_of(line, RawDataLines::EndsCell)) return Note(found.cells, number, line);
  const bool hasThousands = RawDataLines::HasThousandsSeparators(line);
  if (const auto several = RawDataLines::NumbersBetweenCommas(line); !several.isEmpty() && !hasThousands) {
    // It may be one number with a decimal comma.
    found.values += RawDataLines::ReadingsOf(line).Any() ? 1 : several.size();
    return Note(found.comma, number, line);
  }
  const QList<QStringView> elements = line.split(u',');
  const auto isBlank = [](QStringView element) { return element.trimmed().isEmpty(); };
  if (hasThousands || (std::ranges::none_of(elements, isBlank) && RawDataLines::ReadingsOf(line).Any()))
    return Note(found.unclear, number, line);
  for (const QStringView element : elements) {
    if (Conversions::IsNumeric(element))
      ++found.values;
    else
      Note(found.notANumber, number, element);
  }
}

// Finds the first number that is ten times as large as the one before it and the one behind it, as where a
// decimal point was forgotten. The last one has only one neighbour, and so has the first.
class Neighbours {
 public:
  Neighbours(Line& first, const std::optional<double>& before) : first_(first), before_(before) {}

  void Take(qsizetype number, QStringView line, double value) {
    if (candidate_.number > 0 && IsTenfold(*before_, value)) End();
    candidate_ = {};
    if (first_.number == 0 && (!before_ || IsTenfold(value, *before_))) {
      candidate_ = {number, line.toString()};
      isAlone_ = !before_;
    }
    before_ = value;
  }
  void End() {
    if (candidate_.number > 0) Note(first_, candidate_.number, candidate_.text);
  }
  void EndOfAll() {
    if (!isAlone_) End();
  }

 private:
  static bool IsTenfold(double value, double other) {
    return value * other > 0 && std::abs(value) >= 10 * std::abs(other);
  }

  Line& first_;
  Line candidate_{};
  bool isAlone_ = false;          // no number stands beside the candidate yet
  std::optional<double> before_;  // the number before; that of the candidate where there is one
};

QString FaultIn(const Examination& examination) {
  if (const Line& line = examination.notANumber; line.number > 0) {
    return line.text.isEmpty() ? Words::RawData::halfAComma(line.number)
                               : Words::RawData::notANumber(line.number, Quoted(line.text));
  }
  if (const Line& line = examination.cells; line.number > 0)
    return Words::RawData::severalCells(line.number, Quoted(QString(line.text).replace(u'\t', u'|')));
  if (const Line& line = examination.unclear; line.number > 0)
    return Words::RawData::unclear(line.number, Quoted(line.text));
  if (const Line& line = examination.comma; line.number > 0) {
    return Words::RawData::severalValues(line.number, Quoted(line.text));
  }
  if (const Line& line = examination.tooFine; line.number > 0)
    return Words::RawData::tooFine(line.number, Quoted(line.text), mostDecimals);
  if (const Line& line = examination.beyondFliers; line.number > 0)
    return Words::RawData::beyondFliers(line.number, Quoted(line.text));
  if (const Line& line = examination.tenfold; line.number > 0)
    return Words::RawData::tenfold(line.number, Quoted(line.text));
  return {};
}

QString WithFault(const QString& text, const Examination& examination) {
  const QString fault = examination.Fault();
  return fault.isEmpty() ? text : text + u'\n' + fault;
}

// `count` with the subgroups that so many values make; as it is where the size is not valid.
QString WithSubgroups(const QString& count, qsizetype values, qint16 size) {
  if (size < 1) return count;
  const qsizetype groups = values / size, rest = values % size;
  const QString result =
      groups == 1 ? Words::RawData::oneSubgroup(count, size) : Words::RawData::subgroups(count, groups, size);
  return rest > 0 ? Words::RawData::leftOver(result, rest) : result + u'.';
}

}  // namespace

QString WithEndedLines(const QString& text) {
  QString result;
  result.reserve(text.size() + 2);
  RawDataLines::ForEachLine(text, [&](qsizetype, QStringView line) {
    if (RawDataLines::HasThousandsSeparators(line))
      result += line.toString().replace(u',', u' ');
    else
      result += line;
    result += u"\r\n"_s;
  });
  return result;
}

int DecimalsOf(QStringView text) {
  text = text.trimmed();
  if (!text.contains(u'.') && !text.contains(u'e', Qt::CaseInsensitive)) return 0;
  if (!Conversions::IsNumeric(text)) return 0;
  const auto isExponent = [](QChar character) { return character == u'e' || character == u'E'; };
  const auto end = std::ranges::find_if(text, isExponent);
  const QStringView exponent = end == text.end() ? QStringView() : QStringView(end + 1, text.end());
  const QStringView mantissa(text.begin(), end);
  const qsizetype point = mantissa.indexOf(u'.');
  QStringView whole = point < 0 ? mantissa : mantissa.first(point);
  QStringView behind = point < 0 ? QStringView() : mantissa.sliced(point + 1);
  while (behind.endsWith(u'0')) behind.chop(1);
  qsizetype decimals = behind.size();
  for (; decimals <= 0 && whole.endsWith(u'0') && behind.isEmpty(); whole.chop(1)) --decimals;
  return static_cast<int>(std::clamp<qsizetype>(decimals - exponent.toInt(), 0, 400));
}

bool Examination::IsUnclear() const { return !unclearLines.isEmpty(); }

qsizetype Examination::NamedLine() const {
  for (const Line* line : {&notANumber, &cells, &unclear, &comma, &tooFine, &beyondFliers, &tenfold})
    if (line->number > 0) return line->number;
  return 0;
}

QString Examination::Fault() const {
  const QString fault = FaultIn(*this);
  return unclearLines.size() < 2 ? fault : Words::RawData::unclearLines(unclearLines.size(), fault);
}

Examination Examine(const QString& text, const std::optional<FlierLimits>& fliers,
                    const std::optional<double>& before) {
  Examination found;
  Neighbours neighbours(found.tenfold, before);
  RawDataLines::ForEachLine(text, [&](qsizetype number, QStringView line) {
    if (!Conversions::IsNumeric(line)) {
      found.unclearLines << number;
      return ExamineUnclear(number, line, found);
    }
    ++found.values;
    const double value = Conversions::CDbl(line);
    if (DecimalsOf(line) > mostDecimals) Note(found.tooFine, number, line);
    neighbours.Take(number, line, value);
    if (fliers && !(fliers->low < value && value < fliers->high)) Note(found.beyondFliers, number, line);
  });
  neighbours.EndOfAll();
  return found;
}

FlierLimits FliersBeyond(double lower, double upper) {
  // Without the binary noise of 0.4 + (0.4 - 0.1).
  const auto rounded = [](double limit) {
    return std::isfinite(limit) ? MathFunctions::FormatDouble(limit, mostDecimals) : limit;
  };
  return {rounded(lower - (upper - lower)), rounded(upper + (upper - lower))};
}

QList<qsizetype> SubgroupStarts(const QString& text, qint16 size, qsizetype before) {
  QList<qsizetype> starts;
  qsizetype values = before;
  RawDataLines::ForEachLine(text, [&](qsizetype number, QStringView line) {
    const qsizetype here = Conversions::IsNumeric(line) ? 1 : RawDataLines::NumbersBetweenCommas(line).size();
    if (values > 0 && here > 0 && values % size == 0) starts << number;
    values += here;
  });
  return starts;
}

QString Quoted(const QString& text) {
  constexpr qsizetype longest = 24;
  const QString shown = text.size() > longest ? text.left(longest) + u'…' : text;
  return u"\"\u2068"_s + shown + u"\u2069\""_s;
}

QString Describe(const Examination& examination, const QString& subGroupSize) {
  const qsizetype values = examination.values;
  if (values == 0 && examination.IsUnclear()) return examination.Fault();
  QString result = values == 0   ? Words::RawData::noValues()
                   : values == 1 ? Words::RawData::oneValue()
                                 : Words::RawData::values(values);
  if (values > mostValues)
    result = Words::RawData::tooMany(result, mostValues);
  else if (values > 0)
    result = WithSubgroups(result, values, SubGroupSize(subGroupSize));
  return WithFault(result, examination);
}

QString DescribeAdded(const Examination& examination, qsizetype before, qint16 subGroupSize) {
  const qsizetype values = examination.values, all = before + values;
  QString result = values == 1 ? Words::RawData::oneNewValue(all) : Words::RawData::newValues(values, all);
  result = all > mostValues ? Words::RawData::tooMany(result, mostValues)
                            : WithSubgroups(result, all, subGroupSize);
  return WithFault(result, examination);
}

QString PointsMissing(qsizetype samples, qint16 subGroupSize) {
  if (samples == 0 || subGroupSize == 0 || samples / subGroupSize >= fewestPoints) return {};
  const qsizetype points = samples / subGroupSize, missing = fewestPoints * subGroupSize - samples;
  using namespace Words::RawData;
  return pointsMissing(samples == 1 ? oneSampleMakes() : samplesMake(samples),
                       points == 1 ? onePoint() : manyPoints(points), fewestPoints,
                       missing == 1 ? oneMore() : manyMore(missing));
}

qint16 SubGroupSize(const QString& text) {
  if (!Conversions::IsNumeric(text)) return 0;
  const double size = Conversions::CDbl(text);
  return size >= 1 && size <= largestSubGroup && size == static_cast<int>(size) ? Conversions::CInt(size) : 0;
}

}  // namespace RawDataText
