#include "library/Backup.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <chrono>
#include <filesystem>

#include "library/LibraryFile.h"
#include "texts/LibraryWords.h"

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto again = 1h;
constexpr auto oldOnesApart = 24h;

QString Name(const QString& library, int number) {
  const QString newest = library + u".backup"_s;
  return number == 1 ? newest : newest + u'.' + QString::number(number);
}

QString ChangeName(const QString& library) { return library + u".backup.change"_s; }
QString DeletionName(const QString& library) { return library + u".backup.deletion"_s; }

// How much later than `from` it was at `to`; a clock that was set back has no say.
std::chrono::milliseconds Between(const QDateTime& from, const QDateTime& to) {
  return std::chrono::milliseconds(qAbs(from.msecsTo(to)));
}

QDateTime MadeAt(const QString& path) { return QFileInfo(path).lastModified(); }

// Of a large library there is one for each purpose in an hour.
bool IsLarge(const QString& library) { return QFileInfo(library).size() > Backup::largeLibrary; }

bool IsOld(const QString& backup) {
  return !QFile::exists(backup) || Between(MadeAt(backup), QDateTime::currentDateTime()) >= again;
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

// Whoever may not read the library may not read its copy, from the first byte on.
void MakeEmpty(const QString& copy, const QString& library) {
  Remove(copy);
  Remove(copy + u"-journal"_s);
  QFile file(copy);
  const bool made =
      file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
  if (!made) throw Error(u"%1: %2"_s.arg(copy, file.errorString()));
  LibraryFile::ShareRights(library, copy);
}

// Copies the library as it was before the transaction that holds its write lock, so that one program at a
// time does, and hands the copy on; what is left of it goes.
void Make(const QString& library, const std::function<void(const QString& copy)>& put) {
  const QString copy = Name(library, 1) + u".new"_s;
  try {
    MakeEmpty(copy, library);
    Connection reader;  // inside its transaction the writing one cannot copy
    reader.OpenWith(library);
    reader.Run(u"backup"_s, u"VACUUM INTO ?"_s, {copy});
    reader.Close();
    put(copy);
  } catch (...) {
    QFile::remove(copy);
    throw;
  }
}

// The same file under a second name, in one step over what has that name.
void Share(const QString& copy, const QString& name) {
  const QString second = name + u".new"_s;
  Remove(second);
  std::error_code error;
  const auto path = [](const QString& file) { return QFileInfo(file).filesystemFilePath(); };
  std::filesystem::create_hard_link(path(copy), path(second), error);
  if (error && !QFile::copy(copy, second)) throw Error(Words::Library::notCopied(second));
  Rename(second, name);
}

// Whether the library could not be read (its tables' definition, a lock, damage): then it cannot be changed
// either.
bool IsAboutLibrary(const std::exception& error) {
  constexpr int sqlError = 1, busy = 5, locked = 6;
  const auto* failure = dynamic_cast<const DatabaseError*>(&error);
  const int code = failure ? failure->code : 0;
  return code == sqlError || code == busy || code == locked || code == DatabaseError::damaged ||
         code == DatabaseError::noDatabase;
}

QString FileItself(const QString& path) {
  const QString itself = QFileInfo(path).canonicalFilePath();
  return itself.isEmpty() ? QFileInfo(path).absoluteFilePath() : itself;
}

// Empty where there is none.
QString NewestBackup(const QString& library) {
  QString newest;
  for (const QString& backup : {Name(library, 1), ChangeName(library), DeletionName(library)})
    if (QFile::exists(backup) && (newest.isEmpty() || MadeAt(backup) >= MadeAt(newest))) newest = backup;
  return newest;
}

}  // namespace

void Backup::NamedWhereDamaged(const QString& libraryPath, const std::function<void()>& read) {
  try {
    read();
  } catch (const DatabaseError& error) {
    const bool isDamaged = error.code == DatabaseError::damaged || error.code == DatabaseError::noDatabase;
    const QString backup = isDamaged ? NewestBackup(FileItself(libraryPath)) : QString();
    if (backup.isEmpty()) throw;
    const QString madeAt = MadeAt(backup).toString(u"yyyy-MM-dd HH:mm"_s);
    throw DatabaseError(Words::Library::hasBackup(error.Text(), QFileInfo(backup).fileName(), madeAt),
                        error.code);
  }
}

Backup::Backup(Connection& connection, const QString& libraryPath, Tell tell,
               std::chrono::milliseconds checkHolds)
    : connection_(connection),
      given_(libraryPath),
      library_(FileItself(libraryPath)),
      tell_(std::move(tell)),
      checkHolds_(checkHolds) {
  try {
    Check();
  } catch (...) {
    connection_.Close();
    throw;
  }
  sinceCheck_.start();
  connection_.BeforeChange = [this](Connection::Change change) { BeforeChange(change); };
}

Backup::~Backup() { connection_.BeforeChange = nullptr; }

void Backup::Check() {
  NamedWhereDamaged(library_, [this] { connection_.CheckIntegrity(); });
}

// A file that is gone or read-only, a folder that takes no journal: the change fails and says why.
bool Backup::CanChange() const {
  const QFileInfo file(library_);
  return file.isWritable() && QFileInfo(file.absolutePath()).isWritable();
}

void Backup::MakeOrTell(const std::function<void()>& make) {
  if (!CanChange()) return;
  try {
    make();
  } catch (const std::exception& error) {
    if (IsAboutLibrary(error)) throw;
    if (std::exchange(hasTold_, true) || !tell_) return;
    // Nobody has to wait for the lock while the user reads.
    connection_.RollbackTransaction();
    tell_(Words::Library::noBackup(given_, ErrorText(error)));
    connection_.BeginTransaction();
  }
}

void Backup::BeforeChange(Connection::Change change) {
  if (!hasChanged_ && std::chrono::milliseconds(sinceCheck_.elapsed()) >= checkHolds_) Check();
  const bool replaces = change == Connection::Change::Replaces;
  const qint64 version = replaces ? connection_.DataVersion() : 0;
  const bool isLarge = IsLarge(library_);
  const bool isDue = !hasChanged_ && (!isLarge || IsOld(Name(library_, 1)));
  const bool changeIsDue = replaces && (IsOld(ChangeName(library_)) || (!isLarge && replacedAt_ != version));
  if (isDue || changeIsDue) {
    MakeOrTell([&] {
      Make(library_, [&](const QString& copy) {
        if (!isDue) return Rename(copy, ChangeName(library_));
        if (changeIsDue) Share(copy, ChangeName(library_));
        Rotate(library_);
        Rename(copy, Name(library_, 1));
      });
    });
  }
  hasChanged_ = true;
  if (replaces) replacedAt_ = version;
}

void Backup::BeforeDeletion() {
  MakeOrTell(
      [this] { Make(library_, [this](const QString& copy) { Rename(copy, DeletionName(library_)); }); });
}
