// An ADO-like connection to one database: provider and connect string in, SQL text out to Qt Sql.
//
// "Microsoft.Jet.OLEDB.4.0" is the embedded file (SQLite); the connect string is its path. "MSDASQL" is ODBC;
// the connect string is the driver's. Opening never creates a file. SQL may say "DELETE
// * FROM", which is translated; a second statement in one text is refused. Every failure is a DatabaseError
// whose text names the file and the reason. A file that another program has locked is a failure after a short
// wait, never a hang.
#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <QVariantList>
#include <functional>

#include "platform/error/Error.h"

class DatabaseError : public Error {
 public:
  explicit DatabaseError(const QString& text, int resultCode = 0) : Error(text), code(resultCode) {}

  bool IsBusy() const { return code == 5 || code == 6; }  // another program has locked it

  int code;  // the embedded database's result code (https://sqlite.org/rescode.html), 0 where it is not known
};

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
  QString Provider = JetProvider;

  // Opens, and proves that the file is a database by reading from it.
  void OpenWith(const QString& connectString, const QString& user = {}, const QString& password = {});
  void Close();
  State GetState() const { return state_; }

  // Runs one statement that returns no rows; the values are bound to its "?" in order. Returns the rows
  // affected.
  qint64 Execute(const QString& sql, const QVariantList& values = {});

  // The same for any statement: a forward-only query, before its first row. NextRow throws where reading
  // fails.
  QSqlQuery Run(const QString& operation, const QString& sql, const QVariantList& values = {});
  bool NextRow(QSqlQuery& query) const;

  // What a transaction does with what is there.
  enum class Change { Adds, Replaces };

  // Transactions; a nested Begin is an error. Rollback never fails.
  void BeginTransaction(Change change = Change::Replaces);
  void CommitTransaction();
  void RollbackTransaction();
  bool InTransaction() const { return inTransaction_; }

  // Called at the start of each transaction, with the write lock held; a statement outside one gets its own.
  // Where it throws there is no transaction.
  std::function<void(Change change)> BeforeChange;

  // Another number whenever another connection has changed the file.
  qint64 DataVersion();

  // Reads the whole file and throws where its structure is damaged. Texts and numbers in it are not judged.
  void CheckIntegrity();

  QSqlDatabase Database() const;

  // The statement in the embedded database's own words.
  static QString Translate(const QString& sql);

  // For tests: called with the operation's name before each database operation of every connection; it may
  // throw.
  static std::function<void(const QString& operation)> FaultHook;
  static void BeforeOperation(const QString& operation);

 private:
  void OpenFile(const QString& path);
  void OpenOdbc(const QString& connectString, const QString& user, const QString& password);
  void Control(const QString& operation, const QString& sql);
  void CallBeforeChange(Change change);
  DatabaseError Failure(const QSqlError& error) const;

  QString name_;   // of the Qt Sql connection
  QString place_;  // what messages call the database: the file's path
  State state_ = Closed;
  bool inTransaction_ = false;
};

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
