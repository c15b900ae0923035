// Both copies of the raw-data routines, above all where they differ.
#include <array>
#include <tuple>

#include "data/TAVELDataStringFunctions.h"
#include "data/clsTavelDataStringFunctions.h"
#include "platform/language/Conversions.h"
#include "tests/support/BothLocales.h"

using namespace Qt::StringLiterals;
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

TEST_P(DataStrings, CountsTheValuesThatACommaFollows) {
  const std::vector<std::pair<QString, int>> cases = {
      {u"12,13,14,15,"_s, 4},       {u"12,13,14,15"_s, 3},
      {u"1,2,3,4,5"_s, 0},                                   // nine characters
      {u"1,2,3,4,5,"_s, 5},                                  // ten
      {u"   1,2,3,4,   "_s, 0},                              // blanks at the ends are no characters
      {u"12,13,abc,15,"_s, 0},      {u"12,13,14,abc"_s, 3},  // the last element is not looked at
      {u"12,,14,15,16,"_s, 0},                               // an empty element is no number
      {u"12, 13 ,14.5,-1e3,"_s, 4}, {u""_s, 0},
  };
  clsTavelDataStringFunctions copy;
  for (const auto& [data, count] : cases) {
    EXPECT_EQ(Module::ValidateDelimitedDataString(data), count) << data.toStdString();
    EXPECT_EQ(copy.ValidateDelimitedDataString(data), count) << data.toStdString();
  }
}

TEST_P(DataStrings, RemovesFliers) {
  const std::vector<std::array<QString, 3>> cases = {
      // data, as the module leaves them, as the class does
      {u"1.5,2.5,3.5,"_s, u"2.5,"_s, u"2.5,"_s},
      {u"2,2.5,3,"_s, u"2.5,"_s, u"2.5,"_s},  // a limit itself is outside
      {u"2.1,2.2,2.3,"_s, u"2.1,2.2,2.3,"_s, u"2.1,2.2,2.3"_s},
      {u"2.1,2.2,2.3"_s, u"2.1,2.2,2.3"_s, u"2.1,2.2"_s},
      {u"2.1,2.2,9"_s, u"2.1,2.2,"_s, u"2.1,2.2"_s},
      {u"2.10, 2.2 ,2.3,"_s, u"2.10, 2.2 ,2.3,"_s, u"2.10, 2.2 ,2.3"_s},  // the texts stay as they are
      {u"2.1,abc,2.3,"_s, u"2.1,"_s, u"2.1,"_s},                          // ends at the failure
      {u",2.5,"_s, u""_s, u""_s},
  };
  clsTavelDataStringFunctions copy;
  for (const auto& [data, ofModule, ofClass] : cases) {
    EXPECT_EQ(Module::RemoveFliersFromDataString(data, 2, 3), ofModule) << data.toStdString();
    EXPECT_EQ(copy.RemoveFliersFromDataString(data, 2, 3), ofClass) << data.toStdString();
  }
}

TEST_P(DataStrings, DiscardsExcessSamples) {
  const std::vector<std::tuple<QString, qint16, QString, QString>> cases = {
      {u"1,2,3,4,5,"_s, 3, u"1,2,3"_s, u""_s}, {u"1,2,3,4,5,"_s, 5, u"1,2,3,4,5"_s, u""_s},
      {u"1,2,3,4,5,"_s, 6, u""_s, u""_s},      {u"1,2,3,4,5"_s, 5, u""_s, u""_s},
      {u"1,2,"_s, -32768, u""_s, u""_s},       {u""_s, 0, u""_s, u""_s},
      {u"1 2 3 4 "_s, 3, u""_s, u"1,2,3"_s},  // the class splits at blanks
  };
  clsTavelDataStringFunctions copy;
  for (const auto& [data, most, ofModule, ofClass] : cases) {
    EXPECT_EQ(Module::DiscardExcessSamples(data, most), ofModule) << data.toStdString();
    EXPECT_EQ(copy.DiscardExcessSamples(data, most), ofClass) << data.toStdString();
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
