// What pasted texts mean, and which readings are offered where they have several.
#include "data/RawDataReadings.h"

#include <gtest/gtest.h>

#include "tests/support/BothLocales.h"

using namespace Qt::StringLiterals;
using RawDataReadings::FromPasted;

namespace {

using RawDataReadingsTest = BothLocales;
INSTANTIATE_FOR_BOTH_LOCALES(RawDataReadingsTest);

TEST_P(RawDataReadingsTest, OneCellOrLineIsOneValue) {
  struct {
    const char* what;
    QString text, shown;
    qsizetype commas = 0;
  } const cases[] = {
      {"line ends of every kind", u"1\r\n2\r3\n4\u20285\u20296"_s, u"1\n2\n3\n4\n5\n6"_s},
      {"a column, ended", u"12.1\n12.4\n"_s, u"12.1\n12.4\n"_s},
      {"semicolons and blanks", u" 12.1; 12.4 ;11.9"_s, u"12.1\n12.4\n11.9"_s},
      {"semicolons behind each value", u"12.1;\n12.4;\n"_s, u"12.1\n12.4\n"_s},
      {"decimal commas beside whole numbers", u"12,5\n13\n-0,25\n,5\n1,5E-3"_s,
       u"12.5\n13\n-0.25\n.5\n1.5E-3"_s, 4},
      {"decimal commas below a heading", u"Diam. [mm]\n12,5\n12,6"_s, u"Diam. [mm]\n12.5\n12.6"_s, 2},
      {"decimal commas in a row of cells", u"12,5;12,75"_s, u"12.5\n12.75"_s, 2},
      {"a line of several with points", u"12.1,12.4,11.9"_s, u"12.1\n12.4\n11.9"_s},
      {"a line of several", u"1,2,3,"_s, u"1\n2\n3"_s},
      {"commas behind each value", u"12,\n13,\n"_s, u"12\n13\n"_s},
      {"nothing", u"\r\n\t;\n"_s, u""_s},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(FromPasted(one.text).text, one.shown) << one.what;
    EXPECT_EQ(FromPasted(one.text).decimalCommas, one.commas) << one.what;
  }
}

TEST_P(RawDataReadingsTest, WhatIsUnclearStandsAsItIs) {
  for (const QString& text :
       {u"12,5"_s, u"12,5\n12.7"_s, u"1,234,567"_s, u"1,234\n1,567"_s, u"1,234.5\n1.234,5\n12.5"_s,
        u"12,5 mm\n12,7 mm"_s, u"\u22120,5\n0,5"_s, u"12,5\n12,x5"_s, u"1,2,3\n4,5,6"_s, u"08:00\t12.5"_s,
        u"1\t\t2"_s, u"1.5\t1.6\n1.7\t1.8"_s, u"Nr,Wert\n1,10\n2,11"_s, u"1\t12.1\n2\t12.2\n3\t12.3"_s,
        u"abc\nx,y\n1e999\nNaN"_s})
    EXPECT_EQ(FromPasted(text).text, text);
}

struct Case {
  const char* what;
  QString text;
  QList<std::pair<QString, QString>> offers;  // caption without direction marks, text when taken
};

TEST_P(RawDataReadingsTest, EveryReadingIsOfferedWithItsCount) {
  const Case cases[] = {
      {"mixed",
       u"12,5\n12.7\n12,6"_s,
       {{u"Read 2 commas as decimal points"_s, u"12.5\n12.7\n12.6"_s},
        {u"Separate 2 lines at commas"_s, u"12\n5\n12.7\n12\n6"_s}}},
      {"units and minus signs",
       u"\u221212,5 mm\n13 mm"_s,
       {{u"Read 1 comma as a decimal point, without \"mm\""_s, u"-12.5\n13"_s},
        {u"Read 1 number, without \"mm\""_s, u"\u221212,5 mm\n13"_s}}},
      {"thousands or decimals",
       u"1,234"_s,
       {{u"Read 1 comma as a decimal point"_s, u"1.234"_s},
        {u"Read 1 number with thousands"_s, u"1234"_s},
        {u"Separate 1 line at commas"_s, u"1\n234"_s}}},
      {"points that set thousands apart",
       u"1.234,5\n1.235"_s,
       {{u"Read 2 numbers with decimal commas, and points between thousands"_s, u"1234.5\n1235"_s}}},
      {"points that may set thousands apart",
       u"1.234\n998,5\n1.002"_s,
       {{u"Read 1 comma as a decimal point"_s, u"1.234\n998.5\n1.002"_s},
        {u"Read 3 numbers with decimal commas, and points between thousands"_s, u"1234\n998.5\n1002"_s},
        {u"Separate 1 line at commas"_s, u"1.234\n998\n5\n1.002"_s}}},
      {"two units",
       u"12.5 mm\n0.0125 m\n3 mm"_s,
       {{u"Read 2 numbers, without \"mm\""_s, u"12.5\n0.0125 m\n3"_s},
        {u"Read 1 number, without \"m\""_s, u"12.5 mm\n0.0125\n3 mm"_s}}},
      {"a unit with a digit", u"1e2 mm H2O"_s, {{u"Read 1 number, without \"mm H2O\""_s, u"1e2"_s}}},
      {"blanks", u"12.1 12.4\n12.5"_s, {{u"Separate 1 line at blanks"_s, u"12.1\n12.4\n12.5"_s}}},
      {"a heading", u"Length\n12.5\nend"_s, {{u"Leave out 2 lines that are no numbers"_s, u"12.5"_s}}},
      {"times",
       u"Time\tLength\n08:00\t12,5\n08:05\t\n08:10\t12,7"_s,
       {{u"Take column 2, \"Length\": 2 numbers (leave out 2 cells)"_s, u"12.5\n12.7"_s}}},
      {"rows that are counted",
       u"1\t12.1\n2\t12.2\n3\t12.3"_s,
       {{u"Take column 2: 3 numbers"_s, u"12.1\n12.2\n12.3"_s},
        {u"Take column 1: 3 numbers"_s, u"1\n2\n3"_s},
        {u"Take all 6 numbers, row by row"_s, u"1\n12.1\n2\n12.2\n3\n12.3"_s}}},
      {"subgroups in rows",
       u"1.5\t1.6\n1.7\t1.8"_s,
       {{u"Take all 4 numbers, row by row"_s, u"1.5\n1.6\n1.7\n1.8"_s},
        {u"Take column 1: 2 numbers"_s, u"1.5\n1.7"_s},
        {u"Take column 2: 2 numbers"_s, u"1.6\n1.8"_s}}},
      {"a heading over cells between commas",
       u"Nr,Wert\n1,10\n2,11"_s,
       {{u"Take column 1, \"Nr\": 2 numbers (leave out 1 cell)"_s, u"1\n2"_s},
        {u"Take column 2, \"Wert\": 2 numbers (leave out 1 cell)"_s, u"10\n11"_s},
        {u"Take all 4 numbers, row by row (leave out 2 cells)"_s, u"1\n10\n2\n11"_s},
        {u"Read 2 commas as decimal points"_s, u"Nr,Wert\n1.10\n2.11"_s}}},
      {"cells between commas",
       u"08:00,12.5\n08:05,12.6"_s,
       {{u"Take column 2: 2 numbers"_s, u"12.5\n12.6"_s}}},
      {"nothing but words", u"abc\nd"_s, {}},
      {"nothing unclear", u"12.5\n13"_s, {}},
  };
  for (const Case& one : cases) {
    const auto offers = RawDataReadings::Offers(one.text);
    ASSERT_EQ(offers.size(), one.offers.size()) << one.what;
    for (qsizetype i = 0; i < offers.size(); ++i) {
      EXPECT_EQ(QString(offers[i].caption).remove(u'\u2068').remove(u'\u2069'), one.offers[i].first);
      EXPECT_EQ(RawDataReadings::Apply(offers[i], one.text), one.offers[i].second) << one.what;
    }
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
