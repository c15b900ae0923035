// The settings' conversions, their defaults, start-up from them, and the wait.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "core/RegistryFunctions.h"
#include "core/StartUp.h"
#include "core/clsWaitTimer.h"
#include "tests/support/TestProgram.h"
#include "tests/support/WithoutPrivileges.h"

using namespace Qt::StringLiterals;
using namespace RegistryFunctions;

namespace {

constexpr int text = 1, dword = 4;
const QString key = u"Software\\Orvane Labs\\Kestrel"_s;

class SettingsTest : public testing::Test {
 protected:
  void Store(const QString& name, Registry::Type type, const QByteArray& data) {
    Registry::Key handle = 0;
    program.registry.RegCreateKeyEx(key, Registry::KeyWrite, handle);
    program.registry.RegSetValueEx(handle, name, type, data);
  }

  TestProgram program;
};

TEST_F(SettingsTest, AFreshStoreGivesTheDefaultsWithoutAMessage) {
  program.state.gSetup.ListviewDoubleClickViewsChart = false;
  program.state.gSetup.DatabaseName = u"before"_s;
  EXPECT_TRUE(QCGlobalFunctions::GetRegistrySettings());
  EXPECT_TRUE(program.state.gSetup.ListviewDoubleClickViewsChart);
  EXPECT_EQ(program.state.gSetup.DatabaseName, QString());
}

TEST_F(SettingsTest, NumbersAreReadByteByByteWithoutLeadingZeros) {
  const std::pair<qint32, QString> cases[] = {
      {0, u"0"_s}, {1, u"1"_s}, {255, u"255"_s}, {256, u"16"_s}, {0x01020304, u"4660"_s}, {-1, u"-1"_s}};
  for (const auto& [stored, read] : cases) {
    EXPECT_TRUE(SetKeyValue(key, u"Number"_s, dword, QString::number(stored)));
    EXPECT_EQ(GetKeyValue(key, u"Number"_s, dword), read) << stored;
  }
  // The caller's type counts, not the stored one.
  Store(u"Number"_s, Registry::String, "\x05");
  EXPECT_EQ(GetKeyValue(key, u"Number"_s, dword), u"5"_s);
}

TEST_F(SettingsTest, ATextLosesOneEndingNul) {
  Store(u"A"_s, Registry::String, QByteArray("C:\\a.mdb\0", 9));
  Store(u"B"_s, Registry::String, "C:\\b.mdb");
  EXPECT_EQ(GetKeyValue(key, u"A"_s, text), u"C:\\a.mdb"_s);
  EXPECT_EQ(GetKeyValue(key, u"B"_s, text), u"C:\\b.mdb"_s);
  EXPECT_EQ(GetKeyValue(key, u"C"_s, text), QString());
  EXPECT_EQ(GetKeyValue(u"Software\\Other"_s, u"A"_s, text), QString());
}

TEST_F(SettingsTest, WhatCannotBeConvertedIsReported) {
  Store(u"Path"_s, Registry::String, "C:\\long enough.mdb");
  program.boxes.Expect();
  EXPECT_EQ(GetKeyValue(key, u"Path"_s, dword), QString());
  EXPECT_TRUE(program.boxes.Take().text.startsWith(u"RegistryFunctions::GetKeyValue failed"_s));
  program.boxes.Expect();
  EXPECT_FALSE(SetKeyValue(key, u"Number"_s, dword, u"ten"_s));
  EXPECT_TRUE(program.boxes.Take().text.startsWith(u"RegistryFunctions::SetKeyValue failed"_s));
}

TEST_F(SettingsTest, AnUnreadableFileGivesOneMessageAndTheDefaults) {
  QFile file(program.Path(u"settings.json"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("{\"Soft") == 6);
  file.close();
  FileRegistry registry(file.fileName());
  program.state.registry = &registry;
  program.boxes.Expect();
  EXPECT_TRUE(QCGlobalFunctions::GetRegistrySettings());
  EXPECT_TRUE(program.boxes.Take().text.contains(file.fileName()));
  EXPECT_TRUE(program.state.gSetup.ListviewDoubleClickViewsChart);
  EXPECT_TRUE(SetKeyValue(key, u"ListviewDoubleClickViewsChart"_s, dword, u"0"_s));
  EXPECT_TRUE(QCGlobalFunctions::GetRegistrySettings());
  EXPECT_FALSE(program.state.gSetup.ListviewDoubleClickViewsChart);
}

TEST_F(SettingsTest, AnUnwritableFileIsReportedOnce) {
  FileRegistry registry(program.Path(u"settings.json"_s));
  program.state.registry = &registry;
  ASSERT_TRUE(CreateRegistryKey({}));
  ASSERT_TRUE(QFile::setPermissions(program.folder.path(), QFile::ReadOwner | QFile::ExeOwner));
  {
    const WithoutPrivileges ordinaryUser(program.folder.path());
    program.boxes.Expect();
    EXPECT_TRUE(SetKeyValue(key, u"A"_s, text, u"x"_s)) << "the key is there; only the write failed";
    EXPECT_EQ(program.boxes.Take().text.left(39), u"RegistryFunctions::SetKeyValue failed w"_s);
    program.boxes.Expect();
    EXPECT_FALSE(SetKeyValue(u"Software\\Other"_s, u"A"_s, text, u"x"_s));
    EXPECT_EQ(program.boxes.Take().text.left(39), u"RegistryFunctions::CreateRegistryKey fa"_s);
  }
  QFile::setPermissions(program.folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(SettingsTest, StartingWithoutADatabaseTellsSo) {
  ASSERT_TRUE(StartUp::ReadSettings(u"/opt/kestrel"_s));
  EXPECT_EQ(program.state.gSetup.RegistryKeyPath, key);
  EXPECT_EQ(program.state.gHelpFilePath, QDir::toNativeSeparators(u"/opt/kestrel/Help/KESTREL.chm"_s));
  EXPECT_FALSE(program.state.gRunningInDevelopment);
  program.boxes.Expect();
  StartUp::AttachConfiguredDatabase();
  const MessageBox::Request box = program.boxes.Take();
  EXPECT_TRUE(box.text.startsWith(u"A valid database connection could not be established. "_s));
  EXPECT_EQ(box.title, u"System Message"_s);
  EXPECT_EQ(box.icon, MessageBox::Icon::Information);
  EXPECT_FALSE(program.state.gDatabaseOpen);
  EXPECT_EQ(program.screen.panel, u"Current Database: <none>"_s);
}

TEST_F(SettingsTest, StartingWithADatabaseAttachesIt) {
  ASSERT_TRUE(SetKeyValue(key, u"DatabaseName"_s, text, program.LibraryPath()));
  ASSERT_TRUE(StartUp::ReadSettings(u"/opt/kestrel"_s));
  StartUp::AttachConfiguredDatabase();
  EXPECT_TRUE(program.state.gDatabaseOpen);
  EXPECT_EQ(program.screen.panel, u"Current Database: StatData.mdb (DB Rev. 2.0)"_s);
  EXPECT_EQ(program.screen.calls, QStringList({u"EnableLoadTimer"_s, u"SetupMainFormDisplay"_s}));
}

TEST_F(SettingsTest, WithoutSettingsTheProgramEndsWithItsBox) {
  class BrokenRegistry : public MemoryRegistry {
    int RegOpenKeyEx(const QString&, quint32, Key&) override { throw std::runtime_error("broken"); }
  } broken;
  program.state.registry = &broken;
  for (int box = 0; box < 2; ++box) program.boxes.Expect();
  EXPECT_TRUE(QCGlobalFunctions::GetRegistrySettings())
      << "each value's failure is its own; the defaults serve";
  for (int box = 0; box < 2; ++box) program.boxes.Take();
}

TEST_F(SettingsTest, AWaitEndsAfterItsTimeOnASignedClock) {
  clsWaitTimer timer;
  program.clock.ticks = 1000;
  timer.WaitTimer(1000);
  EXPECT_EQ(program.clock.ticks, 2010) << "the first look behind the end";
  timer.WaitTimer(0);
  EXPECT_EQ(program.clock.ticks, 2020);
  program.clock.ticks = std::numeric_limits<qint32>::min();
  timer.WaitTimer(50);
  EXPECT_EQ(program.clock.ticks, std::numeric_limits<qint32>::min() + 60);
  program.clock.ticks = std::numeric_limits<qint32>::max() - 10;
  program.boxes.Expect();
  timer.WaitTimer(11);
  EXPECT_EQ(program.boxes.Take().text, u"clsWaitTimer::WaitTimer failed with error: \r\nOverflow"_s);
}

TEST_F(SettingsTest, RecordCommandsFollowTheRecordset) {
  Recordset units;
  const auto states = [&] {
    const auto now = QCGlobalFunctions::UpdateMenuButtonStates(units);
    return u"%1%2%3"_s.arg(now.currentRecord).arg(now.firstAndPrevious).arg(now.nextAndLast);
  };
  EXPECT_EQ(states(), u"000"_s);
  units.Open(u"SELECT * FROM Units"_s, *program.state.gConnection);
  EXPECT_EQ(states(), u"000"_s);
  program.Execute(u"INSERT INTO Units (Name) VALUES ('A')"_s);
  units.Requery();
  EXPECT_EQ(states(), u"100"_s);
  program.Execute(u"INSERT INTO Units (Name) VALUES ('B')"_s);
  units.Requery();
  EXPECT_EQ(states(), u"111"_s);
  units.MovePrevious();
  EXPECT_EQ(states(), u"101"_s);
  units.MoveLast();
  units.MoveNext();
  EXPECT_EQ(states(), u"110"_s);
}

}  // namespace
