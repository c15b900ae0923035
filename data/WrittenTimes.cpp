#include "data/WrittenTimes.h"

#include <QLocale>
#include <QRegularExpression>
#include <algorithm>
#include <cstdlib>
#include <utility>

#include "platform/error/Error.h"
#include "texts/NumberWords.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int firstYear = 1900;

QRegularExpression Form(const QString& pattern) {
  return QRegularExpression(
      QRegularExpression::anchoredPattern(pattern),
      QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
}

[[noreturn]] void Refuse(const QString& text) { throw InputError(Words::Times::isNone(text)); }

// 1 to 12 by the month's name or its abbreviation, English or of this language; 0 for none.
int MonthNamed(QString name) {
  const auto plain = [](QString text) { return text.remove(u'.').toCaseFolded(); };
  name = plain(name);
  for (const QLocale& locale : {QLocale::c(), QLocale()})
    for (const auto format : {QLocale::LongFormat, QLocale::ShortFormat})
      for (int month = 1; month <= 12; ++month)
        if (name == plain(locale.monthName(month, format)) ||
            name == plain(locale.standaloneMonthName(month, format)))
          return month;
  return 0;
}

// Two numbers in front of a year: which is the day says the sign between them, or one that is no month.
QDate DayAndMonth(const QString& text, int first, int second, int year, bool isDayFirst) {
  const QDate dayFirst(year, second, first), monthFirst(year, first, second);
  if (isDayFirst || !monthFirst.isValid()) return dayFirst;
  if (dayFirst.isValid() && dayFirst != monthFirst)
    throw InputError(
        Words::Times::twoReadings(text, dayFirst.toString(Qt::ISODate), monthFirst.toString(Qt::ISODate)));
  return monthFirst;
}

QDate DateIn(const QString& text, const QString& date) {
  static const auto yearFirst = Form(u"(\\d{4})([-/.])(\\d{1,2})\\2(\\d{1,2})"_s);
  static const auto basic = Form(u"(\\d{4})(\\d\\d)(\\d\\d)"_s);
  static const auto yearLast = Form(u"(\\d{1,2})([-/.])(\\d{1,2})\\2(\\d{4})"_s);
  static const auto dayAndName =
      Form(u"(\\d{1,2})(?:st|nd|rd|th|\\.)?[ -]?([^\\W\\d_]{3,}\\.?),?[ -](\\d{4})"_s);
  static const auto nameAndDay = Form(u"([^\\W\\d_]{3,}\\.?) (\\d{1,2})(?:st|nd|rd|th)?,? (\\d{4})"_s);
  static const auto shortYear = Form(u"\\d{1,2}([-/.])\\d{1,2}\\1\\d{2}"_s);
  QRegularExpressionMatch match;
  const auto is = [&](const QRegularExpression& form) { return (match = form.match(date)).hasMatch(); };
  const auto number = [&](int group) { return match.captured(group).toInt(); };
  if (is(yearFirst)) return {number(1), number(3), number(4)};
  if (is(basic)) return {number(1), number(2), number(3)};
  if (is(yearLast)) return DayAndMonth(text, number(1), number(3), number(4), match.captured(2) == u'.');
  if (is(dayAndName)) return {number(3), MonthNamed(match.captured(2)), number(1)};
  if (is(nameAndDay)) return {number(3), MonthNamed(match.captured(1)), number(2)};
  if (is(shortYear)) throw InputError(Words::Times::shortYear(text));
  return {};
}

// Not valid where there is none, or where it is no time of a day.
QTime TimeIn(const QRegularExpressionMatch& match) {
  int hour = match.captured(u"hour").toInt();
  const QString half = match.captured(u"half").toUpper().remove(u'.');
  if (!half.isEmpty() && (hour < 1 || hour > 12)) return {};
  if (!half.isEmpty()) hour = hour % 12 + (half == u"PM" ? 12 : 0);
  const QString fraction = match.captured(u"fraction").leftJustified(3, u'0').first(3);
  return QTime(hour, match.captured(u"minute").toInt(), match.captured(u"second").toInt(), fraction.toInt());
}

// The time that the clock of this place showed so, once.
QDateTime LocalTime(const QString& text, QDate date, QTime time) {
  const QDateTime found = QDateTime(date, time).toUTC();
  const auto isShownAt = [&](const QDateTime& moment) {
    const QDateTime local = moment.toLocalTime();
    return local.date() == date && local.time() == time;
  };
  if (!isShownAt(found)) throw InputError(Words::Times::isSkipped(text));
  for (const int change : {-3600, -1800, 1800, 3600}) {
    const QDateTime other = found.addSecs(change);
    if (!isShownAt(other)) continue;
    const auto written = [](const QDateTime& moment) {
      return moment.toOffsetFromUtc(moment.toLocalTime().offsetFromUtc()).toString(Qt::ISODate);
    };
    throw InputError(
        Words::Times::twoReadings(text, written(std::min(found, other)), written(std::max(found, other))));
  }
  return found;
}

// In seconds.
int OffsetIn(const QString& text) {
  if (text.size() < 3) return 0;  // Z
  QString digits = text.sliced(1);
  digits.remove(u':');
  const int seconds = digits.first(2).toInt() * 3600 + digits.sliced(2).toInt() * 60;
  return text[0] == u'+' ? seconds : -seconds;
}

}  // namespace

QDateTime WrittenTimes::Read(const QString& text) {
  static const auto form = Form(
      u"(?<date>.*?)(?<time>(?:T|,? )(?<hour>\\d{1,2}):(?<minute>\\d\\d)"
      "(?::(?<second>\\d\\d)(?:[.,](?<fraction>\\d+))?)?"
      "(?: ?(?<half>[AP]\\.?M\\.?))?(?: ?(?<offset>Z|[+-]\\d\\d(?::?\\d\\d)?))?)?"_s);
  static const QRegularExpression basic(u"^(\\d{8})T(\\d\\d)(\\d\\d)(\\d\\d)?"_s);
  QString written = text.simplified();
  if (const auto digits = basic.match(written); digits.hasMatch()) {
    const QString second = digits.captured(4).isEmpty() ? QString() : u':' + digits.captured(4);
    written.replace(0, digits.capturedLength(),
                    digits.captured(1) + u'T' + digits.captured(2) + u':' + digits.captured(3) + second);
  }
  const auto match = form.match(written);
  if (!match.hasMatch()) Refuse(text);
  const QDate date = DateIn(text, match.captured(u"date"));
  const bool hasTime = !match.captured(u"time").isEmpty();
  const QTime time = hasTime ? TimeIn(match) : QTime(0, 0);
  constexpr int mostOffset = 14 * 3600;
  if (!date.isValid() || !time.isValid() || date.year() < firstYear) Refuse(text);
  const QString offset = match.captured(u"offset");
  if (offset.isEmpty()) return hasTime ? LocalTime(text, date, time) : date.startOfDay().toUTC();
  if (offset.right(2).toInt() > 59 || std::abs(OffsetIn(offset)) > mostOffset) Refuse(text);
  return QDateTime(date, time, Qt::OffsetFromUTC, OffsetIn(offset)).toUTC();
}

QDate WrittenTimes::ReadDay(const QString& text) {
  const QDate day = DateIn(text, text.simplified());
  return day.isValid() && day.year() >= firstYear ? day : QDate();
}
