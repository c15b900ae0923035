// Times as people write them: read as they were meant, or refused.
#include "data/WrittenTimes.h"

#include <gtest/gtest.h>

#include <QLocale>
#include <QTimeZone>

#include "platform/error/Error.h"
#include "tests/support/Cases.h"

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
  const auto cases = [](const QString& part) { return Cases(u"written_times.json"_s, part); };
  for (const auto& one : cases(u"in Berlin, with German months: the text, the time or why it is none"_s))
    EXPECT_EQ(Read(one[0].toString()), one[1].toString()) << one[0].toString().toStdString();
  for (const auto& one : cases(u"no times"_s))
    EXPECT_EQ(Read(one.toString()),
              u"\"%1\" is not a time; write it as 2026-04-23T10:15"_s.arg(one.toString()));
  QLocale::setDefault(before);
  zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
  tzset();
}
