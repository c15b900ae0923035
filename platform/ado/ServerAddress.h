// The address of a database on a server, by the rules of PostgreSQL's own library:
// postgresql://[USER@][HOST][:PORT][,...][/DATABASE][?OPTION=VALUE&...], where a host may be a folder of
// sockets
// (%2Frun%2Fpostgresql) and each part may stand among the options instead. One with a password is refused.
#pragma once

#include <QString>
#include <map>

struct ServerAddress {
  // Whether the text is meant as one.
  static bool IsOne(const QString& text);

  // Throws InputError, which shows no password.
  static ServerAddress Parse(const QString& text);

  // The text without what is, or may be meant as, a password.
  static QString WithoutPassword(const QString& text);

  std::map<QString, QString> parts;  // by the library's keywords: host, port, user, dbname, sslmode ...

  QString Part(const QString& keyword) const;
  QString Text() const;  // the address of these parts
};
