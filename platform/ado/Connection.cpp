#include "platform/ado/Connection.h"

#include <QElapsedTimer>
#include <QSqlDriver>
#include <QThread>
#include <QUuid>
#include <algorithm>
#include <atomic>
#include <optional>
#include <utility>

#include "platform/ado/Dialect.h"
#include "platform/ado/ServerLibrary.h"

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
  Reopen(ConnectWait);
}

void Connection::Reopen(int connectWait) {
  Forget();
  try {
    dialect_->Open(name_, user_, password_, IsServer() ? connectWait : LockWait);
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
}

// The time that a server has to answer; where it is over the connection has been cut.
class Connection::Answer {
 public:
  Answer(const Connection& connection, int milliseconds) : connection_(connection) {
    if (connection.IsServer()) deadline_.emplace(connection.Database(), milliseconds);
  }

  void Require(bool holds, const QSqlQuery& query) const {
    if (holds) return;
    if (deadline_ && deadline_->HasPassed())
      throw DatabaseError(connection_.Place() + u": the server gives no answer; try again in a moment"_s, 0,
                          DatabaseError::Cause::Lost);
    throw connection_.dialect_->Failure(query.lastError());
  }

 private:
  const Connection& connection_;
  std::optional<ServerLibrary::Deadline> deadline_;
};

// What the server has kept of this connection's, while there still is one.
void Connection::Forget() {
  constexpr int answerWait = 500;
  const Answer answer(*this, answerWait);
  prepared_.clear();
  there_.clear();
}

void Connection::Close() {
  if (inTransaction_) RollbackTransaction();
  Forget();
  if (QSqlDatabase::contains(name_)) {
    Database().close();
    QSqlDatabase::removeDatabase(name_);
  }
  state_ = Closed;
}

void Connection::RequireOpen() const {
  if (state_ != Open) throw DatabaseError(u"The database connection is not open."_s);
}

bool Connection::HasEnded() const { return IsServer() && ServerLibrary::HasEnded(Database()); }

// Tries it again over a new connection where the present one turns out to be lost. Not where that took long:
// who waits has waited enough.
template <class Call>
auto Connection::OverAnyConnection(const Call& call) {
  QElapsedTimer since;
  since.start();
  try {
    return call();
  } catch (const DatabaseError& error) {
    constexpr int notLong = 1000;
    if (error.cause != DatabaseError::Cause::Lost || since.hasExpired(notLong)) throw;
    Reopen(ConnectWait);
    return call();
  }
}

Query Connection::Run(const QString& operation, const QString& sql, const QVariantList& values) {
  RequireOpen();
  BeforeOperation(operation);
  if (inTransaction_) return RunOnce(sql, values);
  // Outside a transaction statements only read: they may be run again.
  return OverAnyConnection([&] { return RunOnce(sql, values); });
}

Query Connection::RunOnce(const QString& sql, const QVariantList& values) {
  const Answer answer(*this, AnswerWait);
  if (values.isEmpty()) {
    const Query query = Made();
    answer.Require(query->exec(dialect_->Translate(sql)), *query);
    return query;
  }
  const Query query = Prepared(sql, answer);
  for (int i = 0; i < values.size(); ++i) query->bindValue(i, dialect_->Bound(values[i]));
  answer.Require(query->exec(), *query);
  return query;
}

Query Connection::Made() const {
  auto query = std::make_shared<QSqlQuery>(Database());
  query->setForwardOnly(dialect_->IsForwardOnly());
  return query;
}

Query Connection::Prepared(const QString& sql, const Answer& answer) {
  constexpr std::size_t most = 50;
  const auto isFree = [](const auto& known) { return known.second.use_count() == 1; };
  const auto [first, last] = prepared_.equal_range(sql);
  if (const auto found = std::find_if(first, last, isFree); found != last) return found->second;
  const Query query = Made();
  answer.Require(query->prepare(dialect_->Translate(sql)), *query);
  if (!IsServer()) return query;
  if (prepared_.size() == most) std::erase_if(prepared_, isFree);
  prepared_.emplace(sql, query);
  return query;
}

bool Connection::NextRow(const Query& query) const {
  if (query->next()) return true;
  if (query->lastError().isValid()) throw dialect_->Failure(query->lastError());
  return false;
}

qint64 Connection::Execute(const QString& sql, const QVariantList& values) {
  std::optional<Transaction> transaction;
  if (BeforeChange || IsServer()) transaction.emplace(*this);
  const qint64 rows = Run(u"execute"_s, sql, values)->numRowsAffected();
  if (transaction) transaction->Commit();
  return rows;
}

QVariant Connection::Insert(const QString& sql, const QVariantList& values) {
  const Query query = Run(u"insert"_s, sql + u" RETURNING ID"_s, values);
  return NextRow(query) ? query->value(0) : QVariant();
}

bool Connection::Has(const QString& name) {
  if (there_.contains(name)) return true;
  const Query query = Run(u"select"_s, dialect_->LookUp(), {name});
  const bool isThere = NextRow(query) && query->value(0).toInt() > 0;
  if (isThere && IsServer()) there_.insert(name);
  return isThere;
}

QString Connection::RowLock() const { return inTransaction_ ? dialect_->RowLock() : QString(); }

void Connection::CheckIntegrity() {
  const Query query = Run(u"check"_s, u"PRAGMA quick_check(1)"_s);
  const bool found = NextRow(query);
  if (!found || query->value(0).toString() != u"ok"_s)
    throw DatabaseError(dialect_->Place() + u": the file is damaged"_s, DatabaseError::damaged);
}

qint64 Connection::DataVersion() {
  if (IsServer()) {
    if (HasEnded()) Reopen(ConnectWait);
    return notifications_;
  }
  const Query query = Run(u"version"_s, u"PRAGMA data_version"_s);
  return NextRow(query) ? query->value(0).toLongLong() : 0;
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

void Connection::Control(const QString& operation, const QString& sql, int answerWait) {
  BeforeOperation(operation);
  QSqlQuery query(Database());
  const Answer answer(*this, answerWait);
  answer.Require(query.exec(sql), query);
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
    OverAnyConnection([&] { Control(u"begin"_s, begin, AnswerWait); });
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
      // The driver's own tells no result code. Half of the time is for looking whether it has arrived.
      Control(u"commit"_s, u"COMMIT"_s, AnswerWait / 2);
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
  constexpr int between = 100;
  QElapsedTimer since;
  for (since.start(); !token.isEmpty() && !since.hasExpired(AnswerWait / 2); QThread::msleep(between)) {
    try {
      Reopen(AnswerWait / 2);
      const Query query = RunOnce(
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
  const Answer answer(*this, AnswerWait);
  Database().rollback();
  inTransaction_ = false;
  there_.clear();
}
