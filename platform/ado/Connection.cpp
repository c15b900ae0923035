#include "platform/ado/Connection.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUrl>
#include <atomic>
#include <optional>
#include <utility>

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

// The driver's texts repeat the statement's name for the failed step; the database's own is the last part.
QString LibraryText(const QSqlError& error) {
  return error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
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

// Of a Qt Sql connection: no two are alike.
QString NewName() {
  static std::atomic<int> counter = 0;
  return u"kestrel-%1"_s.arg(++counter);
}

}  // namespace

const QString Connection::JetProvider = u"Microsoft.Jet.OLEDB.4.0"_s;
const QString Connection::OdbcProvider = u"MSDASQL"_s;
std::function<void(const QString&)> Connection::FaultHook;

Connection::Connection() : name_(NewName()) {}

Connection::~Connection() { Close(); }

void Connection::BeforeOperation(const QString& operation) {
  if (FaultHook) FaultHook(operation);
}

QSqlDatabase Connection::Database() const { return QSqlDatabase::database(name_, false); }

void Connection::OpenWith(const QString& connectString, const QString& user, const QString& password) {
  if (state_ == Open) throw DatabaseError(u"The connection is open already."_s);
  BeforeOperation(u"open"_s);
  try {
    if (Provider == OdbcProvider)
      OpenOdbc(connectString, user, password);
    else
      OpenFile(connectString);
    state_ = Open;
  } catch (...) {
    Close();
    throw;
  }
}

void Connection::OpenFile(const QString& path) {
  place_ = path;
  if (const QString reason = ReasonNotToOpen(QFileInfo(path)); !reason.isEmpty())
    throw DatabaseError(u"%1: %2"_s.arg(path, reason));
  QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, name_);
  // As a URI, since only that form can say that no file is to be made.
  const QUrl url = QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath());
  database.setDatabaseName(QString::fromLatin1(url.toEncoded()) + u"?mode=rw"_s);
  database.setConnectOptions(u"QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1"_s.arg(LockWait));
  if (!database.open()) throw Failure(database.lastError());
  Control(u"open"_s, u"PRAGMA synchronous = FULL"_s);
  // The library opens any file; only reading tells whether it is a database.
  Control(u"open"_s, u"SELECT count(*) FROM sqlite_master"_s);
}

void Connection::OpenOdbc(const QString& connectString, const QString& user, const QString& password) {
  place_ = u"ODBC"_s;  // the connect string may hold a password
  QSqlDatabase database = QSqlDatabase::addDatabase(u"QODBC"_s, name_);
  if (!database.isValid()) throw DatabaseError(u"ODBC: the ODBC driver is not installed"_s);
  database.setDatabaseName(connectString);
  if (!database.open(user, password)) throw Failure(database.lastError());
}

void Connection::Close() {
  if (inTransaction_) RollbackTransaction();
  if (QSqlDatabase::contains(name_)) {
    Database().close();
    QSqlDatabase::removeDatabase(name_);
  }
  state_ = Closed;
}

DatabaseError Connection::Failure(const QSqlError& error) const {
  const int code = Provider == OdbcProvider ? 0 : error.nativeErrorCode().toInt();
  const int primaryCode = code & 0xFF;
  constexpr int readOnly = 8;
  constexpr int cannotOpen = 14;
  // The journal beside it is what could not be opened.
  QString reason;
  if (primaryCode == readOnly || primaryCode == cannotOpen) reason = ReasonForNoJournal(place_);
  if (reason.isEmpty()) reason = PlainReason(code, LibraryText(error));
  return DatabaseError(u"%1: %2"_s.arg(place_, reason), primaryCode);
}

QSqlQuery Connection::Run(const QString& operation, const QString& sql, const QVariantList& values) {
  if (state_ != Open) throw DatabaseError(u"The database connection is not open."_s);
  BeforeOperation(operation);
  QSqlQuery query(Database());
  query.setForwardOnly(true);
  if (!query.prepare(Translate(sql))) throw Failure(query.lastError());
  for (const QVariant& value : values) query.addBindValue(value);
  if (!query.exec()) throw Failure(query.lastError());
  return query;
}

bool Connection::NextRow(QSqlQuery& query) const {
  if (query.next()) return true;
  if (query.lastError().isValid()) throw Failure(query.lastError());
  return false;
}

qint64 Connection::Execute(const QString& sql, const QVariantList& values) {
  std::optional<Transaction> transaction;
  if (BeforeChange) transaction.emplace(*this);
  const qint64 rows = Run(u"execute"_s, sql, values).numRowsAffected();
  if (transaction) transaction->Commit();
  return rows;
}

void Connection::CheckIntegrity() {
  QSqlQuery query = Run(u"check"_s, u"PRAGMA quick_check(1)"_s);
  const bool found = NextRow(query);
  if (!found || query.value(0).toString() != u"ok"_s)
    throw DatabaseError(place_ + u": the file is damaged"_s);
}

qint64 Connection::DataVersion() {
  QSqlQuery query = Run(u"version"_s, u"PRAGMA data_version"_s);
  return NextRow(query) ? query.value(0).toLongLong() : 0;
}

void Connection::CallBeforeChange(Change change) {
  if (!BeforeChange) return;
  const auto call = std::exchange(BeforeChange, nullptr);  // it may begin the transaction anew
  try {
    call(change);
  } catch (...) {
    RollbackTransaction();
    BeforeChange = call;
    throw;
  }
  BeforeChange = call;
}

void Connection::Control(const QString& operation, const QString& sql) {
  BeforeOperation(operation);
  QSqlQuery query(Database());
  if (!query.exec(sql)) throw Failure(query.lastError());
}

void Connection::SetLockWait(int milliseconds) {
  LockWait = milliseconds;
  if (Provider != OdbcProvider) QSqlQuery(Database()).exec(u"PRAGMA busy_timeout = %1"_s.arg(milliseconds));
}

void Connection::BeginTransaction(Change change) {
  if (state_ != Open) throw DatabaseError(u"The database connection is not open."_s);
  if (inTransaction_) throw DatabaseError(u"A transaction is open already."_s);
  if (Provider == OdbcProvider) {
    BeforeOperation(u"begin"_s);
    if (!Database().transaction()) throw Failure(Database().lastError());
  } else {
    // The write lock is taken at once: what the transaction reads cannot change before it writes.
    Control(u"begin"_s, u"BEGIN IMMEDIATE"_s);
  }
  inTransaction_ = true;
  CallBeforeChange(change);
}

void Connection::CommitTransaction() {
  if (!inTransaction_) throw DatabaseError(u"No transaction is open."_s);
  if (Provider == OdbcProvider) {
    BeforeOperation(u"commit"_s);
    if (!Database().commit()) throw Failure(Database().lastError());
  } else {
    try {
      Control(u"commit"_s, u"COMMIT"_s);  // the driver's own tells no result code
    } catch (const DatabaseError& error) {
      throw DatabaseError(error.Text() + u"; nothing was written"_s, error.code);
    }
  }
  inTransaction_ = false;
}

void Connection::RollbackTransaction() {
  Database().rollback();
  inTransaction_ = false;
}

QString Connection::Translate(const QString& sql) {
  static const QRegularExpression deleteAll(u"^\\s*DELETE\\s+\\*\\s+FROM\\b"_s,
                                            QRegularExpression::CaseInsensitiveOption);
  return QString(sql).replace(deleteAll, u"DELETE FROM"_s);
}
