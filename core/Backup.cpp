#include "core/Backup.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <chrono>
#include <filesystem>

#include "core/Messages.h"
#include "core/Trap.h"

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto checkHolds = 1min;
constexpr auto largeAgain = 1h;
constexpr auto oldOnesApart = 24h;
constexpr std::chrono::milliseconds abandoned =
    10min;  // a lock whose program's number another has taken over

QString Name(const QString& library, int number) {
  const QString newest = library + u".backup"_s;
  return number == 1 ? newest : newest + u'.' + QString::number(number);
}

// How much later than `from` it was at `to`; a clock that was set back has no say.
std::chrono::milliseconds Between(const QDateTime& from, const QDateTime& to) {
  return std::chrono::milliseconds(qAbs(from.msecsTo(to)));
}

QDateTime MadeAt(const QString& path) { return QFileInfo(path).lastModified(); }

bool IsDue(const QString& library) {
  const QString newest = Name(library, 1);
  return QFileInfo(library).size() <= Backup::largeLibrary || !QFile::exists(newest) ||
         Between(MadeAt(newest), QDateTime::currentDateTime()) >= largeAgain;
}

void Remove(const QString& path) {
  QFile file(path);
  if (file.exists() && !file.remove()) throw Error(u"%1: %2"_s.arg(path, file.errorString()));
}

// In one step, over what has that name.
void Rename(const QString& from, const QString& to) {
  std::error_code error;
  std::filesystem::rename(QFileInfo(from).filesystemFilePath(), QFileInfo(to).filesystemFilePath(), error);
  if (error) throw Error(u"%1: %2"_s.arg(to, QString::fromStdString(error.message())));
}

// Frees the name of the newest where it is worth keeping.
void Rotate(const QString& library) {
  const QString newest = Name(library, 1);
  const QString second = Name(library, 2);
  const QString oldest = Name(library, 3);
  if (!QFile::exists(newest)) return;
  if (QFile::exists(second)) {
    if (QFile::exists(oldest) && Between(MadeAt(second), MadeAt(newest)) < oldOnesApart) return;
    Rename(second, oldest);
  }
  Rename(newest, second);
}

void Make(Connection& connection, const QString& library) {
  const QString newest = Name(library, 1);
  QLockFile lock(newest + u".lock"_s);
  lock.setStaleLockTime(abandoned);
  if (!lock.tryLock()) {
    // Held: another program is making this very backup. Not permitted: the database cannot put its journal
    // into the folder either, so the change fails and says why.
    if (lock.error() != QLockFile::UnknownError) return;
    throw Error(u"%1.lock: the file cannot be made"_s.arg(newest));
  }
  const QString copy = QFileInfo(newest + u".new"_s).absoluteFilePath();
  Remove(copy);
  Remove(copy + u"-journal"_s);
  try {
    connection.Run(u"backup"_s, u"VACUUM INTO ?"_s, {copy});
    // Whoever may not read the library may not read its copy.
    QFile::setPermissions(copy, QFile::permissions(library));
    Rotate(library);
    Rename(copy, newest);
  } catch (...) {
    QFile::remove(copy);
    throw;
  }
}

void BeforeFirstChange(Connection& connection, const QString& library) {
  if (!QFileInfo(library).isWritable() || !IsDue(library)) return;  // the change to a read-only one fails
  try {
    Make(connection, library);
  } catch (const std::exception& error) {
    ShowInformationMessage(u"No backup of %1 could be made. The change goes on without one.\r\n%2"_s.arg(
        library, ErrorText(error)));
  }
}

}  // namespace

void Backup::Guard(Connection& connection, const QString& libraryPath) {
  try {
    connection.CheckIntegrity();
  } catch (...) {
    connection.Close();
    throw;
  }
  QElapsedTimer sinceCheck;
  sinceCheck.start();
  connection.BeforeFirstChange = [&connection, libraryPath, sinceCheck] {
    if (std::chrono::milliseconds(sinceCheck.elapsed()) >= checkHolds) connection.CheckIntegrity();
    BeforeFirstChange(connection, libraryPath);
  };
}
