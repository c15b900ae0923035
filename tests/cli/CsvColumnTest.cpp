// CSV columns as spreadsheets of several languages write them: what is read is what was meant, or it is
// refused.
#include "cli/CsvColumn.h"

#include <gtest/gtest.h>

#include <QJsonObject>

#include "platform/error/Error.h"
#include "tests/support/Cases.h"

using WrittenNumbers::Decimal;

namespace {

// What a user said of the file, as the options of the commands are called.
CsvOptions OptionsOf(const QJsonObject& said) {
  CsvOptions options{said[u"column"_s].toString(), {}, {}, said[u"unit"_s].toString()};
  if (const QString mark = said[u"decimal"_s].toString(); !mark.isEmpty())
    options.notation.decimal = mark == u"comma" ? Decimal::Comma : Decimal::Point;
  if (said.contains(u"separator"_s)) options.notation.separator = said[u"separator"_s].toString()[0];
  if (said.contains(u"heading"_s)) options.heading = said[u"heading"_s].toBool();
  if (const QJsonArray values = said[u"expected"_s].toArray(); !values.isEmpty())
    options.expected = {values[0].toDouble(), values[1].toDouble()};
  options.beside = said[u"beside"_s].toVariant().toStringList();
  return options;
}

// The values, each with what stands beside it, or the refusal without the file's name.
QString Read(const QByteArray& text, const CsvOptions& options) {
  const QString fileName = u"data.csv"_s;
  QStringList words;
  try {
    for (const CsvSample& sample : ParseCsvColumn(text, fileName, options))
      words << (QStringList(sample.value) + sample.beside).join(u'/');
  } catch (const InputError& error) {
    EXPECT_TRUE(error.Text().startsWith(fileName + u' ') || error.Text().startsWith(fileName + u':'));
    return error.Text().mid(fileName.size() + 1);
  }
  return words.join(u' ');
}

// The file, what is said of it, and what is read.
class CsvColumn : public testing::TestWithParam<const char*> {};

TEST_P(CsvColumn, IsReadAsMeantOrRefused) {
  for (const auto& one : Cases(u"csv.json"_s, QString::fromLatin1(GetParam()))) {
    const QJsonObject said = one[1].toObject();
    const QString text = one[0].toString();
    EXPECT_EQ(
        Read(said.contains(u"latin1"_s) ? text.toLatin1() : text.toUtf8(), OptionsOf(said)).toStdString(),
        one[2].toString().toStdString())
        << text.toStdString();
  }
}

INSTANTIATE_TEST_SUITE_P(Where, CsvColumn,
                         testing::Values("separators and headings", "what stands beside is read as it is",
                                         "what is ambiguous is refused with its readings",
                                         "nothing is joined or lost without a word",
                                         "a unit is read where it was named",
                                         "what may be a heading or a value is asked for"));

}  // namespace
