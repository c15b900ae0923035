// What times mean as people, spreadsheets and instruments write them. What has two readings is refused, never
// guessed.
#pragma once

#include <QDateTime>
#include <QString>

namespace WrittenTimes {

// The moment, in UTC. Read are ISO 8601, in its basic form too, and the dates of this language that have one
// reading: the year has four digits, the month is a name or what it is stands in the day (23/04/2026), points
// follow the day (3.4.2026). Behind it may stand a time of the day, with or without seconds, AM or PM, and an
// offset; without one it is a time of this place. An InputError says what is wrong with the text.
QDateTime Read(const QString& text);

// The day alone, in the same forms; not valid for any other text. An InputError where it has two readings.
QDate ReadDay(const QString& text);

}  // namespace WrittenTimes
