// What a data set holds when new, and what reading rounds and leaves alone.
#include "core/CData.h"

#include <QVariant>
#include <map>
#include <string>

#include "tests/support/BothLocales.h"

using namespace Qt::StringLiterals;

namespace {

template <class T>
T Sample() {
  if constexpr (std::is_same_v<T, double>) return 7.77777;
  return T();
}

using CDataTest = BothLocales;
INSTANTIATE_FOR_BOTH_LOCALES(CDataTest);

TEST(CData, StartsWithTheDocumentedValues) {
  const CData data;
  const std::map<std::string, QVariant> other = {{"PrecisionValue", 4},
                                                 {"SubGroupSize", 1},
                                                 {"SensitivityValue", 1},
                                                 {"DetectionPeriod", 1},
                                                 {"StringDelimiter", u","_s}};
  int count = 0;
  data.ForEachProperty([&](const char* name, auto value) {
    ++count;
    const auto found = other.find(name);
    const QVariant expected = found != other.end() ? found->second : QVariant::fromValue(decltype(value)());
    EXPECT_EQ(QVariant::fromValue(value).toString(), expected.toString()) << name;
  });
  EXPECT_EQ(count, 45);
}

TEST_P(CDataTest, ReadsRoundedAndStoresWhole) {
  CData data;
  data.SetUpperSpecLimit(1.234567);
  EXPECT_EQ(data.UpperSpecLimit(), 1.2346);
  data.SetPrecisionValue(2);
  EXPECT_EQ(data.UpperSpecLimit(), 1.23);
  data.SetPrecisionValue(8);
  EXPECT_EQ(data.UpperSpecLimit(), 1.234567);
}

TEST_P(CDataTest, RoundsExactlyTheDocumentedProperties) {
  CData data;
  data.SetPrecisionValue(3);
  data.SetCPKValue(1.33333);
  data.SetHiFlier(9.87654);
  data.SetLoFlier(-9.87654);
  EXPECT_EQ(data.CPKValue(), 1.33);
  EXPECT_EQ(data.HiFlier(), 9.87654);
  EXPECT_EQ(data.LoFlier(), -9.87654);

#define STORE(Type, Name, Initial, Reading) data.Set##Name(Sample<Type>());
  CDATA_PROPERTIES(STORE)
#undef STORE
  for (const qint16 precision : std::initializer_list<qint16>{3, 0, -1, 9}) {
    data.SetPrecisionValue(precision);
    const double rounded = precision == 3 ? 7.778 : 0;
    const std::map<std::string, double> other = {
        {"CPKValue", 7.78}, {"HiFlier", 7.77777}, {"LoFlier", 7.77777}};
    data.ForEachProperty([&](const char* name, auto value) {
      if constexpr (std::is_same_v<decltype(value), double>) {
        const auto found = other.find(name);
        EXPECT_EQ(value, found != other.end() ? found->second : rounded) << name << " at " << precision;
      }
    });
  }
}

TEST(CData, StoringAnythingElseLeavesDataChangedAlone) {
  for (const bool changed : {false, true}) {
    CData data;
    data.SetDataChanged(changed);
#define STORE(Type, Name, Initial, Reading) \
  if (std::string(#Name) != "DataChanged") data.Set##Name(Type());
    CDATA_PROPERTIES(STORE)
#undef STORE
    EXPECT_EQ(data.DataChanged(), changed);
  }
}

}  // namespace
