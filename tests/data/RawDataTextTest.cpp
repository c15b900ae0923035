// What reaches the checks, and what the live line says.
#include "data/RawDataText.h"

#include <gtest/gtest.h>

#include "data/TAVELDataStringFunctions.h"
#include "tests/support/BothLocales.h"

using namespace Qt::StringLiterals;

namespace {

using RawDataTextTest = BothLocales;
INSTANTIATE_FOR_BOTH_LOCALES(RawDataTextTest);

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

TEST_P(RawDataTextTest, SubgroupsBeginWhereTheirFirstValueStands) {
  EXPECT_EQ(RawDataText::SubgroupStarts(u"1\n\n2\n3\n4,5\n6"_s, 2), QList<qsizetype>({4}));
  EXPECT_EQ(RawDataText::SubgroupStarts(u"1\n2,3\n4\n5"_s, 3, 2), QList<qsizetype>({2, 4}));
  EXPECT_EQ(RawDataText::SubgroupStarts(u"x\n1\n2\n"_s, 2), QList<qsizetype>());
}

TEST_P(RawDataTextTest, TheLiveLineNamesWhatStandsOut) {
  const auto line = [](const QString& text) {
    return RawDataText::Describe(RawDataText::Examine(text, RawDataText::FlierLimits{0, 100}), u"1"_s);
  };
  EXPECT_TRUE(line(u"12.5\n125\n12.4"_s).contains(u"Line 2 does not lie between the flier limits: "_s));
  EXPECT_EQ(RawDataText::FliersBeyond(.1, .4).high, .7);
  EXPECT_TRUE(line(u"100\n99"_s).contains(u"Line 1 does not lie"_s)) << "a flier limit is beyond itself";
  EXPECT_TRUE(line(u"1.25\n1.24\n12.6\n1.25"_s).contains(u"Line 3 is ten times its neighbours: "_s));
  EXPECT_TRUE(line(u"1\n2\n20"_s).contains(u"Line 3 is ten times"_s));
  EXPECT_FALSE(line(u"1\n20\n21\n1.9"_s).contains(u"ten times"_s)) << "a step is no slip";
  EXPECT_TRUE(line(u"12.6\n1.25\n1.24"_s).contains(u"Line 1 is ten times"_s));
  EXPECT_FALSE(line(u"126"_s).contains(u"ten times"_s));
  EXPECT_FALSE(line(u".5\n0\n.5"_s).contains(u"ten times"_s));
  EXPECT_TRUE(line(u"1.5\n0.123456789"_s).contains(u"Line 2 has more than the 8 decimals"_s));
  EXPECT_EQ(RawDataText::DecimalsOf(u"1.500"_s), 1);
  EXPECT_EQ(RawDataText::DecimalsOf(u"1.5e-9"_s), 10);
  EXPECT_EQ(RawDataText::DecimalsOf(u"1.25E1"_s), 1);
  EXPECT_EQ(RawDataText::DecimalsOf(u"x.123456789"_s), 0);
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
  EXPECT_TRUE(line(u"1\n1,234.5"_s).contains(u"Line 2 is unclear: \"\u20681,234.5\u2069\""_s));
  EXPECT_TRUE(
      line(u"1\n12,5 mm"_s).contains(u"1 value: 0 subgroups of 5, 1 left over.\nLine 2 is unclear: "_s));
  EXPECT_TRUE(line(u"08:00\t12.5"_s).contains(u"Line 1 has several cells: \"\u206808:00|12.5\u2069\""_s));
  EXPECT_TRUE(line(u"1\n12,\n3"_s).contains(u"Line 2: no number stands on one side of a comma."_s));
  EXPECT_TRUE(line(u"1\n12,5"_s).startsWith(u"3 values: 0 subgroups of 5, 3 left over.\nLine 2 is more"_s));
  EXPECT_TRUE(line(QString(400, u'1'))
                  .endsWith(u"Line 1 is not a number: \"\u2068"_s + QString(24, u'1') + u"…\u2069\""_s));
}

}  // namespace
