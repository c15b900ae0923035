#include "data/RawDataText.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>

#include "platform/language/Conversions.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace RawDataText {

namespace {

constexpr qsizetype longestQuote = 24;
constexpr double largestSubGroup = 20;

bool IsLineEnd(QChar character) {
  return character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
         character == QChar::ParagraphSeparator;
}

bool EndsField(QChar character) { return IsLineEnd(character) || character == u'\t' || character == u';'; }

bool Matches(const QRegularExpression& form, QStringView text) { return form.match(text).hasMatch(); }

bool HasThousandsSeparators(QStringView text) {
  static const QRegularExpression form(u"^[+-]?\\d{1,3}(?:(?:,\\d{3})+\\.\\d*|(?:\\.\\d{3})+,\\d+)$"_s);
  return text.contains(u',') && Matches(form, text);
}

bool HasDecimalComma(QStringView text) {
  static const QRegularExpression form(u"^[+-]?\\d*,\\d+(?:[eE][+-]?\\d+)?$"_s);
  return text.contains(u',') && Matches(form, text);
}

bool IsListOfNumbers(QStringView text) {
  static const QRegularExpression form(u"^[-+\\d.,eE\\s]*$"_s);
  return text.contains(u',') && Matches(form, text);
}

QStringList Fields(const QString& text) {
  QStringList fields;
  for (auto start = text.cbegin();;) {
    const auto end = std::find_if(start, text.cend(), EndsField);
    const QStringView field = QStringView(start, end).trimmed();
    if (!field.isEmpty()) fields << field.toString();
    if (end == text.cend()) return fields;
    start = end + 1;
  }
}

// Fields that are no numbers, such as a column's heading, have no say in it.
bool CommasAreDecimal(const QStringList& fields) {
  const auto speaksAgainst = [](const QString& field) {
    if (HasDecimalComma(field) || HasThousandsSeparators(field)) return false;
    return IsListOfNumbers(field) || (field.contains(u'.') && Conversions::IsNumeric(field));
  };
  return std::ranges::any_of(fields, HasDecimalComma) && std::ranges::none_of(fields, speaksAgainst);
}

QStringList SplitAtCommas(const QString& field) {
  if (!field.contains(u',') || HasThousandsSeparators(field)) return {field};
  QStringList values;
  for (const QString& part : field.split(u','))
    if (const QString value = part.trimmed(); !value.isEmpty()) values << value;
  const bool anyNumber =
      std::ranges::any_of(values, [](const QString& value) { return Conversions::IsNumeric(value); });
  return anyNumber ? values : QStringList{field};
}

// Calls use(number, line) for every line that is not blank, without the blanks at its ends.
template <class Use>
void ForEachLine(const QString& text, Use&& use) {
  qsizetype number = 1;
  for (qsizetype start = 0; start <= text.size(); ++number) {
    qsizetype end = start;
    while (end < text.size() && !IsLineEnd(text[end])) ++end;
    const QStringView line = QStringView(text).sliced(start, end - start).trimmed();
    if (!line.isEmpty()) use(number, line);
    const bool isPair = end + 1 < text.size() && text[end] == u'\r' && text[end + 1] == u'\n';
    start = end + (isPair ? 2 : 1);
  }
}

void ExamineElement(qsizetype number, QStringView element, Examination& found) {
  if (Conversions::IsNumeric(element))
    ++found.values;
  else if (found.notANumber.number == 0)
    found.notANumber = {number, element.trimmed().toString()};
}

// The text in quotes, kept from turning the sentence around it where it is written from right to left.
QString Quoted(const QString& text) {
  const QString shown = text.size() > longestQuote ? text.left(longestQuote) + u'…' : text;
  return u"\"\u2068"_s + shown + u"\u2069\""_s;
}

QString FaultIn(const Examination& examination) {
  if (const Line& line = examination.notANumber; line.number > 0) {
    return line.text.isEmpty() ? Words::RawData::halfAComma(line.number)
                               : Words::RawData::notANumber(line.number, Quoted(line.text));
  }
  if (const Line& line = examination.comma; line.number > 0) {
    return Words::RawData::severalValues(line.number, Quoted(line.text));
  }
  return {};
}

}  // namespace

QString FromPasted(const QString& pasted) {
  QStringList values = Fields(pasted);
  if (CommasAreDecimal(values)) {
    for (QString& value : values)
      if (HasDecimalComma(value)) value.replace(u',', u'.');
  } else {
    QStringList split;
    for (const QString& field : values) split << SplitAtCommas(field);
    values = split;
  }
  const bool lastIsEnded = !pasted.isEmpty() && EndsField(pasted.back());
  return values.join(u'\n') + (lastIsEnded && !values.isEmpty() ? u"\n"_s : QString());
}

QString WithEndedLines(const QString& text) {
  QString result;
  result.reserve(text.size() + 2);
  ForEachLine(text, [&](qsizetype, QStringView line) {
    if (HasThousandsSeparators(line))
      result += line.toString().replace(u',', u' ');
    else
      result += line;
    result += u"\r\n"_s;
  });
  return result;
}

Examination Examine(const QString& text) {
  Examination found;
  ForEachLine(text, [&](qsizetype number, QStringView line) {
    if (!line.contains(u',') || HasThousandsSeparators(line)) {
      ExamineElement(number, line, found);
    } else {
      if (found.comma.number == 0) found.comma = {number, line.toString()};
      for (const QStringView element : line.split(u',')) ExamineElement(number, element, found);
    }
  });
  return found;
}

QString Describe(const Examination& examination, const QString& subGroupSize) {
  const qsizetype values = examination.values;
  QString result = values == 0   ? Words::RawData::noValues()
                   : values == 1 ? Words::RawData::oneValue()
                                 : Words::RawData::values(values);
  if (values > mostValues) {
    result = Words::RawData::tooMany(result, mostValues);
  } else if (const qint16 size = SubGroupSize(subGroupSize); size > 0 && values > 0) {
    const qsizetype groups = values / size, rest = values % size;
    result = groups == 1 ? Words::RawData::oneSubgroup(result, size)
                         : Words::RawData::subgroups(result, groups, size);
    result = rest > 0 ? Words::RawData::leftOver(result, rest) : result + u'.';
  }
  const QString fault = FaultIn(examination);
  return fault.isEmpty() ? result : result + u'\n' + fault;
}

qint16 SubGroupSize(const QString& text) {
  if (!Conversions::IsNumeric(text)) return 0;
  const double size = Conversions::CDbl(text);
  return size >= 1 && size <= largestSubGroup && size == static_cast<int>(size) ? Conversions::CInt(size) : 0;
}

}  // namespace RawDataText
