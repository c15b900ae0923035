// The settings' conversions, their defaults, start-up from them, and the wait.
#include "core/RegistryFunctions.h"
#include "core/StartUp.h"
#include "core/clsWaitTimer.h"
#include "tests/support/StoredValue.h"
#include "tests/support/TestProgram.h"

using namespace RegistryFunctions;

namespace {

constexpr int text = 1, dword = 4;
const QString key = u"Software\\Orvane Labs\\Kestrel"_s;

struct SettingsTest : testing::Test {
  TestProgram program;
};

TEST_F(SettingsTest, TheDefaultsServeForANewADamagedAndABrokenStore) {
  FileRegistry damaged(WriteFile(program.Path(u"settings.json"_s), "{\"Soft"));
  class BrokenRegistry : public MemoryRegistry {
    int RegOpenKeyEx(const QString&, quint32, Key&) override { throw std::runtime_error("broken"); }
  } broken;
  const std::pair<Registry*, int> stores[] = {{&program.registry, 0}, {&damaged, 1}, {&broken, 2}};
  for (const auto& [store, boxes] : stores) {
    program.state.registry = store;
    program.state.gSetup.ListviewDoubleClickViewsChart = false;
    program.state.gSetup.DatabaseName = u"before"_s;
    for (int box = 0; box < boxes; ++box) program.boxes.Expect();
    EXPECT_TRUE(QCGlobalFunctions::GetRegistrySettings());
    EXPECT_TRUE(program.state.gSetup.ListviewDoubleClickViewsChart);
    EXPECT_EQ(program.state.gSetup.DatabaseName, QString());
  }
  EXPECT_TRUE(program.boxes.Take().text.contains(program.Path(u"settings.json"_s)));
}

TEST_F(SettingsTest, AStoreOfAnEarlierVersionServes) {
  ASSERT_TRUE(QFile::copy(QStringLiteral(KESTREL_TEST_DATA "/upgrades/settings.json"),
                          program.Path(u"settings.json"_s)));
  FileRegistry earlier(program.Path(u"settings.json"_s));
  program.state.registry = &earlier;
  program.state.gSetup.ListviewDoubleClickViewsChart = true;
  EXPECT_TRUE(QCGlobalFunctions::GetRegistrySettings());
  EXPECT_FALSE(program.state.gSetup.ListviewDoubleClickViewsChart);
}

TEST_F(SettingsTest, NumbersAreReadByteByByteWithoutLeadingZeros) {
  const std::pair<qint32, QString> cases[] = {
      {0, u"0"_s}, {1, u"1"_s}, {255, u"255"_s}, {256, u"16"_s}, {0x01020304, u"4660"_s}, {-1, u"-1"_s}};
  for (const auto& [stored, read] : cases) {
    EXPECT_TRUE(SetKeyValue(key, u"Number"_s, dword, QString::number(stored)));
    EXPECT_EQ(GetKeyValue(key, u"Number"_s, dword), read) << stored;
  }
  // The caller's type counts, not the stored one.
  StoreValue(program.registry, key, u"Number"_s, "\x05");
  EXPECT_EQ(GetKeyValue(key, u"Number"_s, dword), u"5"_s);
  StoreValue(program.registry, key, u"Number"_s, "C:\\long enough.mdb");
  program.boxes.Expect();
  EXPECT_EQ(GetKeyValue(key, u"Number"_s, dword), QString());
  program.boxes.Expect();
  EXPECT_FALSE(SetKeyValue(key, u"Number"_s, dword, u"ten"_s));
}

TEST_F(SettingsTest, ATextLosesOneEndingNul) {
  StoreValue(program.registry, key, u"A"_s, QByteArray("C:\\a.mdb\0", 9));
  StoreValue(program.registry, key, u"B"_s, "C:\\b.mdb");
  EXPECT_EQ(GetKeyValue(key, u"A"_s, text), u"C:\\a.mdb"_s);
  EXPECT_EQ(GetKeyValue(key, u"B"_s, text), u"C:\\b.mdb"_s);
  EXPECT_EQ(GetKeyValue(u"Software\\Other"_s, u"A"_s, text), QString());
}

TEST_F(SettingsTest, AWaitEndsAfterItsTimeOnASignedClock) {
  constexpr qint32 least = std::numeric_limits<qint32>::min(), most = std::numeric_limits<qint32>::max();
  clsWaitTimer timer;
  for (const auto& [start, wait, end] :
       {std::tuple(1000, 1000, 2010), {2010, 0, 2020}, {least, 50, least + 60}}) {
    program.clock.ticks = start;
    timer.WaitTimer(wait);
    EXPECT_EQ(program.clock.ticks, end) << "the first look behind the end";
  }
  program.clock.ticks = most - 10;
  program.boxes.Expect();
  timer.WaitTimer(11);
  EXPECT_EQ(program.boxes.Take().text, u"clsWaitTimer::WaitTimer failed with error: \r\nOverflow"_s);
}

}  // namespace
