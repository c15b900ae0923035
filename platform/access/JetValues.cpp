// The types of an Access table's columns, and what the stored bytes of each mean.
#include "platform/access/JetValues.h"

#include <QDate>
#include <QTime>
#include <cmath>

#include "platform/access/JetBytes.h"

using namespace Qt::StringLiterals;
using JetBytes::Get;

namespace {

[[noreturn]] void ThrowOddText() { throw JetError(u"a text ends within a character"_s); }

// Compressed text starts with one byte a character; a zero byte switches to two bytes a character and back. A
// switch for no character at all is a damaged byte: a number's last digit would be lost.
QString Expand(QByteArrayView bytes) {
  QString text;
  text.reserve(bytes.size());
  bool wide = false;
  bool justWidened = false;
  for (qsizetype at = 0; at < bytes.size();) {
    const auto low = Get<quint8>(bytes, at);
    if (low == 0) {
      if (justWidened) ThrowOddText();
      wide = justWidened = !wide;
      ++at;
    } else if (!wide) {
      text += QChar(char16_t{low});
      ++at;
    } else if (at + 1 == bytes.size()) {
      ThrowOddText();
    } else {
      text += QChar(Get<quint16>(bytes, at));
      justWidened = false;
      at += 2;
    }
  }
  if (justWidened) ThrowOddText();
  return text;
}

}  // namespace

int JetValues::FixedSize(JetType type) {
  switch (type) {
    case JetType::YesNo:
    case JetType::Byte:
      return 1;
    case JetType::Integer:
      return 2;
    case JetType::Long:
    case JetType::Single:
      return 4;
    case JetType::Currency:
    case JetType::Double:
    case JetType::DateTime:
      return 8;
    case JetType::Guid:
      return 16;
    case JetType::Decimal:
      return 17;
    default:
      return 0;
  }
}

QVariant JetValues::Value(JetType type, QByteArrayView bytes) {
  const int size = FixedSize(type);
  if (size != 0 && bytes.size() != size) {
    throw JetError(u"a value has %1 bytes where its type has %2"_s.arg(bytes.size()).arg(size));
  }
  switch (type) {
    case JetType::Byte:
      return int{Get<quint8>(bytes, 0)};
    case JetType::Integer:
      return int{Get<qint16>(bytes, 0)};
    case JetType::Long:
      return Get<qint32>(bytes, 0);
    case JetType::Single:
      return double{Get<float>(bytes, 0)};
    case JetType::Double:
      return Get<double>(bytes, 0);
    case JetType::DateTime:
      return DateTime(Get<double>(bytes, 0));
    case JetType::Text:
    case JetType::Memo:
      return Text(bytes);
    default:
      return bytes.toByteArray();
  }
}

QString JetValues::Text(QByteArrayView bytes) {
  if (bytes.startsWith("\xFF\xFE")) {
    return Expand(bytes.sliced(2));
  }
  if (bytes.size() % 2 != 0) {
    ThrowOddText();
  }
  QString text(bytes.size() / 2, Qt::Uninitialized);
  qFromLittleEndian<quint16>(bytes.data(), text.size(), text.data());
  return text;
}

QString JetValues::DateTime(double days) {
  constexpr double firstDay = -657434;  // 0100-01-01, the earliest date Access knows
  constexpr double endDay = 2958466;    // 10000-01-01, the first it does not
  constexpr double halfSecond = 0.5 / 86400;
  if (!(days > firstDay - 1 && days < endDay - halfSecond)) {
    throw JetError(u"a date is out of range"_s);
  }
  const double day = std::trunc(days);
  const auto seconds = static_cast<int>(std::lround(std::abs(days - day) * 86400.0));
  // A time within half a second of midnight belongs to the next day.
  const QDate date = QDate(1899, 12, 30).addDays(static_cast<qint64>(day) + seconds / 86400);
  const QTime time = QTime(0, 0).addSecs(seconds % 86400);
  QString text = u"0000-00-00 00:00:00"_s;
  const auto put = [&](qsizetype end, int number) {
    for (; number > 0; number /= 10) text[--end] = QChar(u'0' + number % 10);
  };
  put(4, date.year());
  put(7, date.month());
  put(10, date.day());
  put(13, time.hour());
  put(16, time.minute());
  put(19, time.second());
  return text;
}
