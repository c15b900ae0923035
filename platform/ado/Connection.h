// An ADO-like connection to one database: provider and connect string in, SQL text out to Qt Sql.
//
// "Microsoft.Jet.OLEDB.4.0" is the program's own database: the connect string is the path of a file (SQLite),
// or the address of a database on a server (PostgreSQL; see ServerAddress.h). "MSDASQL" is ODBC; the connect
// string is the driver's. Opening never creates a file. SQL is SQLite's, and may say "DELETE * FROM"; what
// another database calls otherwise is translated (Dialect.h). A second statement in one text is refused.
// Every failure is a DatabaseError whose text names the place and the reason. What another program has locked
// is a failure after a short wait, never a hang; a connection that was lost is made again by the next call.
#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <QVariantList>
#include <functional>
#include <map>
#include <memory>
#include <set>

#include "platform/error/Error.h"

class DatabaseError : public Error {
 public:
  enum class Cause {
    Other,
    Busy,       // another program has locked it
    Overtaken,  // by another program: the whole transaction may be tried again
    Duplicate,  // another row has what only one may have
    ReadOnly,   // the user has no right to it
    Password,   // the server wants one, or another one
    Lost        // there is no connection to the server
  };

  // Result codes of a file that cannot be what it was.
  static constexpr int damaged = 11, noDatabase = 26;

  explicit DatabaseError(const QString& text, int resultCode = 0, Cause why = Cause::Other,
                         Kind kind = Kind::Unavailable)
      : Error(text, kind), code(resultCode), cause(why) {}

  bool IsBusy() const { return cause == Cause::Busy || code == 5 || code == 6; }

  int code;  // a file's result code (https://sqlite.org/rescode.html), 0 where it is not known
  Cause cause;
};

class Dialect;

// A statement that was run, before its first row or at one.
using Query = std::shared_ptr<QSqlQuery>;

class Connection {
 public:
  static const QString JetProvider;   // "Microsoft.Jet.OLEDB.4.0"
  static const QString OdbcProvider;  // "MSDASQL"

  enum State { Closed = 0, Open = 1 };

  Connection();
  ~Connection();  // closes
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  int CommandTimeout =
      30;  // seconds; 30000 is what the program sets; the wait for a lock stays short all the same
  int LockWait = 2000;  // milliseconds that a statement waits for another program to let go of the file
  void SetLockWait(int milliseconds);  // of an open one; never fails
  int ConnectWait = 4000;  // milliseconds for a connection to a server; half of them for a name server
  int AnswerWait = 4500;   // milliseconds that a server, or the network before it, has for one statement
  QString Provider = JetProvider;

  // Opens, and proves that the file is a database by reading from it. Throws InputError where an address is
  // none or holds a password.
  void OpenWith(const QString& connectString, const QString& user = {}, const QString& password = {});
  void Close();

  // The password of that address's user, for every connection from now on: in memory, and nowhere else.
  static void UsePassword(const QString& address, const QString& password);

  State GetState() const { return state_; }
  bool IsServer() const;
  const QString& Place() const;  // what messages call the database

  // Runs one statement that returns no rows; the values are bound to its "?" in order. Returns the rows
  // affected.
  qint64 Execute(const QString& sql, const QVariantList& values = {});

  // The same for any statement: a forward-only query, before its first row. NextRow throws where reading
  // fails. A server knows what was run with values, and takes only the values the next time.
  Query Run(const QString& operation, const QString& sql, const QVariantList& values = {});
  bool NextRow(const Query& query) const;

  // Runs an INSERT of one row; gives its ID.
  QVariant Insert(const QString& sql, const QVariantList& values = {});

  // Whether there is a table or a trigger of that name.
  bool Has(const QString& name);

  // What stands at the end of a selection by ID: in a transaction on a server, where rows have locks, it
  // keeps the row as it is read until the end.
  QString RowLock() const;

  // What a transaction does with what is there.
  enum class Change { Adds, Replaces };

  // Transactions; a nested Begin is an error. Rollback never fails. Where it cannot be known whether a commit
  // arrived, its Error is of the kind Unknown.
  void BeginTransaction(Change change = Change::Replaces);
  void CommitTransaction();
  void RollbackTransaction();
  bool InTransaction() const { return inTransaction_; }

  // On a server, a table with a text column Token: there each transaction leaves one of its own. Where the
  // connection is lost during a commit, it tells whether that arrived.
  QString TokenTable;

  // Called at the start of each transaction, with the write lock held; a statement outside one gets its own.
  // Where it throws there is no transaction.
  std::function<void(Change change)> BeforeChange;

  // Another number whenever another connection has changed a file, or where a server has told so since
  // Listen, which it does while events are processed, or may not have been able to.
  qint64 DataVersion();
  void Listen(const QString& channel);  // nothing for a file

  // Whether a server's connection is known to have ended: what comes over it is read while events are
  // processed. The next call makes it again.
  bool HasEnded() const;

  // Reads the whole file and throws where its structure is damaged. Texts and numbers in it are not judged.
  void CheckIntegrity();

  QSqlDatabase Database() const;

  // For tests: called with the operation's name before each database operation of every connection; it may
  // throw.
  static std::function<void(const QString& operation)> FaultHook;
  static void BeforeOperation(const QString& operation);

 private:
  class Answer;

  void Reopen(int connectWait);
  void Forget();
  Query RunOnce(const QString& sql, const QVariantList& values);
  Query Made() const;
  Query Prepared(const QString& sql, const Answer& answer);
  template <class Call>
  auto OverAnyConnection(const Call& call);
  void Control(const QString& operation, const QString& sql, int answerWait);
  void CallBeforeChange(Change change);
  void Subscribe();
  bool IsWritten(const QString& token);
  void RequireOpen() const;

  QString name_;  // of the Qt Sql connection
  std::unique_ptr<Dialect> dialect_;
  QString user_;
  QString password_;
  QString channel_;
  qint64 notifications_ = 0;  // and connections since the first
  State state_ = Closed;
  bool inTransaction_ = false;
  std::multimap<QString, Query> prepared_;  // of a server, by their text; one that somebody holds is in use
  std::set<QString> there_;                 // what a server is known to have
};

// Does what a body does in a transaction of its own, and again where other programs were faster.
template <class Body>
auto Repeated(Connection& connection, const Body& body) {
  constexpr int most = 10;
  for (int times = 1;; ++times) {
    try {
      return body();
    } catch (const DatabaseError& error) {
      const bool isOvertaken = error.cause == DatabaseError::Cause::Overtaken;
      if (!isOvertaken || connection.InTransaction() || times == most) throw;
    }
  }
}

// Rolls back unless committed. Inside another transaction it is a part of that one, which alone commits or
// rolls back the whole.
class Transaction {
 public:
  explicit Transaction(Connection& connection, Connection::Change change = Connection::Change::Replaces)
      : connection_(connection), owns_(!connection.InTransaction()) {
    if (owns_) connection_.BeginTransaction(change);
  }
  ~Transaction() {
    if (owns_ && !done_) connection_.RollbackTransaction();
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  void Commit() {
    if (owns_) connection_.CommitTransaction();
    done_ = true;
  }

 private:
  Connection& connection_;
  const bool owns_;
  bool done_ = false;
};
