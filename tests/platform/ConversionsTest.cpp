// The conversions give the same results under every locale, and refuse what is not plainly a decimal number.
#include "platform/language/Conversions.h"

#include <cmath>
#include <limits>

#include "tests/support/BothLocales.h"

using namespace Qt::StringLiterals;
using namespace Conversions;

namespace {

using ConversionsTest = BothLocales;
INSTANTIATE_FOR_BOTH_LOCALES(ConversionsTest);

TEST_P(ConversionsTest, ReadsDecimalNumbers) {
  const std::vector<std::pair<QString, double>> numbers = {
      {u"12.5"_s, 12.5},       {u" 12 "_s, 12},  {u"\t-0.25\r\n"_s, -0.25},
      {u"+.5"_s, 0.5},         {u"5."_s, 5},     {u"1E3"_s, 1000},
      {u"-1.5e-3"_s, -0.0015}, {u"00012"_s, 12}, {u"1.7E308"_s, 1.7e308},
      {u"0.1"_s, 0.1},
  };
  for (const auto& [text, value] : numbers) {
    EXPECT_TRUE(IsNumeric(text)) << text.toStdString();
    EXPECT_EQ(CDbl(text), value) << text.toStdString();
  }
}

TEST_P(ConversionsTest, RefusesEverythingElse) {
  for (const QString& text : {u""_s,     u"  "_s,  u"."_s,   u"+"_s,   u"--1"_s, u"1,5"_s, u"1.234.5"_s,
                              u"1 2"_s,  u"12x"_s, u"1e"_s,  u"1e+"_s, u"e5"_s,  u"1d5"_s, u"&H1F"_s,
                              u"0x1F"_s, u"inf"_s, u"nan"_s, u"$5"_s,  u"(5)"_s, u"٣"_s,   u"1\u00a0"_s}) {
    EXPECT_FALSE(IsNumeric(text)) << text.toStdString();
    EXPECT_THROW(CDbl(text), TypeMismatch) << text.toStdString();
  }
  EXPECT_FALSE(IsNumeric(u"-1e400"_s));
  EXPECT_THROW(CDbl(u"-1e400"_s), Overflow);
}

TEST_P(ConversionsTest, RoundsToTheEvenNeighbourAndOverflows) {
  using Pair = std::pair<double, int>;
  for (const auto& [value, rounded] : {Pair{0.5, 0}, Pair{1.5, 2}, Pair{2.5, 2}, Pair{-1.5, -2},
                                       Pair{2.51, 3}, Pair{32767.49, 32767}, Pair{-32768.5, -32768}}) {
    EXPECT_EQ(CInt(value), rounded) << value;
    EXPECT_EQ(CLng(value), rounded) << value;
  }
  EXPECT_EQ(CInt(u" 40.5 "), 40);
  EXPECT_EQ(CLng(u"2147483647"), 2147483647);
  EXPECT_THROW(CInt(32767.5), Overflow);
  EXPECT_THROW(CInt(u"-32769"), Overflow);
  EXPECT_EQ(CLng(32768), 32768);
  EXPECT_THROW(CLng(2147483647.5), Overflow);
  EXPECT_THROW(CLng(std::nan("")), Overflow);
  EXPECT_THROW(CInt(std::numeric_limits<double>::infinity()), Overflow);
  EXPECT_THROW(CInt(u"forty"), TypeMismatch);
}

TEST_P(ConversionsTest, WritesGeneralNumbers) {
  using Pair = std::pair<double, QStringView>;
  for (const auto& [value, text] :
       {Pair{10.3, u"10.3"}, Pair{0.1 + 0.2, u"0.3"}, Pair{-0.25, u"-0.25"}, Pair{-0.0, u"0"},
        Pair{1200, u"1200"}, Pair{1.5e-7, u"0.00000015"}, Pair{1.23456789e-10, u"1.23456789E-10"},
        Pair{1.0 / 30, u"3.33333333333333E-02"}, Pair{1.0 / 3, u"0.333333333333333"},
        Pair{123456789012345, u"123456789012345"}, Pair{999999999999999.9, u"1E+15"},
        Pair{-1.25e100, u"-1.25E+100"}})
    EXPECT_EQ(CStr(value), text);
  EXPECT_THROW(CStr(std::numeric_limits<double>::infinity()), Overflow);
  EXPECT_EQ(CStr(true), u"True"_s);
}

TEST(Conversions, TheUpperBoundOfASplit) {
  for (const auto& [text, bound] : {std::pair{u"", -1}, {u"1", 0}, {u"1,2,", 2}})
    EXPECT_EQ(SplitUpperBound(text, u','), bound);
}

}  // namespace
