// The lines and cells of a raw-data text, and what one of them may be as a number.
#pragma once

#include <QString>
#include <QStringList>

namespace RawDataLines {

inline bool IsLineEnd(QChar character) {
  return character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
         character == QChar::ParagraphSeparator;
}

inline bool EndsCell(QChar character) { return character == u'\t' || character == u';'; }

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

// The digits, their commas and points of a number with both: thousands are set apart in it.
bool HasThousandsSeparators(QStringView text);

// One number as people write it, with either decimal mark; a unit behind it is left out.
struct Readings {
  QString point, comma;  // in the program's notation; empty where it is no number so
  QString unit;

  bool Any() const { return !point.isEmpty() || !comma.isEmpty(); }
};

Readings ReadingsOf(QStringView text);

// What stands between commas, or between blanks; empty unless these are two numbers or more and nothing else.
QStringList NumbersBetweenCommas(QStringView text);
QStringList NumbersBetweenBlanks(QStringView text);

}  // namespace RawDataLines
