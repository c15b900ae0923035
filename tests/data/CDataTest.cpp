// What reading a data set rounds and leaves alone.
#include "data/CData.h"

#include <map>
#include <string>

#include "tests/support/BothLocales.h"

namespace {

template <class T>
T Sample() {
  if constexpr (std::is_same_v<T, double>) return 7.77777;
  return T();
}

using CDataTest = BothLocales;
INSTANTIATE_FOR_BOTH_LOCALES(CDataTest);

TEST_P(CDataTest, StoresWholeAndRoundsTheDocumentedPropertiesOnReading) {
  CData data;
#define STORE(Type, Name, Initial, Reading) data.Set##Name(Sample<Type>());
  CDATA_PROPERTIES(STORE)
#undef STORE
  for (const auto& [precision, rounded] :
       std::map<qint16, double>{{3, 7.778}, {0, 0}, {9, 0}, {5, 7.77777}}) {
    data.SetPrecisionValue(precision);
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

}  // namespace
