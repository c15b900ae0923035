// The conversions give the same results under every locale, and refuse what is not plainly a decimal number.
#include "platform/language/Conversions.h"

#include <cmath>
#include <limits>

#include "tests/support/BothLocales.h"
#include "tests/support/Cases.h"

using namespace Conversions;

namespace {

using ConversionsTest = BothLocales;
INSTANTIATE_FOR_BOTH_LOCALES(ConversionsTest);

QJsonArray Listed(const QString& part) { return Cases(u"conversions.json"_s, part); }

TEST_P(ConversionsTest, ReadsDecimalNumbersAndRefusesEverythingElse) {
  for (const auto& one : Listed(u"numbers"_s)) {
    EXPECT_TRUE(IsNumeric(one[0].toString())) << one[0].toString().toStdString();
    EXPECT_EQ(CDbl(one[0].toString()), one[1].toDouble()) << one[0].toString().toStdString();
  }
  for (const auto& one : Listed(u"no numbers"_s)) {
    EXPECT_FALSE(IsNumeric(one.toString())) << one.toString().toStdString();
    EXPECT_THROW(CDbl(one.toString()), TypeMismatch) << one.toString().toStdString();
  }
  EXPECT_FALSE(IsNumeric(u"-1e400"_s));
  EXPECT_THROW(CDbl(u"-1e400"_s), Overflow);
}

TEST_P(ConversionsTest, RoundsToTheEvenNeighbourAndOverflows) {
  for (const auto& one : Listed(u"rounded"_s)) {
    EXPECT_EQ(CInt(one[0].toDouble()), one[1].toInt()) << one[0].toDouble();
    EXPECT_EQ(CLng(one[0].toDouble()), one[1].toInt()) << one[0].toDouble();
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
  for (const auto& one : Listed(u"written"_s)) EXPECT_EQ(CStr(one[0].toDouble()), one[1].toString());
  EXPECT_EQ(CStr(-0.0), u"0");
  EXPECT_THROW(CStr(std::numeric_limits<double>::infinity()), Overflow);
  EXPECT_EQ(CStr(true), u"True"_s);
}

TEST(Conversions, TheUpperBoundOfASplit) {
  for (const auto& [text, bound] : {std::pair{u"", -1}, {u"1", 0}, {u"1,2,", 2}})
    EXPECT_EQ(SplitUpperBound(text, u','), bound);
}

}  // namespace
