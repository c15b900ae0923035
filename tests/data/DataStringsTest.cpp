// Both copies of the raw-data routines, above all where they differ.
#include "data/TAVELDataStringFunctions.h"
#include "data/clsTavelDataStringFunctions.h"
#include "platform/language/Conversions.h"
#include "tests/support/BothLocales.h"
#include "tests/support/Cases.h"

namespace Module = TAVELDataStringFunctions;

namespace {

using DataStrings = BothLocales;
INSTANTIATE_FOR_BOTH_LOCALES(DataStrings);

TEST_P(DataStrings, ConvertsBetweenCommasAndLines) {
  EXPECT_EQ(Module::ConvertStringDelimiter(false, u"1\r\n2\r\n"_s), u"1,2,"_s);
  EXPECT_EQ(Module::ConvertStringDelimiter(true, u"1.5,2,"_s), u"1.5\r\n2\r\n"_s);
  EXPECT_EQ(Module::ConvertStringDelimiter(false, u"1\n2\r3"_s), u"1\n2\r3"_s);
  EXPECT_EQ(Module::ConvertStringDelimiter(false, u""_s), u""_s);

  clsTavelDataStringFunctions copy;
  EXPECT_EQ(copy.ConvertStringDelimiter(false, u"1\r\n2\r\n"_s), u"1,\n2,\n"_s);
  EXPECT_EQ(copy.ConvertStringDelimiter(true, u"1.5,2,"_s), u"1.5\r2\r"_s);
}

TEST_P(DataStrings, CountAndCutTheValuesThatACommaFollows) {
  clsTavelDataStringFunctions copy;
  const auto cases = [](const QString& part) { return Cases(u"data_strings.json"_s, part); };
  for (const auto& one : cases(u"counts"_s)) {
    const QString data = one[0].toString();
    EXPECT_EQ(Module::ValidateDelimitedDataString(data), one[1].toInt()) << data.toStdString();
    EXPECT_EQ(copy.ValidateDelimitedDataString(data), one[1].toInt()) << data.toStdString();
  }
  // As the module leaves them, and as the class does.
  for (const auto& one : cases(u"fliers"_s)) {
    const QString data = one[0].toString();
    EXPECT_EQ(Module::RemoveFliersFromDataString(data, 2, 3), one[1].toString()) << data.toStdString();
    EXPECT_EQ(copy.RemoveFliersFromDataString(data, 2, 3), one[2].toString()) << data.toStdString();
  }
  for (const auto& one : cases(u"excess"_s)) {
    const QString data = one[0].toString();
    const auto most = static_cast<qint16>(one[1].toInt());
    EXPECT_EQ(Module::DiscardExcessSamples(data, most), one[2].toString()) << data.toStdString();
    EXPECT_EQ(copy.DiscardExcessSamples(data, most), one[3].toString()) << data.toStdString();
  }
}

TEST_P(DataStrings, FillsAnArrayWithAnEmptySlotBehind) {
  clsTavelDataStringFunctions copy;
  std::vector<double> values = {9, 9, 9};
  EXPECT_TRUE(copy.CreateDataArrayFromString(u"1.5,2.5,3.5,4.5"_s, values, false, 0, 0));
  EXPECT_EQ(values, (std::vector<double>{1.5, 2.5, 3.5, 0}));
  EXPECT_TRUE(copy.CreateDataArrayFromString(u"1.5,2.5,3.5,"_s, values, true, 3.5, 1.5));
  EXPECT_EQ(values, (std::vector<double>{2.5, 0}));
  copy.SetErrorMessage(u"left over"_s);
  EXPECT_FALSE(copy.CreateDataArrayFromString(u"1.5,x,3.5,"_s, values, false, 0, 0));
  EXPECT_EQ(values, (std::vector<double>{1.5, 0}));
  EXPECT_EQ(copy.ErrorMessage(), QString()) << "emptied even by a failure";
}

TEST(DataStringsLimits, TheCountersAreSixteenBit) {
  clsTavelDataStringFunctions copy;
  std::vector<double> values;
  const QString most = u"1.25,"_s.repeated(32767);
  EXPECT_EQ(Module::ValidateDelimitedDataString(most), 32767);
  EXPECT_EQ(Module::RemoveFliersFromDataString(most, 1, 2), most);
  EXPECT_EQ(Module::DiscardExcessSamples(most, 32767), most.chopped(1));
  EXPECT_TRUE(copy.CreateDataArrayFromString(most, values, false, 0, 0));
  EXPECT_EQ(values.size(), 32768u);

  const QString more = most + u"1.25,"_s;
  EXPECT_EQ(Module::ValidateDelimitedDataString(more), 0);
  EXPECT_EQ(Module::RemoveFliersFromDataString(more, 1, 2), QString());
  EXPECT_EQ(Module::DiscardExcessSamples(more, 8), QString());
  EXPECT_FALSE(copy.CreateDataArrayFromString(more, values, false, 0, 0));
}

}  // namespace
