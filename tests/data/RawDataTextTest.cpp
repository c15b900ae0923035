// What reaches the checks, and what the live line says.
#include "data/RawDataText.h"

#include "data/TAVELDataStringFunctions.h"
#include "tests/support/BothLocales.h"
#include "tests/support/Cases.h"

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

TEST_P(RawDataTextTest, TheLiveLineCountsAndNamesWhatStandsOut) {
  const auto line = [](const QString& text, const QString& subGroup) {
    return RawDataText::Describe(RawDataText::Examine(text, RawDataText::FlierLimits{0, 100}), subGroup);
  };
  for (const auto& one :
       Cases(u"raw_data.json"_s, u"live line: values, size of a subgroup, what it says"_s)) {
    const QString found = line(one[0].toString(), one[1].toString());
    EXPECT_TRUE(found.contains(one[2].toString())) << found.toStdString();
  }
  for (const auto& text : Cases(u"raw_data.json"_s, u"no slip of the decimal point"_s))
    EXPECT_FALSE(line(text.toString(), u"1"_s).contains(u"ten times"_s)) << text.toString().toStdString();
  EXPECT_EQ(line(u"1"_s, u"21"_s), u"1 value"_s);
  EXPECT_EQ(line(u"1\n2\n"_s, u"2.5"_s), u"2 values"_s);
  EXPECT_EQ(RawDataText::FliersBeyond(.1, .4).high, .7);
  for (const auto& [text, decimals] :
       {std::pair(u"1.500"_s, 1), {u"1.5e-9"_s, 10}, {u"1.25E1"_s, 1}, {u"x.123456789"_s, 0}})
    EXPECT_EQ(RawDataText::DecimalsOf(text), decimals) << text.toStdString();
  for (const qsizetype values : {32767, 32768}) {
    RawDataText::Examination found;
    found.values = values;
    EXPECT_EQ(RawDataText::Describe(found, u"1"_s).contains(u"32767 can be saved"_s), values > 32767);
  }
}

}  // namespace
