// What Qt's driver does not tell of a connection to a server, asked of PostgreSQL's own library (libpq),
// which that driver has loaded. Where it cannot be had, nothing is known.
#pragma once

#include <QSqlDatabase>
#include <QString>
#include <map>

namespace ServerLibrary {

// Whether the connection is known to have ended; what comes over it is read while events are processed.
bool HasEnded(const QSqlDatabase& database);

// For as long as it lives the connection has so many milliseconds to answer; then it is cut, and who waits
// for an answer gets an error. No limit of the driver or the server holds for a server that is stopped.
class Deadline {
 public:
  Deadline(const QSqlDatabase& database, int milliseconds);
  ~Deadline();
  Deadline(const Deadline&) = delete;
  Deadline& operator=(const Deadline&) = delete;

  bool HasPassed() const;

 private:
  quint64 number_ = 0;
};

// What a name server tells of hosts, divided by commas; it may take long to answer, and nothing that asks it
// can be cut.
enum class Hosts { Known, Unknown, Unanswered };
Hosts LookUp(const QString& hosts, int milliseconds);

// Why no connection comes about, by a try of its own.
struct Refusal {
  QString state{};             // the server's code (SQLSTATE); empty where it has not answered
  bool needsPassword = false;  // the server asks for one, and there is none
  bool isThere = false;        // something has taken the connection
};
Refusal WhyRefused(const std::map<QString, QString>& parts, const QString& password, int milliseconds);

}  // namespace ServerLibrary
