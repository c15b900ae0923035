// An SQLite file, whose words the program speaks.
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include "platform/ado/Dialect.h"

using namespace Qt::StringLiterals;

namespace {

// SQLite's result codes that have plainer words than the library's own.
QString PlainReason(int extendedCode, const QString& libraryText) {
  constexpr int movedWhileOpen = 0x408;
  if (extendedCode == movedWhileOpen) return u"the file has been moved or deleted"_s;
  switch (extendedCode & 0xff) {  // the primary code
    case 1:
      if (libraryText.startsWith(u"no such "_s))
        return u"its tables are not a library's (%1)"_s.arg(libraryText);
      break;
    case 3:
    case 23:
      return u"access is denied"_s;
    case 5:
    case 6:
      return u"the file is in use by another program; try again in a moment"_s;
    case 8:
      return u"the file is read-only"_s;
    case 10:
      return u"the file cannot be read or written (%1)"_s.arg(libraryText);
    case 11:
      return u"the file is damaged"_s;
    case 13:
      return u"the disk is full; make room and try again"_s;
    case 14:
      return u"the file cannot be opened"_s;
    case 18:
      return u"the text is too long"_s;
    case 26:
      return u"the file is not a database"_s;
    default:
      break;
  }
  return u"the database refuses it (%1)"_s.arg(libraryText);
}

QString ReasonNotToOpen(const QFileInfo& file) {
  if (file.filePath().isEmpty()) return u"no file is named"_s;
  if (!file.exists()) return u"there is no such file"_s;
  if (file.isDir()) return u"it is a folder, not a file"_s;
  if (!file.isFile()) return u"it is not an ordinary file"_s;
  if (!file.isReadable()) return u"access is denied"_s;
  return {};
}

// Why a file that can itself be written takes no change all the same; empty where that is not so.
QString ReasonForNoJournal(const QString& path) {
  const QFileInfo file(QFileInfo(path).canonicalFilePath());
  if (!file.isWritable()) return {};
  if (!QFileInfo(file.absolutePath()).isWritable()) return u"the folder is read-only"_s;
  constexpr qsizetype mostBytes = 255 - qsizetype(sizeof "-journal" - 1);
  return QFile::encodeName(file.fileName()).size() > mostBytes ? u"the name is too long"_s : QString();
}

class File : public Dialect {
 public:
  explicit File(const QString& path) : Dialect(path) {}

  void Open(const QString& name, const QString&, const QString&, int lockWait) override {
    const QFileInfo file(place_);
    if (const QString reason = ReasonNotToOpen(file); !reason.isEmpty())
      throw DatabaseError(u"%1: %2"_s.arg(place_, reason));
    QSqlDatabase database = Added(name, u"QSQLITE"_s);
    // As a URI, since only that form can say that no file is to be made.
    const QUrl url = QUrl::fromLocalFile(file.absoluteFilePath());
    database.setDatabaseName(QString::fromLatin1(url.toEncoded()) + u"?mode=rw"_s);
    database.setConnectOptions(u"QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1"_s.arg(lockWait));
    if (!database.open()) throw Failure(database.lastError());
    // The library opens any file; only reading tells whether it is a database.
    for (const QString& sql : {u"PRAGMA synchronous = FULL"_s, u"SELECT count(*) FROM sqlite_master"_s}) {
      Connection::BeforeOperation(u"open"_s);
      QSqlQuery query(database);
      if (!query.exec(sql)) throw Failure(query.lastError());
    }
  }

  DatabaseError Failure(const QSqlError& error) const override {
    const int code = error.nativeErrorCode().toInt();
    const int primaryCode = code & 0xFF;
    constexpr int readOnly = 8;
    constexpr int cannotOpen = 14;
    // The journal beside it is what could not be opened.
    QString reason;
    if (primaryCode == readOnly || primaryCode == cannotOpen) reason = ReasonForNoJournal(place_);
    if (reason.isEmpty()) reason = PlainReason(code, LibraryText(error));
    return DatabaseError(u"%1: %2"_s.arg(place_, reason), primaryCode);
  }

  // The write lock is taken at once: what the transaction reads cannot change before it writes.
  QString Begin() const override { return u"BEGIN IMMEDIATE"_s; }
  QString LookUp() const override { return u"SELECT count(*) FROM sqlite_master WHERE name = ?"_s; }
  QString LockWaitOf(int milliseconds) const override {
    return u"PRAGMA busy_timeout = %1"_s.arg(milliseconds);
  }
};

}  // namespace

std::unique_ptr<Dialect> FileDialect(const QString& path) { return std::make_unique<File>(path); }
