// A disk that takes no more, a file that nobody may write, and one that another program holds.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "platform/registry/Registry.h"
#include "tests/faults/Command.h"
#include "tests/support/WithoutPrivileges.h"

using namespace Qt::StringLiterals;

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

// Another process that has the database file to itself.
class ForeignLock {
 public:
  explicit ForeignLock(const QString& path) {
    int ready[2];
    EXPECT_EQ(pipe(ready), 0);
    const QByteArray name = path.toUtf8();
    process_ = fork();
    if (process_ == 0) {
      // Where the database's locks lie.
      flock lock{.l_type = F_WRLCK, .l_whence = SEEK_SET, .l_start = 0x40000000, .l_len = 512, .l_pid = 0};
      const bool held = fcntl(open(name.constData(), O_RDWR), F_SETLK, &lock) == 0;
      if (write(ready[1], held ? "y" : "n", 1) == 1) pause();
      _exit(1);
    }
    char answer = 'n';
    EXPECT_EQ(read(ready[0], &answer, 1), 1);
    EXPECT_EQ(answer, 'y');
    close(ready[0]);
    close(ready[1]);
  }
  ~ForeignLock() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  ForeignLock(const ForeignLock&) = delete;
  ForeignLock& operator=(const ForeignLock&) = delete;

 private:
  pid_t process_ = 0;
};

class FullDiskTest : public LibraryTest {
 protected:
  // A small data set in front of a large one.
  void SetUp() override {
    EXPECT_EQ(RunCommand(ImportWords(u"Small"_s, "1\n2\n")).status, 0);
    EXPECT_EQ(RunCommand(ImportWords(u"Large"_s, QByteArray("10.123456789\n").repeated(10000))).status, 0);
  }
};

TEST_F(FullDiskTest, RefusesAChangeThatFindsNoRoomAndKeepsTheOldState) {
  const QByteArray before = Read(library);
  const QStringList manyMore = AppendWords(u"Large"_s, u"10.987654321 "_s.repeated(5000));
  const QStringList another = ImportWords(u"New"_s, QByteArray("10.5\n").repeated(10000));
  for (const qint64 room : {qint64{0}, qint64{4096}, qint64{40000}}) {
    for (const QStringList& words : {manyMore, another}) {
      CommandResult result;
      {
        const FullDisk full(before.size() + room);
        result = RunCommand(words);
      }
      result.ExpectRefusal({library});
      EXPECT_EQ(Read(library), before);
      EXPECT_FALSE(QFile::exists(library + u"-journal"_s));
    }
  }
  EXPECT_EQ(RunCommand(manyMore).status, 0);
}

TEST_F(FullDiskTest, MakesNoHalfLibrary) {
  const QStringList before = Files();
  for (const qint64 room : {0, 4096, 10000}) {
    CommandResult result;
    {
      const FullDisk full(room);
      result.status = CommandLine::Run({u"new"_s, Path(u"other.kestrel"_s)});
    }
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(Files(), before);
  }
}

TEST_F(FullDiskTest, TakesAChangeThatFitsWhereTheBackupDoesNot) {
  const QStringList before = Files();
  const QByteArray backup = Read(BackupPath());
  CommandResult result;
  {
    const FullDisk full(60000);
    result = RunCommand(AppendWords(u"Small"_s, u"3"_s));
  }
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error.count(u'\n'), 1);
  EXPECT_TRUE(result.error.startsWith(u"kestrel: warning: No backup of "_s)) << result.error.toStdString();
  EXPECT_EQ(Values(library), u"1,2,3,"_s);
  EXPECT_TRUE(IsWhole(library));
  EXPECT_EQ(Files(), before);
  EXPECT_EQ(Read(BackupPath()), backup);
}

TEST_F(FullDiskTest, KeepsTheSettingsThatWere) {
  const QString path = Path(u"settings.json"_s);
  const auto write = [&](const QByteArray& value) {
    FileRegistry registry(path);
    Registry::Key key = 0;
    const int status = registry.RegCreateKeyEx(u"Key"_s, Registry::KeyWrite, key);
    return status == Registry::Success ? registry.RegSetValueEx(key, u"Value"_s, Registry::String, value)
                                       : status;
  };
  EXPECT_EQ(write("old"), Registry::Success);
  const QByteArray before = Read(path);
  const QStringList files = Files();
  {
    const FullDisk full(20);
    EXPECT_EQ(write("new"), Registry::WriteFault);
  }
  EXPECT_EQ(Read(path), before);
  EXPECT_EQ(Files(), files);
}

TEST_F(FullDiskTest, AReadOnlyLibraryIsReadAndNeverCopied) {
  QFile::setPermissions(library, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
  const QByteArray before = Read(library);
  const QStringList files = Files();
  const WithoutPrivileges ordinaryUser(folder.path());
  if (!ordinaryUser.Effective()) GTEST_SKIP() << "permissions do not bind this user";
  EXPECT_EQ(RunCommand({u"status"_s, library}).status, 0);
  RunCommand(AppendWords(u"Small"_s, u"3"_s)).ExpectRefusal({library, u"read-only"_s});
  EXPECT_EQ(Read(library), before);
  EXPECT_EQ(Files(), files);
}

TEST_F(FullDiskTest, ALibraryThatAnotherProgramHoldsIsLeftAlone) {
  const QByteArray before = Read(library);
  const QStringList files = Files();
  {
    const ForeignLock lock(library);
    RunCommand({u"status"_s, library}).ExpectRefusal({library, u"in use by another program"_s});
    RunCommand(AppendWords(u"Small"_s, u"3"_s)).ExpectRefusal({library, u"in use by another program"_s});
  }
  EXPECT_EQ(Read(library), before);
  EXPECT_EQ(Files(), files);
  EXPECT_EQ(RunCommand(AppendWords(u"Small"_s, u"3"_s)).status, 0);
}

}  // namespace
