#include "platform/language/LocalTimes.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace LocalTimes {

namespace {

bool HasLanguage() { return QLocale().language() != QLocale::C; }

}  // namespace

QString Day(QDate day) {
  return HasLanguage() ? QLocale().toString(day, QLocale::ShortFormat) : day.toString(Qt::ISODate);
}

QString Clock(const QDateTime& time) {
  const QTime local = time.toLocalTime().time();
  return HasLanguage() ? QLocale().toString(local, QLocale::ShortFormat) : local.toString(u"HH:mm"_s);
}

QString Moment(const QDateTime& time) {
  return time.isValid() ? Day(time.toLocalTime().date()) + u' ' + Clock(time) : QString();
}

}  // namespace LocalTimes
