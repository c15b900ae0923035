#include "data/DataStringSteps.h"

#include "platform/language/Conversions.h"

using namespace Qt::StringLiterals;

namespace DataStringSteps {

namespace {

QStringView WithoutBlanks(QStringView text) {
  while (text.startsWith(u' ')) text = text.sliced(1);
  while (text.endsWith(u' ')) text.chop(1);
  return text;
}

}  // namespace

QString ConvertDelimiter(bool toLines, const QString& data, const QString& lineBreak) {
  QString result = data;
  return toLines ? result.replace(u","_s, lineBreak) : result.replace(lineBreak, u","_s);
}

qint16 UpperBound(QStringView data, QChar separator) {
  return Conversions::CInt(static_cast<double>(Conversions::SplitUpperBound(data, separator)));
}

qint16 CountValidValues(const QString& data) {
  if (WithoutBlanks(data).size() < 10) return 0;
  try {
    const qint16 n = UpperBound(data, u',');
    ForEachElement(data, u',', n - 1, [](qint32, QStringView element) { Conversions::CDbl(element); });
    return n;
  } catch (const Conversions::Failure&) {
    return 0;
  }
}

QString RemoveFliers(const QString& data, double loFlier, double hiFlier, bool readsLastElement) {
  QString result;
  try {
    const qint16 n = UpperBound(data, u',');
    const qint32 last = readsLastElement ? n : n - 1;
    result.reserve(data.size());
    ForEachElement(data, u',', last, [&](qint32 i, QStringView element) {
      const double value = Conversions::CDbl(element);
      if (!(loFlier < value && value < hiFlier)) return;
      result += element;
      if (i < last) result += u',';
    });
  } catch (const Conversions::Failure&) {
    // The result as it stands is the answer.
  }
  return result;
}

QString DiscardExcess(const QString& data, qint16 maxSamples, QChar separator) {
  QString result;
  try {
    if (UpperBound(data, separator) < maxSamples) return result;
    ForEachElement(data, separator, maxSamples - 1, [&](qint32 i, QStringView element) {
      if (i > 0) result += u',';
      result += element;
    });
  } catch (const Conversions::Overflow&) {
    // The result as it stands is the answer.
  }
  return result;
}

}  // namespace DataStringSteps
