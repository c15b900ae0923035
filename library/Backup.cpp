#include "library/Backup.h"
#include "texts/LibraryWords.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <chrono>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto largeAgain = 1h;
constexpr auto oldOnesApart = 24h;

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

// Run by who holds the library's write lock, so by one program at a time.
void Make(const QString& library) {
  const QString newest = Name(library, 1);
  const QString copy = QFileInfo(newest + u".new"_s).absoluteFilePath();
  Remove(copy);
  Remove(copy + u"-journal"_s);
  try {
    Connection reader;  // inside its transaction the writing one cannot copy
    reader.OpenWith(library);
    reader.Run(u"backup"_s, u"VACUUM INTO ?"_s, {copy});
    // Whoever may not read the library may not read its copy.
    QFile::setPermissions(copy, QFile::permissions(library));
    Rotate(library);
    Rename(copy, newest);
  } catch (...) {
    QFile::remove(copy);
    throw;
  }
}

// Whether the library could not be read (its tables' definition, a lock, damage): then it cannot be changed
// either.
bool IsAboutLibrary(const std::exception& error) {
  constexpr int sqlError = 1, busy = 5, locked = 6, corrupt = 11, notADatabase = 26;
  const auto* failure = dynamic_cast<const DatabaseError*>(&error);
  const int code = failure ? failure->code : 0;
  return code == sqlError || code == busy || code == locked || code == corrupt || code == notADatabase;
}

using Tell = std::function<void(const QString&)>;

void BeforeFirstChange(Connection& connection, const QString& library, const Tell& tell) {
  // A file that is gone or read-only, a folder that takes no journal: the change fails and says why.
  const QFileInfo file(library);
  const bool isWritable = file.isWritable() && QFileInfo(file.absolutePath()).isWritable();
  if (!isWritable || !IsDue(library)) return;
  try {
    Make(library);
  } catch (const std::exception& error) {
    if (IsAboutLibrary(error)) throw;
    // Nobody has to wait for the lock while the user reads.
    connection.RollbackTransaction();
    if (tell) {
      tell(Words::Library::noBackup(library, ErrorText(error)));
    }
    connection.BeginTransaction();
  }
}

}  // namespace

void Backup::Guard(Connection& connection, const QString& libraryPath, const Tell& tell,
                   std::chrono::milliseconds checkHolds) {
  try {
    connection.CheckIntegrity();
  } catch (...) {
    connection.Close();
    throw;
  }
  QElapsedTimer sinceCheck;
  sinceCheck.start();
  connection.BeforeFirstChange = [&connection, libraryPath, tell, checkHolds, sinceCheck] {
    if (std::chrono::milliseconds(sinceCheck.elapsed()) >= checkHolds) connection.CheckIntegrity();
    BeforeFirstChange(connection, libraryPath, tell);
  };
}
