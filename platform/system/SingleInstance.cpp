#include "platform/system/SingleInstance.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QThread>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#endif

using namespace Qt::StringLiterals;

namespace {

QString FileIn(const QString& folder, const QString& kind) {
  return u"%1/kestrel-%2.%3"_s.arg(folder, QString::number(QFileInfo(QDir::homePath()).ownerId()), kind);
}

}  // namespace

// On this machine, not in the user's home, which several machines may share.
SingleInstance::Folders SingleInstance::Folders::OfThisUser() {
  QString session = qEnvironmentVariable("XDG_RUNTIME_DIR");
  if (!session.isEmpty() && !QFileInfo(session).isWritable()) session.clear();
  return {session, QDir::tempPath()};
}

#ifdef Q_OS_UNIX

namespace {

// A socket's end that is closed with it.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {
    if (number_ >= 0) fcntl(number_, F_SETFD, FD_CLOEXEC);
  }
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int Number() const { return number_; }
  bool IsOpen() const { return number_ >= 0; }

  void WaitAtMost(int milliseconds) const {
    const timeval time{milliseconds / 1000, (milliseconds % 1000) * 1000};
    setsockopt(number_, SOL_SOCKET, SO_RCVTIMEO, &time, sizeof time);
    setsockopt(number_, SOL_SOCKET, SO_SNDTIMEO, &time, sizeof time);
  }
  bool Write(const QByteArray& bytes) const {
    return send(number_, bytes.constData(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL) == bytes.size();
  }
  QByteArray ReadToEnd() const {
    constexpr qsizetype most = 1 << 16;  // far more than a path
    QByteArray all;
    char part[4096];
    for (ssize_t got = 1; all.size() < most;) {
      got = recv(number_, part, sizeof part, 0);
      if (got <= 0) break;
      all.append(part, got);
    }
    return all;
  }

 private:
  int number_;
};

// False where the path is too long for one.
bool Fill(sockaddr_un& address, const QString& path) {
  const QByteArray bytes = QFile::encodeName(path);
  if (bytes.isEmpty() || size_t(bytes.size()) >= sizeof address.sun_path) return false;
  address = {};
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, bytes.constData(), size_t(bytes.size()));
  return true;
}

const sockaddr* Generic(const sockaddr_un& address) {
  return reinterpret_cast<const sockaddr*>(&address);  // as the sockets' interface has it
}

const QByteArray taken = "taken";

}  // namespace

// Copies with sessions of their own keep out of each other's way, and all of them out of the way of a copy
// that has none: it wants the common lock for itself, which they share.
SingleInstance::SingleInstance(const Folders& folders) {
  const bool hasSession = !folders.session.isEmpty() && QFileInfo(folders.session).canonicalFilePath() !=
                                                            QFileInfo(folders.common).canonicalFilePath();
  if (hasSession && !Take(session_, folders.session, true)) return;
  if (!Take(common_, folders.common, !hasSession)) return;
  OpenSocket(hasSession ? folders.session : folders.common);
}

SingleInstance::~SingleInstance() {
  notifier_.reset();
  if (socket_ < 0) return;
  close(socket_);
  QFile::remove(socketPath_);
}

// False where another copy holds it. Unlike a QLockFile this waits for no disk, and the system frees it when
// the program crashes. What is another user's does not count.
bool SingleInstance::Take(QFile& lock, const QString& folder, bool alone) {
  lock.setFileName(FileIn(folder, u"lock"_s));
  if (!lock.open(QIODevice::ReadWrite, QFileDevice::ReadOwner | QFileDevice::WriteOwner)) return true;
  struct stat status {};
  if (fstat(lock.handle(), &status) != 0 || status.st_uid != getuid()) return true;
  prevInstance_ = flock(lock.handle(), (alone ? LOCK_EX : LOCK_SH) | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  if (prevInstance_) refusedBy_ = lock.fileName();
  return !prevInstance_;
}

// Where it is to be found stands in the lock files.
void SingleInstance::OpenSocket(const QString& folder) {
  socketPath_ = FileIn(folder, u"socket"_s);
  sockaddr_un address;
  if (!Fill(address, socketPath_)) return;
  socket_ = socket(AF_UNIX, SOCK_STREAM, 0);
  if (socket_ < 0) return;
  fcntl(socket_, F_SETFD, FD_CLOEXEC);
  fcntl(socket_, F_SETFL, O_NONBLOCK);
  QFile::remove(socketPath_);
  const mode_t usual = umask(0077);
  const bool bound = bind(socket_, Generic(address), sizeof address) == 0 && listen(socket_, 8) == 0;
  umask(usual);
  for (QFile* lock : {&session_, &common_}) {
    if (!bound || !lock->isOpen()) continue;
    lock->resize(0);
    lock->write(QFile::encodeName(socketPath_));
    lock->flush();
  }
}

bool SingleInstance::HandOver(const QByteArray& message, int milliseconds) const {
  constexpr int betweenTries = 50;
  const QDeadlineTimer deadline(milliseconds);
  for (; !deadline.hasExpired(); QThread::msleep(betweenTries)) {
    QFile lock(refusedBy_);
    sockaddr_un address;
    if (!lock.open(QIODevice::ReadOnly) || !Fill(address, QFile::decodeName(lock.readAll()))) continue;
    const Descriptor end(socket(AF_UNIX, SOCK_STREAM, 0));
    if (!end.IsOpen() || connect(end.Number(), Generic(address), sizeof address) != 0) continue;
    end.WaitAtMost(static_cast<int>(std::max<qint64>(deadline.remainingTime(), 1)));
    if (!end.Write(message)) continue;
    shutdown(end.Number(), SHUT_WR);
    return end.ReadToEnd() == taken;
  }
  return false;
}

void SingleInstance::Listen(std::function<void(const QByteArray&)> take) {
  if (socket_ < 0) return;
  take_ = std::move(take);
  notifier_ = std::make_unique<QSocketNotifier>(socket_, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { Answer(); });
}

void SingleInstance::Answer() {
  QByteArray message;
  {
    const Descriptor end(accept(socket_, nullptr, nullptr));
    if (!end.IsOpen()) return;
    end.WaitAtMost(200);  // it has written before it waits
    message = end.ReadToEnd();
    end.Write(taken);
  }
  take_(message);
}

#else

SingleInstance::SingleInstance(const Folders& folders)
    : lock_(FileIn(folders.session.isEmpty() ? folders.common : folders.session, u"lock"_s)) {
  lock_.setStaleLockTime(0);  // however long the program runs
  prevInstance_ = !lock_.tryLock() && lock_.error() == QLockFile::LockFailedError;
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::HandOver(const QByteArray&, int) const { return false; }

void SingleInstance::Listen(std::function<void(const QByteArray&)>) {}

#endif
