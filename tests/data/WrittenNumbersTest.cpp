// Numbers as people write them: the readings that a text has, and lists in which a comma leaves a doubt.
#include <gtest/gtest.h>

#include "data/WrittenNumbers.h"
#include "platform/error/Error.h"
#include "tests/support/Cases.h"

using WrittenNumbers::Decimal;

TEST(WrittenNumbers, EachMarkReadsItsOwn) {
  for (const auto& one : Cases(u"written_numbers.json"_s, u"readings"_s)) {
    const QString text = one[0].toString(), point = one[1].toString(), comma = one[2].toString();
    EXPECT_EQ(WrittenNumbers::Read(text, Decimal::Point), point) << text.toStdString();
    EXPECT_EQ(WrittenNumbers::Read(text, Decimal::Comma), comma) << text.toStdString();
    EXPECT_EQ(WrittenNumbers::HasTwoReadings(text), !point.isEmpty() && !comma.isEmpty() && point != comma);
  }
}

// What is told of the notation settles a list; a comma in one is never guessed.
TEST(WrittenNumbers, AListIsReadOrRefusedWithItsReadings) {
  const std::map<QString, WrittenNumbers::Notation> told = {{u""_s, {}},
                                                            {u"comma"_s, {Decimal::Comma, {}}},
                                                            {u"point"_s, {Decimal::Point, {}}},
                                                            {u"list"_s, {{}, u','}},
                                                            {u"point;"_s, {Decimal::Point, u';'}}};
  for (const auto& one : Cases(u"written_numbers.json"_s, u"lists"_s)) {
    QString result;
    try {
      result = WrittenNumbers::ReadList(one[0].toString(), told.at(one[1].toString())).join(u' ');
    } catch (const InputError& error) {
      result = ErrorText(error);
    }
    EXPECT_EQ(result.toStdString(), one[2].toString().toStdString());
  }
}
