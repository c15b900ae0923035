// What pasted texts mean, what reaches the checks, and what the live line says.
#include "data/RawDataText.h"

#include <gtest/gtest.h>

#include "data/TAVELDataStringFunctions.h"
#include "tests/support/BothLocales.h"

using namespace Qt::StringLiterals;

namespace {

using RawDataTextTest = BothLocales;
INSTANTIATE_FOR_BOTH_LOCALES(RawDataTextTest);

TEST_P(RawDataTextTest, PastedTextIsUnderstoodAsASpreadsheetUserMeansIt) {
  struct {
    const char* what;
    QString text, shown;
  } const cases[] = {
      {"line ends of every kind", u"1\r\n2\r3\n4\u20285\u20296"_s, u"1\n2\n3\n4\n5\n6"_s},
      {"a column, ended", u"12.1\n12.4\n"_s, u"12.1\n12.4\n"_s},
      {"semicolons and blanks", u" 12.1; 12.4 ;11.9"_s, u"12.1\n12.4\n11.9"_s},
      {"empty cells", u"1\t\t2\n\n;3\n"_s, u"1\n2\n3\n"_s},
      {"a decimal comma alone", u"12,5"_s, u"12.5"_s},
      {"decimal commas beside whole numbers", u"12,5\n13\n-0,25\n,5\n1,5E-3"_s,
       u"12.5\n13\n-0.25\n.5\n1.5E-3"_s},
      {"decimal commas below a heading", u"Diam. [mm]\n12,5\n12,6"_s, u"Diam. [mm]\n12.5\n12.6"_s},
      {"commas between numbers with a point", u"12.1,12.4,11.9"_s, u"12.1\n12.4\n11.9"_s},
      {"commas between whole numbers", u"1,2,3"_s, u"1\n2\n3"_s},
      {"commas behind each value", u"12,\n13,\n"_s, u"12\n13\n"_s},
      {"one number with a point decides", u"12,5\n13.5"_s, u"12\n5\n13.5"_s},
      {"thousands separators", u"1,234.5\n1.234,5\n12.5"_s, u"1,234.5\n1.234,5\n12.5"_s},
      {"what is no number", u"abc\n12,x5\nx,y\n1e999\nNaN"_s, u"abc\n12\nx5\nx,y\n1e999\nNaN"_s},
      {"a mistyped decimal comma", u"12,5\n12,x5"_s, u"12.5\n12,x5"_s},
      {"nothing", u"\r\n\t;\n"_s, u""_s},
  };
  for (const auto& one : cases) EXPECT_EQ(RawDataText::FromPasted(one.text), one.shown) << one.what;
}

QString HandedOver(const QString& text) {
  return TAVELDataStringFunctions::ConvertStringDelimiter(false, RawDataText::WithEndedLines(text));
}

TEST_P(RawDataTextTest, EveryValueIsHandedOverWithItsLineEnd) {
  EXPECT_EQ(HandedOver(u"1\n2\n3"_s), u"1,2,3,"_s) << "the last one too";
  EXPECT_EQ(HandedOver(u"\n 1 \r\n\n\t2\r3\n\n"_s), u"1,2,3,"_s) << "blank lines count for nothing";
  EXPECT_EQ(HandedOver(u" \n\t\n"_s), u""_s);

  // The check sees the last value, and a number with thousands separators as one thing that is no number.
  const auto count = [](const QString& text) {
    return TAVELDataStringFunctions::ValidateDelimitedDataString(HandedOver(text));
  };
  EXPECT_EQ(count(u"12\n13\n14\nabc"_s), 0);
  EXPECT_EQ(count(u"12\n13\n14\n1,234.5"_s), 0);
  EXPECT_EQ(count(u"12,13,14\n15"_s), 4);
}

TEST_P(RawDataTextTest, TheLiveLineCountsAndNamesTheFirstFault) {
  const auto line = [](const QString& text, const QString& subGroup = u"5"_s) {
    return RawDataText::Describe(RawDataText::Examine(text), subGroup);
  };
  EXPECT_EQ(line(u"1\n2\n3\n4\n5\n6\n7"_s), u"7 values: 1 subgroup of 5, 2 left over."_s);
  EXPECT_EQ(line(u"1"_s, u"21"_s), u"1 value"_s);
  EXPECT_EQ(line(u"1\n2\n"_s, u"2.5"_s), u"2 values"_s);
  EXPECT_TRUE(line(u"\n"_s).startsWith(u"No values yet."_s));
  EXPECT_TRUE(line(u"1\n\n2,x\nabc"_s).endsWith(u"\nLine 3 is not a number: \"\u2068x\u2069\""_s));
  EXPECT_TRUE(line(u"1\n1,234.5"_s).contains(u"Line 2 is not a number: \"\u20681,234.5\u2069\""_s));
  EXPECT_TRUE(line(u"1\n12,\n3"_s).contains(u"Line 2: no number stands on one side of a comma."_s));
  EXPECT_TRUE(line(u"1\n12,5"_s).startsWith(u"3 values: 0 subgroups of 5, 3 left over.\nLine 2 is more"_s));
  EXPECT_TRUE(line(QString(400, u'1'))
                  .endsWith(u"Line 1 is not a number: \"\u2068"_s + QString(24, u'1') + u"…\u2069\""_s));
}

}  // namespace
