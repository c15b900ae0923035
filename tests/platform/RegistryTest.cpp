// What a settings file survives: crashes, damage, two programs.
#include <QTemporaryDir>

#include "tests/support/Files.h"
#include "tests/support/StoredValue.h"

using namespace Qt::StringLiterals;

namespace {

class FileRegistryTest : public testing::Test {
 protected:
  const QString key = u"Software\\Orvane Labs\\Kestrel"_s;

  static QByteArray Get(Registry& registry, const QString& path, const QString& name) {
    Registry::Key handle = 0;
    Registry::Type type{};
    QByteArray data;
    registry.RegOpenKeyEx(path, Registry::KeyRead, handle);
    const int status = registry.RegQueryValueEx(handle, name, type, data);
    return status == Registry::Success ? data : QByteArray("status ") + QByteArray::number(status);
  }

  QTemporaryDir folder;
  const QString path = folder.filePath(u"new/settings.json"_s);
};

TEST_F(FileRegistryTest, TwoProgramsSeeEachOthersValuesAndTypesAreKept) {
  FileRegistry first(path), second(path);
  const QString file = u"C:\\Prüfung \"A\"\\StatData.mdb"_s;
  EXPECT_EQ(StoreValue(first, key, u"DatabaseName"_s, file.toUtf8()), Registry::Success);
  EXPECT_EQ(StoreValue(second, key, u"Choice"_s, QByteArray("\0\1\0\0", 4), Registry::Dword),
            Registry::Success);
  EXPECT_EQ(Get(second, key.toUpper(), u"databasename"_s), file.toUtf8());
  EXPECT_EQ(Get(first, key, u"Choice"_s), QByteArray("\0\1\0\0", 4));
  EXPECT_EQ(Get(first, u"Software\\Other"_s, u"Choice"_s), "status 2");
  StoreValue(first, u"Software\\Other"_s, u"Choice"_s, "other");
  EXPECT_EQ(Get(second, u"Software\\Other"_s, u"Choice"_s), "other");
  EXPECT_EQ(Get(second, key, u"DatabaseName"_s), file.toUtf8());
}

TEST_F(FileRegistryTest, ADamagedFileIsReportedOnceAndSetAside) {
  ASSERT_TRUE(QDir(folder.path()).mkdir(u"new"_s));
  for (const QByteArray& content : {QByteArray(), QByteArray("{\"Software\": {\"Data"), QByteArray("[1]")}) {
    WriteFile(path, content);
    FileRegistry registry(path);
    Registry::Key handle = 0;
    EXPECT_EQ(registry.RegOpenKeyEx(key, Registry::KeyRead, handle), Registry::ReadFault);
    EXPECT_EQ(registry.RegOpenKeyEx(key, Registry::KeyRead, handle), Registry::NotFound);
    EXPECT_EQ(StoreValue(registry, key, u"DatabaseName"_s, "a.mdb"), Registry::Success);
    EXPECT_EQ(ReadFile(path + u".damaged"_s), content);
    EXPECT_EQ(Get(registry, key, u"DatabaseName"_s), "a.mdb");
  }
}

TEST_F(FileRegistryTest, AValueThatCannotBeMadeOutStaysInTheFile) {
  ASSERT_TRUE(QDir(folder.path()).mkdir(u"new"_s));
  WriteFile(path, R"({"Software\\Orvane Labs\\Kestrel": {"Choice": {"4": "01zz"}, "Other": {"3": "0"}}})");
  FileRegistry registry(path);
  EXPECT_EQ(Get(registry, key, u"Choice"_s), "");
  EXPECT_EQ(StoreValue(registry, key, u"DatabaseName"_s, "a.mdb"), Registry::Success);
  const QByteArray content = ReadFile(path);
  EXPECT_TRUE(content.contains(R"("4": "01zz")") && content.contains(R"("3": "0")")) << content.toStdString();
  EXPECT_EQ(StoreValue(registry, key, u"Choice"_s, "\1", Registry::Dword), Registry::Success);
  EXPECT_EQ(Get(registry, key, u"Choice"_s), "\1") << "until it is set";
}

}  // namespace
