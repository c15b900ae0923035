#include "platform/system/SingleInstance.h"

#include <QDir>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <sys/file.h>

#include <cerrno>
#endif

using namespace Qt::StringLiterals;

namespace {

// On this machine, not in the user's home, which several machines may share.
QString DefaultLockFile() {
  QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  if (folder.isEmpty() || !QFileInfo(folder).isWritable()) folder = QDir::tempPath();
  return u"%1/kestrel-%2.lock"_s.arg(folder, QString::number(QFileInfo(QDir::homePath()).ownerId()));
}

}  // namespace

SingleInstance::SingleInstance(const QString& lockFile)
    : lock_(lockFile.isEmpty() ? DefaultLockFile() : lockFile) {
#ifdef Q_OS_UNIX
  // Unlike a QLockFile this waits for no disk, and the system frees it when the program crashes.
  prevInstance_ = lock_.open(QIODevice::ReadWrite) && flock(lock_.handle(), LOCK_EX | LOCK_NB) != 0 &&
                  errno == EWOULDBLOCK;
#else
  lock_.setStaleLockTime(0);  // however long the program runs
  prevInstance_ = !lock_.tryLock() && lock_.error() == QLockFile::LockFailedError;
#endif
}
