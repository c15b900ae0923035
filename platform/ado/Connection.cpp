#include "platform/ado/Connection.h"

#include <QSqlDriver>
#include <QThread>
#include <QUuid>
#include <atomic>
#include <optional>
#include <utility>

#include "platform/ado/Dialect.h"

using namespace Qt::StringLiterals;

namespace {

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
  dialect_ = Dialect::For(Provider, connectString);
  user_ = user;
  password_ = password;
  Reopen();
}

void Connection::Reopen() {
  try {
    dialect_->Open(name_, user_, password_, LockWait);
    state_ = Open;
    Subscribe();
  } catch (...) {
    if (state_ == Closed) Close();
    throw;
  }
}

bool Connection::IsServer() const { return dialect_ && dialect_->IsServer(); }

const QString& Connection::Place() const { return dialect_->Place(); }

void Connection::Listen(const QString& channel) {
  if (!IsServer()) return;
  channel_ = channel;
  Subscribe();
}

// What others did before is not told: it counts as if it were.
void Connection::Subscribe() {
  if (channel_.isEmpty()) return;
  QSqlDriver* driver = Database().driver();
  if (driver->subscribedToNotifications().contains(channel_)) driver->unsubscribeFromNotification(channel_);
  driver->disconnect(driver);
  driver->subscribeToNotification(channel_);
  QObject::connect(driver, &QSqlDriver::notification, driver, [this] { ++notifications_; });
  ++notifications_;
  sinceAsked_.start();
}

void Connection::Close() {
  if (inTransaction_) RollbackTransaction();
  if (QSqlDatabase::contains(name_)) {
    Database().close();
    QSqlDatabase::removeDatabase(name_);
  }
  state_ = Closed;
}

void Connection::RequireOpen() const {
  if (state_ != Open) throw DatabaseError(u"The database connection is not open."_s);
}

QSqlQuery Connection::Run(const QString& operation, const QString& sql, const QVariantList& values) {
  RequireOpen();
  BeforeOperation(operation);
  try {
    return RunOnce(sql, values);
  } catch (const DatabaseError& error) {
    // Outside a transaction statements only read: they may be run again.
    if (inTransaction_ || error.cause != DatabaseError::Cause::Lost) throw;
    Reopen();
    return RunOnce(sql, values);
  }
}

QSqlQuery Connection::RunOnce(const QString& sql, const QVariantList& values) {
  QSqlQuery query(Database());
  query.setForwardOnly(dialect_->IsForwardOnly());
  const QString words = dialect_->Translate(sql);
  if (values.isEmpty()) {
    if (!query.exec(words)) throw dialect_->Failure(query.lastError());
    return query;
  }
  if (!query.prepare(words)) throw dialect_->Failure(query.lastError());
  for (const QVariant& value : values) query.addBindValue(dialect_->Bound(value));
  if (!query.exec()) throw dialect_->Failure(query.lastError());
  return query;
}

bool Connection::NextRow(QSqlQuery& query) const {
  if (query.next()) return true;
  if (query.lastError().isValid()) throw dialect_->Failure(query.lastError());
  return false;
}

qint64 Connection::Execute(const QString& sql, const QVariantList& values) {
  std::optional<Transaction> transaction;
  if (BeforeChange || IsServer()) transaction.emplace(*this);
  const qint64 rows = Run(u"execute"_s, sql, values).numRowsAffected();
  if (transaction) transaction->Commit();
  return rows;
}

QVariant Connection::Insert(const QString& sql, const QVariantList& values) {
  QSqlQuery query = Run(u"insert"_s, sql + u" RETURNING ID"_s, values);
  return NextRow(query) ? query.value(0) : QVariant();
}

bool Connection::Has(const QString& name) {
  QSqlQuery query = Run(u"select"_s, dialect_->LookUp(), {name});
  return NextRow(query) && query.value(0).toInt() > 0;
}

QString Connection::RowLock() const { return inTransaction_ ? dialect_->RowLock() : QString(); }

void Connection::CheckIntegrity() {
  QSqlQuery query = Run(u"check"_s, u"PRAGMA quick_check(1)"_s);
  const bool found = NextRow(query);
  if (!found || query.value(0).toString() != u"ok"_s)
    throw DatabaseError(dialect_->Place() + u": the file is damaged"_s);
}

qint64 Connection::DataVersion() {
  if (IsServer()) {
    // Nothing else tells that the connection is lost: who asks makes it again.
    constexpr int askEvery = 2000;
    if (sinceAsked_.hasExpired(askEvery)) {
      Run(u"version"_s, u"SELECT 1"_s);
      sinceAsked_.start();
    }
    return notifications_;
  }
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
  if (!query.exec(sql)) throw dialect_->Failure(query.lastError());
}

void Connection::SetLockWait(int milliseconds) {
  LockWait = milliseconds;
  if (const QString sql = dialect_->LockWaitOf(milliseconds); !sql.isEmpty()) QSqlQuery(Database()).exec(sql);
}

void Connection::BeginTransaction(Change change) {
  RequireOpen();
  if (inTransaction_) throw DatabaseError(u"A transaction is open already."_s);
  if (const QString begin = dialect_->Begin(); begin.isEmpty()) {
    BeforeOperation(u"begin"_s);
    if (!Database().transaction()) throw dialect_->Failure(Database().lastError());
  } else {
    try {
      Control(u"begin"_s, begin);
    } catch (const DatabaseError& error) {
      if (error.cause != DatabaseError::Cause::Lost) throw;
      Reopen();
      Control(u"begin"_s, begin);
    }
  }
  inTransaction_ = true;
  CallBeforeChange(change);
}

void Connection::CommitTransaction() {
  if (!inTransaction_) throw DatabaseError(u"No transaction is open."_s);
  if (dialect_->Begin().isEmpty()) {
    BeforeOperation(u"commit"_s);
    if (!Database().commit()) throw dialect_->Failure(Database().lastError());
  } else {
    QString token;
    if (!TokenTable.isEmpty()) {
      token = QUuid::createUuid().toString(QUuid::WithoutBraces);
      Run(u"token"_s, u"INSERT INTO %1 (Token) VALUES (?)"_s.arg(TokenTable), {token});
    }
    try {
      Control(u"commit"_s, u"COMMIT"_s);  // the driver's own tells no result code
    } catch (const DatabaseError& error) {
      const bool isLost = error.cause == DatabaseError::Cause::Lost;
      if (!isLost || !IsWritten(token))
        throw DatabaseError(error.Text() + u"; nothing was written"_s, error.code, error.cause);
    }
  }
  inTransaction_ = false;
}

// What has not arrived cannot arrive afterwards: its token is in the way. Who is still writing it is waited
// for.
bool Connection::IsWritten(const QString& token) {
  constexpr int longest = 3000;
  constexpr int between = 100;
  QElapsedTimer since;
  for (since.start(); !token.isEmpty() && !since.hasExpired(longest); QThread::msleep(between)) {
    try {
      Reopen();
      QSqlQuery query = RunOnce(
          u"INSERT INTO %1 (Token) VALUES (?) ON CONFLICT DO NOTHING RETURNING Token"_s.arg(TokenTable),
          {token});
      return !NextRow(query);
    } catch (const DatabaseError& error) {
      if (error.cause != DatabaseError::Cause::Lost) break;
    }
  }
  throw DatabaseError(Place() +
                          u": the connection to the server was lost while it was written; it is not known "
                          "whether it is written"_s,
                      0, DatabaseError::Cause::Lost, Error::Kind::Unknown);
}

void Connection::RollbackTransaction() {
  Database().rollback();
  inTransaction_ = false;
}
