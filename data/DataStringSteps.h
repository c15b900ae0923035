// The steps that both copies of the raw-data routines take, each with the point in which the copies differ as
// an argument.
//
// A raw-data text counts n values, n being the upper bound of its zero-based elements, that is the number of
// its separators: a last value without one behind it is not counted. Counters are 16-bit. A failure on the
// way (a text that is no number where one is needed, n above 32767) ends a step with the result as it stood.
#pragma once

#include <QString>

namespace DataStringSteps {

QString ConvertDelimiter(bool toLines, const QString& data, const QString& lineBreak);

// n, or 0 where the text without the blanks at its ends is shorter than 10 characters or one of the first n
// elements is no number.
qint16 CountValidValues(const QString& data);

// The elements strictly between the limits, each followed by "," but for the last one read. That is element n
// where readsLastElement, else the one before it.
QString RemoveFliers(const QString& data, double loFlier, double hiFlier, bool readsLastElement);

// The first maxSamples elements joined by ","; empty where n is below maxSamples.
QString DiscardExcess(const QString& data, qint16 maxSamples, QChar separator);

// n; Conversions::Overflow above 32767.
qint16 UpperBound(QStringView data, QChar separator);

// Calls use(index, element) for the elements 0 to `last`.
template <class Use>
void ForEachElement(QStringView data, QChar separator, qint32 last, Use&& use) {
  qsizetype start = 0;
  for (qint32 i = 0; i <= last; ++i) {
    const qsizetype found = data.indexOf(separator, start);
    const qsizetype end = found < 0 ? data.size() : found;
    use(i, data.sliced(start, end - start));
    start = end + 1;
  }
}

}  // namespace DataStringSteps
