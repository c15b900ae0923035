// Numbers as people write them: the readings that a text has, and lists in which a comma leaves a doubt.
#include <gtest/gtest.h>

#include "data/WrittenNumbers.h"
#include "platform/error/Error.h"

using namespace Qt::StringLiterals;
using WrittenNumbers::Decimal;

TEST(WrittenNumbers, EachMarkReadsItsOwn) {
  struct {
    const char16_t* text;
    const char16_t* point;
    const char16_t* comma;
  } const cases[] = {{u"12.50", u"12.50", u""},
                     {u"12,50", u"", u"12.50"},
                     {u" 1234 ", u"1234", u"1234"},
                     {u"1,234.5", u"1234.5", u""},
                     {u"1.234,5", u"", u"1234.5"},
                     {u"1.234", u"1.234", u"1234"},
                     {u"-1,234", u"-1234", u"-1.234"},
                     {u"1.234.567", u"", u"1234567"},
                     {u"0.125", u"0.125", u""},
                     {u"0,125", u"", u"0.125"},
                     {u"1234.567", u"1234.567", u""},
                     {u"1\u00A0234,5", u"", u"1234.5"},
                     {u"12\u202F345", u"12345", u"12345"},
                     {u"1'234\u2019567.5", u"", u""},
                     {u"1\u2019234.5", u"1234.5", u""},
                     {u"\u22127,5", u"", u"-7.5"},
                     {u"+2.5", u"+2.5", u""},
                     {u"1,5E\u22123", u"", u"1.5E-3"},
                     {u"1.234e2", u"1.234e2", u""},
                     {u"12,34,567", u"", u""},
                     {u"1,2345", u"", u"1.2345"},
                     {u"1,234,5", u"", u""},
                     {u"1 23", u"", u""},
                     {u",5", u"", u".5"},
                     {u"12,5 mm", u"", u""},
                     {u"1e999", u"", u""},
                     {u"--5", u"", u""},
                     {u"- 5", u"", u""},
                     {u".", u"", u""},
                     {u"", u"", u""}};
  for (const auto& [text, point, comma] : cases) {
    const QStringView shown(text);
    const QString asPoint = QStringView(point).toString(), asComma = QStringView(comma).toString();
    EXPECT_EQ(WrittenNumbers::Read(shown, Decimal::Point), asPoint) << shown.toUtf8().toStdString();
    EXPECT_EQ(WrittenNumbers::Read(shown, Decimal::Comma), asComma) << shown.toUtf8().toStdString();
    EXPECT_EQ(WrittenNumbers::HasTwoReadings(shown),
              !asPoint.isEmpty() && !asComma.isEmpty() && asPoint != asComma);
  }
}

namespace {

// The values joined by blanks, or the refusal.
std::string List(const QString& text, const WrittenNumbers::Notation& notation = {}) {
  try {
    return WrittenNumbers::ReadList(text, notation).join(u' ').toStdString();
  } catch (const InputError& error) {
    return ErrorText(error).toStdString();
  }
}

}  // namespace

TEST(WrittenNumbers, ACommaInAListIsNeverGuessed) {
  EXPECT_EQ(List(u"1 2.50;-3,\n+4\t5e2"_s), "1 2.50 -3 +4 5e2");
  EXPECT_EQ(List(u"1.5,2.5,-3.5,"_s), "1.5 2.5 -3.5");
  EXPECT_EQ(List(u"10, 11, 12"_s), "10 11 12");
  EXPECT_EQ(List(u"7,5 7,6"_s), "\"7,5\" may be 7.5 (--decimal comma) or 7 and 5 (--separator comma)");
  EXPECT_EQ(
      List(u"1,234"_s),
      "\"1,234\" may be 1234 (--decimal point --separator semicolon), 1.234 (--decimal comma) or 1 and 234 "
      "(--separator comma)");
  EXPECT_EQ(List(u"1,2,3,4,5"_s), "\"1,2,3,4,5\" is 1, 2, 3 and 2 more only with --separator comma");
  for (const QString& text :
       {u"1,234.5"_s, u"1.234,5"_s, u"1,234,567"_s, u"1e3,5"_s, u"10,11,12"_s, u"2.0,3"_s, u",5"_s})
    EXPECT_EQ(List(text).rfind('"' + text.toStdString() + "\" ", 0), 0U) << List(text);
  for (const QString& text : {u"1 234.5"_s, u"1 234,5"_s, u"8 1 234 567.5 9"_s})
    EXPECT_NE(List(text).find("may be one value or several"), std::string::npos) << List(text);
  EXPECT_EQ(List(u"1\n234.5\t100.5"_s), "1 234.5 100.5");
  EXPECT_EQ(List(u"1 2,x"_s), "value 2 (\"2,x\") is not a number");
}

TEST(WrittenNumbers, WhatIsToldSettlesAList) {
  const WrittenNumbers::Notation comma{Decimal::Comma, {}}, point{Decimal::Point, {}}, list{{}, u','},
      both{Decimal::Point, u';'};
  EXPECT_EQ(List(u"7,5 1.234,5;8"_s, comma), "7.5 1234.5 8");
  EXPECT_EQ(List(u"7.5"_s, comma), "value 1 (\"7.5\") is not a number with a decimal comma");
  EXPECT_EQ(List(u"8 1 234,5"_s, comma).rfind("\"1 234,5\" may be one value or several", 0), 0U);
  EXPECT_EQ(List(u"10,11,12"_s, point), "10 11 12");
  EXPECT_EQ(
      List(u"100,101"_s, point),
      "\"100,101\" may be 100101 (--decimal point --separator semicolon) or 100 and 101 (--separator comma)");
  EXPECT_EQ(List(u"1,234\n7,5"_s, list), "1 234 7 5");
  EXPECT_EQ(List(u"1,234;1 235.5"_s, both), "1234 1235.5");
}
