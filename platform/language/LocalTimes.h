// Moments as people read them: on the clock of this place, in the short form of its language.
#pragma once

#include <QDateTime>
#include <QString>

namespace LocalTimes {

QString Day(QDate day);
QString Clock(const QDateTime& time);   // hours and minutes
QString Moment(const QDateTime& time);  // both; empty for none

}  // namespace LocalTimes
