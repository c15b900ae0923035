#include "platform/ado/Dialect.h"

#include <QRegularExpression>

#include "platform/ado/ServerAddress.h"

using namespace Qt::StringLiterals;

namespace {

class Odbc : public Dialect {
 public:
  explicit Odbc(const QString& connectString)
      : Dialect(u"ODBC"_s), connectString_(connectString) {}  // which may hold a password

  void Open(const QString& name, const QString& user, const QString& password, int) override {
    QSqlDatabase database = Added(name, u"QODBC"_s);
    if (!database.isValid()) throw DatabaseError(u"ODBC: the ODBC driver is not installed"_s);
    database.setDatabaseName(connectString_);
    if (!database.open(user, password)) throw Failure(database.lastError());
  }

  DatabaseError Failure(const QSqlError& error) const override {
    return DatabaseError(u"%1: the database refuses it (%2)"_s.arg(place_, LibraryText(error)));
  }

 private:
  const QString connectString_;
};

}  // namespace

std::unique_ptr<Dialect> Dialect::For(const QString& provider, const QString& connectString) {
  if (provider == Connection::OdbcProvider) return std::make_unique<Odbc>(connectString);
  return ServerAddress::IsOne(connectString) ? ServerDialect(connectString) : FileDialect(connectString);
}

QSqlDatabase Dialect::Added(const QString& name, const QString& driver) {
  if (!QSqlDatabase::contains(name)) return QSqlDatabase::addDatabase(driver, name);
  QSqlDatabase database = QSqlDatabase::database(name, false);
  database.close();
  return database;
}

QString Dialect::LibraryText(const QSqlError& error) {
  return error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
}

QString Dialect::Translate(const QString& sql) const {
  static const QRegularExpression deleteAll(u"^\\s*DELETE\\s+\\*\\s+FROM\\b"_s,
                                            QRegularExpression::CaseInsensitiveOption);
  return QString(sql).replace(deleteAll, u"DELETE FROM"_s);
}
