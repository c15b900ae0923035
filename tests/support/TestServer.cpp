#include "tests/support/TestServer.h"

#include <grp.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUrl>
#include <csignal>
#include <memory>

#include "platform/ado/Connection.h"

using namespace Qt::StringLiterals;

namespace {

QString ProgramPath(const QString& name) {
  const QDir versions(u"/usr/lib/postgresql"_s);
  QStringList folders;
  for (const QString& version :
       versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed))
    folders << versions.filePath(version + u"/bin"_s);
  const QString found = QStandardPaths::findExecutable(name, folders);
  return found.isEmpty() ? QStandardPaths::findExecutable(name) : found;
}

class Server {
 public:
  Server() {
    // The server refuses to run as the superuser.
    const passwd* user = geteuid() == 0 ? getpwnam("postgres") : nullptr;
    if (geteuid() == 0) {
      if (!user || chown(folder_.path().toUtf8().constData(), user->pw_uid, user->pw_gid) != 0) return;
    }
    process_.setProcessChannelMode(QProcess::MergedChannels);
    process_.setWorkingDirectory(folder_.path());
    process_.setChildProcessModifier([uid = user ? user->pw_uid : 0, gid = user ? user->pw_gid : 0] {
      if (uid != 0 && (setgroups(0, nullptr) != 0 || setgid(gid) != 0 || setuid(uid) != 0)) _exit(1);
      prctl(PR_SET_PDEATHSIG, SIGQUIT);  // whatever becomes of the test
    });
    const QString data = folder_.filePath(u"data"_s);
    process_.start(ProgramPath(u"initdb"_s), {u"--no-sync"_s, u"-A"_s, u"trust"_s, u"-E"_s, u"UTF8"_s,
                                              u"--locale=C"_s, u"-U"_s, u"kestrel"_s, u"-D"_s, data});
    if (!process_.waitForFinished() || process_.exitCode() != 0) return;
    QFile access(data + u"/pg_hba.conf"_s);
    if (!access.open(QIODevice::WriteOnly)) return;
    access.write("local all guarded scram-sha-256\nlocal all all trust\n");
    access.close();
    if (!Start()) return;
    Connection connection;
    connection.OpenWith(Address(u"postgres"_s));
    connection.Execute(u"CREATE ROLE guarded LOGIN PASSWORD 'let me in'"_s);
    for (const QString& name : {u"reader"_s, u"writer"_s})
      connection.Execute(u"CREATE ROLE %1 LOGIN"_s.arg(name));
  }

  ~Server() { Stop(); }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  bool Start() {
    process_.start(
        ProgramPath(u"postgres"_s),
        {u"-D"_s, folder_.filePath(u"data"_s), u"-k"_s, folder_.path(), u"-c"_s, u"listen_addresses="_s,
         u"-c"_s, u"fsync=off"_s, u"-c"_s, u"full_page_writes=off"_s, u"-c"_s, u"shared_buffers=16MB"_s});
    for (QByteArray said; !isRunning_ && process_.waitForReadyRead();) {
      said += process_.readAll();
      isRunning_ = said.contains("ready to accept connections");
    }
    return isRunning_;
  }

  void Stop() {
    isRunning_ = false;
    if (process_.state() == QProcess::NotRunning) return;
    kill(static_cast<pid_t>(process_.processId()), SIGQUIT);
    process_.waitForFinished();
  }

  bool IsRunning() const { return isRunning_; }

  QString Address(const QString& database) const {
    const QString folder = QString::fromLatin1(QUrl::toPercentEncoding(folder_.path()));
    return u"postgresql://kestrel@%1/%2"_s.arg(folder, database);
  }

  QString NewDatabase() {
    const QString name = u"test%1"_s.arg(++databases_);
    Connection connection;
    connection.OpenWith(Address(u"postgres"_s));
    connection.Run(u"create"_s, u"CREATE DATABASE %1 STRATEGY FILE_COPY"_s.arg(name));
    return Address(name);
  }

 private:
  QTemporaryDir folder_;
  QProcess process_;
  bool isRunning_ = false;
  int databases_ = 0;
};

std::unique_ptr<Server> theServer;

class StopsAtTheEnd : public testing::Environment {
  void TearDown() override { theServer.reset(); }
};
const auto* const atTheEnd = testing::AddGlobalTestEnvironment(new StopsAtTheEnd);

}  // namespace

QString TestServer::NewDatabase() {
  if (!theServer) theServer = std::make_unique<Server>();
  return theServer->IsRunning() ? theServer->NewDatabase() : QString();
}

QString TestServer::As(const QString& user, const QString& address) {
  return QString(address).replace(u"kestrel@"_s, user + u'@');
}

void TestServer::Restart() {
  theServer->Stop();
  theServer->Start();
}
