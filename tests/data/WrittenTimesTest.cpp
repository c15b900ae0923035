// Times as people write them: read as they were meant, or refused.
#include "data/WrittenTimes.h"

#include <gtest/gtest.h>

#include <QLocale>
#include <QTimeZone>

#include "platform/error/Error.h"

using namespace Qt::StringLiterals;

namespace {

// In UTC, or the refusal.
QString Read(const QString& text) {
  try {
    return WrittenTimes::Read(text).toString(Qt::ISODateWithMs);
  } catch (const InputError& error) {
    return error.Text();
  }
}

}  // namespace

TEST(WrittenTimes, AreReadWhereTheyHaveOneReading) {
  const QByteArray zone = qgetenv("TZ");
  qputenv("TZ", "Europe/Berlin");
  tzset();
  const QLocale before;
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  const struct {
    QString text, utc;
  } cases[] = {
      {u"2026-04-23T10:15:30Z"_s, u"2026-04-23T10:15:30.000Z"_s},
      {u"2026-04-23t10:15:30.5+0530"_s, u"2026-04-23T04:45:30.500Z"_s},
      {u"2026-04-23 10:15 -02"_s, u"2026-04-23T12:15:00.000Z"_s},
      {u"20260423T101530Z"_s, u"2026-04-23T10:15:30.000Z"_s},
      {u"20260423T1015-0200"_s, u"2026-04-23T12:15:00.000Z"_s},
      {u"2026-04-23T10:15"_s, u"2026-04-23T08:15:00.000Z"_s},  // of this place, in summer
      {u"2026-01-23"_s, u"2026-01-22T23:00:00.000Z"_s},        // and in winter
      {u"23/04/2026 10:15"_s, u"2026-04-23T08:15:00.000Z"_s},
      {u"04/23/2026, 1:15 PM"_s, u"2026-04-23T11:15:00.000Z"_s},
      {u"04/04/2026 12:05:09 a.m."_s, u"2026-04-03T22:05:09.000Z"_s},
      {u"3.4.2026 10:15"_s, u"2026-04-03T08:15:00.000Z"_s},
      {u"2026/4/3 10:15"_s, u"2026-04-03T08:15:00.000Z"_s},
      {u"3 April 2026"_s, u"2026-04-02T22:00:00.000Z"_s},
      {u"Dec 3rd, 2026 10:15"_s, u"2026-12-03T09:15:00.000Z"_s},
      {u"3. Dezember 2026 10:15"_s, u"2026-12-03T09:15:00.000Z"_s},
      {u"03/04/2026"_s, u"\"03/04/2026\" may be 2026-04-03 or 2026-03-04; write it as one of these"_s},
      {u"3-4-2026 10:15"_s,
       u"\"3-4-2026 10:15\" may be 2026-04-03 or 2026-03-04; write it as one of these"_s},
      {u"2026-03-29T02:30"_s,
       u"\"2026-03-29T02:30\" is not a time here: the clock was put forward over it"_s},
      {u"2026-03-29T02:30+01:00"_s, u"2026-03-29T01:30:00.000Z"_s},
      {u"25.10.2026 02:30"_s,
       u"\"25.10.2026 02:30\" may be 2026-10-25T02:30:00+02:00 or 2026-10-25T02:30:00+01:00; write it as one "
       "of these"_s},
      {u"23/04/26"_s, u"\"23/04/26\" may be several days; write the year with four digits"_s},
  };
  for (const auto& [text, utc] : cases) EXPECT_EQ(Read(text), utc) << text.toStdString();
  for (const QString& text :
       {u""_s, u"10:15"_s, u"2026-02-30"_s, u"2026-04-23T25:00"_s, u"13:15 PM"_s, u"2026-04-23 13:15 PM"_s,
        u"13/13/2026"_s, u"3 Brumaire 2026"_s, u"2026-04-23T10:15Zulu"_s, u"45000.5"_s, u"2026/04.23"_s,
        u"23.13.2026"_s, u"2026-04-23T10:15+99:99"_s, u"0001-01-01"_s})
    EXPECT_EQ(Read(text), u"\"%1\" is not a time; write it as 2026-04-23T10:15"_s.arg(text));
  QLocale::setDefault(before);
  zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
  tzset();
}
