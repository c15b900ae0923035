// What pasted texts mean, and which readings are offered where they have several.
#include "data/RawDataReadings.h"

#include "tests/support/BothLocales.h"
#include "tests/support/Cases.h"

using RawDataReadings::FromPasted;

namespace {

using RawDataReadingsTest = BothLocales;
INSTANTIATE_FOR_BOTH_LOCALES(RawDataReadingsTest);

TEST_P(RawDataReadingsTest, OneCellOrLineIsOneValueAndWhatIsUnclearStandsAsItIs) {
  for (const auto& one : Cases(u"readings.json"_s, u"pasted"_s)) {
    const auto pasted = FromPasted(one[1].toString());
    EXPECT_EQ(pasted.text, one[2].toString()) << one[0].toString().toStdString();
    EXPECT_EQ(pasted.decimalCommas, one[3].toInt()) << one[0].toString().toStdString();
  }
}

TEST_P(RawDataReadingsTest, EveryReadingIsOfferedWithItsCount) {
  for (const auto& one : Cases(u"readings.json"_s, u"offers"_s)) {
    QJsonArray found;  // captions without direction marks, and the text when taken
    for (const auto& offer : RawDataReadings::Offers(one[1].toString()))
      found << QJsonArray{QString(offer.caption).remove(u'\u2068').remove(u'\u2069'),
                          RawDataReadings::Apply(offer, one[1].toString())};
    EXPECT_EQ(found, one[2].toArray()) << one[0].toString().toStdString();
  }
}

TEST_P(RawDataReadingsTest, OnlyACommaThatMakesOneValueOrSeveralIsAskedAbout) {
  EXPECT_FALSE(RawDataReadings::DoubtfulComma(u"1\n2,x\n1,234.5\n12,\n12.1,12.4\n1,2,3"_s));
  const QString text = u"10\n12,5\n1,234,567"_s;
  const auto doubt = RawDataReadings::DoubtfulComma(text);
  ASSERT_TRUE(doubt);
  EXPECT_EQ(doubt->number, 2);
  EXPECT_EQ(doubt->oneValue, u"12.5"_s);
  EXPECT_EQ(doubt->more, 1);
  EXPECT_EQ(RawDataReadings::Settled(text, true), u"10\n12.5\n1234567"_s);
  EXPECT_EQ(RawDataReadings::Settled(text, false), u"10\n12\n5\n1\n234\n567"_s);
}

}  // namespace
