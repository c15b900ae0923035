#include "platform/system/NewFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "platform/error/Error.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

#ifdef Q_OS_UNIX

// What the end of the program leaves to be removed: the file, and a journal that belongs to it.
std::array<std::array<char, 4200>, 2> leftovers;
constexpr std::array<int, 3> endings = {SIGINT, SIGTERM, SIGHUP};

extern "C" void RemoveAndEnd(int number) {
  for (const auto& path : leftovers) unlink(path.data());
  std::signal(number, SIG_DFL);
  std::raise(number);
}

void RemoveAtTheEnd(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  if (name.size() + 9 > static_cast<qsizetype>(leftovers[0].size())) return;
  std::strcpy(leftovers[0].data(), name.constData());
  std::strcpy(leftovers[1].data(), (name + "-journal").constData());
  for (const int number : endings) {
    // What the caller has chosen to ignore (nohup) stays ignored.
    if (std::signal(number, RemoveAndEnd) == SIG_IGN) std::signal(number, SIG_IGN);
  }
}

void StopRemoving() {
  for (const int number : endings) {
    if (std::signal(number, SIG_DFL) == SIG_IGN) std::signal(number, SIG_IGN);
  }
}

// 0, or the error's number. In one step where the file system can; never over an existing file.
int Move(const QByteArray& from, const QByteArray& to) {
#ifdef Q_OS_LINUX
  if (renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0) return 0;
  if (errno != EINVAL && errno != ENOSYS) return errno;
#endif
  if (link(from.constData(), to.constData()) == 0) {
    unlink(from.constData());
    return 0;
  }
  if (errno != EPERM && errno != EOPNOTSUPP && errno != ENOSYS) return errno;
  // No second names here: the name is claimed by an empty file, which then gives way.
  const int claim = open(to.constData(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0600);
  if (claim < 0) return errno;
  close(claim);
  if (std::rename(from.constData(), to.constData()) == 0) return 0;
  const int error = errno;
  unlink(to.constData());
  return error;
}

QString Reason(int error) {
  if (error == EEXIST) return u"the file exists already"_s;
  if (error == ENAMETOOLONG) return u"the name is too long"_s;
  return u"the file cannot be made (%1)"_s.arg(qt_error_string(error));
}

#else

void RemoveAtTheEnd(const QString&) {}
void StopRemoving() {}

#endif

// With what the database puts behind it for its journal.
bool IsTooLong(const QString& fileName) {
  constexpr qsizetype mostBytes = 255;
  return QFile::encodeName(fileName).size() + qsizetype(std::strlen("-journal")) > mostBytes;
}

}  // namespace

NewFile::NewFile(const QString& path) {
  const QFileInfo target(path);
  const auto refuse = [&](const QString& reason) { throw Error(reason, Error::Kind::Unavailable, path); };
  if (target.fileName().isEmpty() || target.isDir()) refuse(u"it is a folder, not a file"_s);
  if (IsTooLong(target.fileName())) refuse(u"the name is too long"_s);
  if (target.exists() || target.isSymLink()) refuse(u"the file exists already"_s);
  if (!target.dir().exists()) refuse(u"there is no such folder"_s);
  given_ = path;
  target_ = target.absoluteFilePath();
  unfinished_ = target.dir().absoluteFilePath(u".kestrel-"_s + QUuid::createUuid().toString(QUuid::Id128));
  QFile file(unfinished_);
  if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) refuse(file.errorString());
  RemoveAtTheEnd(unfinished_);
}

NewFile::~NewFile() {
  StopRemoving();
  if (unfinished_.isEmpty()) return;
  QFile::remove(unfinished_);
  QFile::remove(unfinished_ + u"-journal"_s);
}

void NewFile::Finish() {
#ifdef Q_OS_UNIX
  if (const int error = Move(QFile::encodeName(unfinished_), QFile::encodeName(target_)); error != 0)
    throw Error(Reason(error), Error::Kind::Unavailable, given_);
#else
  QFile file(unfinished_);
  if (!file.rename(target_)) throw Error(u"the file cannot be made (%1)"_s.arg(file.errorString()));
#endif
  unfinished_.clear();
}
