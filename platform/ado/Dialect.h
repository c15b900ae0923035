// What one kind of database has of its own: how it is opened, what it calls its failures, and the words that
// it knows for what the program says in SQLite's. Each connection has one.
#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>
#include <QVariantList>
#include <memory>

#include "platform/ado/Connection.h"

class Dialect {
 public:
  // Throws InputError for an address that is none.
  static std::unique_ptr<Dialect> For(const QString& provider, const QString& connectString);

  virtual ~Dialect() = default;
  Dialect(const Dialect&) = delete;
  Dialect& operator=(const Dialect&) = delete;

  virtual bool IsServer() const { return false; }

  // Opens the Qt Sql connection of that name, which was closed or not there. It waits so many milliseconds:
  // for each lock of a file, or for a server to take the connection.
  virtual void Open(const QString& name, const QString& user, const QString& password, int wait) = 0;

  virtual DatabaseError Failure(const QSqlError& error) const = 0;

  // The statement in the database's own words. Throws where there are two in one text.
  virtual QString Translate(const QString& sql) const;
  virtual QVariant Bound(const QVariant& value) const { return value; }

  virtual bool IsForwardOnly() const { return true; }
  virtual QString Begin() const { return {}; }          // empty: by the driver
  virtual QString RowLock() const { return {}; }        // what keeps a selected row from others until the end
  virtual QString LookUp() const { return {}; }         // counts the tables and triggers of the name "?"
  virtual QString LockWaitOf(int) const { return {}; }  // the statement that sets it

  const QString& Place() const { return place_; }  // what messages call the database

 protected:
  explicit Dialect(const QString& place) : place_(place) {}

  // The Qt Sql connection of that name, made where it is not there yet.
  static QSqlDatabase Added(const QString& name, const QString& driver);

  // The driver's texts repeat the statement's name for the failed step; the database's own is the last part.
  static QString LibraryText(const QSqlError& error);

  const QString place_;
};

std::unique_ptr<Dialect> FileDialect(const QString& path);
std::unique_ptr<Dialect> ServerDialect(const QString& address);
