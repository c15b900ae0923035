// A disk that takes no more, a file that nobody may write, and one that another program holds.
#include <sys/resource.h>

#include <csignal>

#include "library/Library.h"
#include "tests/faults/Command.h"
#include "tests/support/Refusal.h"
#include "tests/support/StoredValue.h"
#include "tests/support/WithoutPrivileges.h"

namespace {

// As on a full disk: no file grows beyond so many bytes.
class FullDisk {
 public:
  explicit FullDisk(qint64 bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{static_cast<rlim_t>(bytes), before_.rlim_max};
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  void (*handler_)(int);
  rlimit before_{};
};

class FullDiskTest : public CommandTest {
 protected:
  // A small data set, with all that an append needs, in front of a large one.
  FullDiskTest() {
    EXPECT_EQ(Import({}, "1\n").status, 0);
    EXPECT_EQ(RunIn(u"append LIB --description Shaft 2").status, 0);
    EXPECT_EQ(Import(u"--description Large"_s, QByteArray("10.123456789\n").repeated(10000)).status, 0);
    files = Files();
    before = Read(library);
  }

  void ExpectUntouched() const {
    EXPECT_EQ(Read(library), before);
    EXPECT_EQ(Files(), files);
  }

  static constexpr auto append = u"append LIB --description Shaft 3";
  QStringList files;
  QByteArray before;
};

TEST_F(FullDiskTest, RefusesAChangeThatFindsNoRoomAndKeepsTheOldState) {
  const QString manyMore = u"append LIB --description Large "_s + u"10.987654321 "_s.repeated(5000);
  for (const qint64 room : {0, 4096, 40000}) {
    for (const bool appends : {true, false}) {
      ProgramRun result;
      {
        const FullDisk full(before.size() + room);
        result =
            appends ? RunIn(manyMore) : Import(u"--description New"_s, QByteArray("10.5\n").repeated(10000));
      }
      ExpectFailure(result, 3, {library});
      EXPECT_EQ(Read(library), before);
      EXPECT_FALSE(QFile::exists(library + u"-journal"_s));
    }
  }
  EXPECT_EQ(RunIn(manyMore).status, 0);
}

// The words for the disk that is full, which no limit of a file's size brings about.
TEST_F(FullDiskTest, SaysThatTheDiskIsFull) {
  Connection connection;
  connection.OpenWith(library);
  connection.Execute(u"PRAGMA max_page_count = 1"_s);
  EXPECT_EQ(Refusal([&] {
              connection.Execute(u"INSERT INTO Units (Name) VALUES (?)"_s, {QString(100'000, u'x')});
            }),
            library + u": the disk is full; make room and try again"_s);
  ExpectUntouched();
}

TEST_F(FullDiskTest, TakesAChangeThatFitsWhereTheBackupDoesNot) {
  const QByteArray backup = Read(library + u".backup"_s);
  ProgramRun result;
  {
    const FullDisk full(60000);
    result = RunIn(append);
  }
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error.count(u'\n'), 1);
  EXPECT_TRUE(result.error.startsWith(u"kestrel: warning: No backup of "_s)) << result.error.toStdString();
  EXPECT_EQ(Values(library), u"1,2,3,"_s);
  EXPECT_EQ(Files(), files);
  EXPECT_EQ(Read(library + u".backup"_s), backup);
}

TEST_F(FullDiskTest, KeepsTheSettingsThatWere) {
  const QString path = Path(u"settings.json"_s);
  const auto write = [&](const QByteArray& value) {
    FileRegistry registry(path);
    return StoreValue(registry, u"Key"_s, u"Value"_s, value);
  };
  EXPECT_EQ(write("old"), Registry::Success);
  const QByteArray settings = Read(path);
  files = Files();
  {
    const FullDisk full(20);
    EXPECT_EQ(write("new"), Registry::WriteFault);
  }
  EXPECT_EQ(Read(path), settings);
  ExpectUntouched();
}

TEST_F(FullDiskTest, AReadOnlyLibraryIsReadAndNeverCopied) {
  const QFile::Permissions mayRead = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
  const QFile::Permissions mayWrite = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
  for (const auto& [permissions, reason] :
       {std::pair(mayRead, u"the file is read-only"_s), {mayRead | mayWrite, u"the folder is read-only"_s}}) {
    QFile::setPermissions(library, permissions);
    QFile::setPermissions(folder_.path(), mayRead | QFile::ExeOwner | QFile::ExeOther);
    const WithoutPrivileges ordinaryUser(folder_.path());
    if (!ordinaryUser.Effective()) GTEST_SKIP() << "permissions do not bind this user";
    EXPECT_EQ(RunIn(u"status LIB").status, 0);
    EXPECT_FALSE(Library::Open(library, {})->CanWrite()) << "the windows offer no change";
    Fails(3, append, {library, reason});
    ExpectUntouched();
  }
  QFile::setPermissions(folder_.path(), mayRead | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(FullDiskTest, ALibraryThatAnotherProgramHoldsIsLeftAlone) {
  // While the other one writes, the library can still be read: what is appended then must not be lost.
  for (const QString& lock : {u"EXCLUSIVE"_s, u"IMMEDIATE"_s}) {
    Connection other;
    other.OpenWith(library);
    other.Run(u"lock"_s, u"BEGIN "_s + lock);
    Fails(3, append, {library, u"in use by another program"_s});
    const ProgramRun status = RunIn(u"status LIB");
    if (lock == u"IMMEDIATE")
      EXPECT_EQ(status.status, 0) << status.error.toStdString();
    else
      ExpectFailure(status, 3, {library, u"in use by another program"_s});
    other.Close();
    ExpectUntouched();
  }
  EXPECT_EQ(RunIn(append).status, 0);
}

}  // namespace
