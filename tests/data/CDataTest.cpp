// What reading a data set rounds and leaves alone.
#include "data/CData.h"

#include <map>

#include "tests/support/BothLocales.h"

namespace {

using CDataTest = BothLocales;
INSTANTIATE_FOR_BOTH_LOCALES(CDataTest);

TEST_P(CDataTest, StoresWholeAndRoundsTheDocumentedPropertiesOnReading) {
  CData data;
  data.ForEachProperty([&](const char*, auto value, const auto&, auto set) {
    if constexpr (std::is_same_v<decltype(value), double>) (data.*set)(7.77777);
  });
  for (const auto& [precision, rounded] :
       std::map<qint16, double>{{3, 7.778}, {0, 0}, {9, 0}, {5, 7.77777}}) {
    data.SetPrecisionValue(precision);
    const std::map<std::string, double> other = {
        {"CPKValue", 7.78}, {"HiFlier", 7.77777}, {"LoFlier", 7.77777}};
    data.ForEachProperty([&](const char* name, auto value, const auto& stored, auto) {
      if constexpr (std::is_same_v<decltype(value), double>) {
        const auto found = other.find(name);
        EXPECT_EQ(value, found != other.end() ? found->second : rounded) << name << " at " << precision;
        EXPECT_EQ(stored, 7.77777) << name;
      }
    });
  }
}

}  // namespace
