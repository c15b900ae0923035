// A PostgreSQL server: no call of it lasts over five seconds, and it says which of host, port, user,
// password, database or rights is wrong.
#include <QElapsedTimer>
#include <QRegularExpression>
#include <array>
#include <cmath>
#include <map>
#include <mutex>

#include "platform/ado/Dialect.h"
#include "platform/ado/ServerAddress.h"
#include "platform/ado/ServerLibrary.h"

using namespace Qt::StringLiterals;
using Cause = DatabaseError::Cause;

namespace {

// Of five seconds the server has four for a statement, three of them for another one's lock.
constexpr auto limits =
    "-c statement_timeout=4000 -c lock_timeout=3000 -c idle_in_transaction_session_timeout=10000 "
    "-c client_min_messages=error"_L1;
constexpr auto network =
    "connect_timeout=%1 tcp_user_timeout=4000 keepalives=1 keepalives_idle=2 keepalives_interval=1 "
    "keepalives_count=2"_L1;

struct Reason {
  QString text;
  Cause cause = Cause::Other;
};

// Of SQLSTATE codes, which no language changes; the server's own words are for who looks after it. What has
// none was not said by the server.
Reason ReasonOf(const QString& state, const QString& words) {
  const auto known = [&](QLatin1String code) { return state.startsWith(code); };
  if (state.isEmpty() || known("08"_L1) || known("57P"_L1))
    return {u"the connection to the server was lost"_s, Cause::Lost};
  if (known("57014"_L1)) return {u"the server gave no answer in time; try again in a moment"_s, Cause::Busy};
  if (known("55P03"_L1))
    return {u"another program is writing the same; try again in a moment"_s, Cause::Busy};
  if (known("40001"_L1) || known("40P01"_L1))
    return {u"other programs were writing the same; try again"_s, Cause::Overtaken};
  if (known("23505"_L1) || known("42P07"_L1))
    return {u"it is there already (%1)"_s.arg(words), Cause::Duplicate};
  if (known("42501"_L1)) return {u"the user has no right to do that (%1)"_s.arg(words), Cause::ReadOnly};
  if (known("25006"_L1)) return {u"it can only be read"_s, Cause::ReadOnly};
  if (known("42P01"_L1) || known("42703"_L1)) return {u"its tables are not a library's (%1)"_s.arg(words)};
  if (known("53100"_L1)) return {u"the server's disk is full; make room and try again"_s};
  if (known("53"_L1)) return {u"the server has no room for this (%1); try again in a moment"_s.arg(words)};
  return {u"the server refuses it (%1)"_s.arg(words)};
}

// One line of what the driver says: the server's, not the driver's own repetition.
QString OnOneLine(const QString& text) {
  QString line = text.section(u'\n', 0, 0).simplified();
  static const QRegularExpression severity(u"^(.*: )?(ERROR|FATAL):\\s*"_s);
  return line.remove(severity);
}

// " "plant"", or nothing where the address leaves it open.
QString Named(const ServerAddress& address, const QString& keyword) {
  const QString part = address.Part(keyword);
  return part.isEmpty() ? QString() : u" \"%1\""_s.arg(part);
}

// What keeps a connection from being made. The driver has only words for it, in whatever language.
Reason ReasonNotToOpen(const QString& words, const ServerLibrary::Refusal& refusal,
                       ServerLibrary::Hosts hosts, const ServerAddress& address) {
  const auto named = [&](const QString& keyword) { return Named(address, keyword); };
  const QString& state = refusal.state;
  if (refusal.needsPassword)
    return {u"the user%1 needs a password; keep it in ~/.pgpass, in a service file or in PGPASSWORD"_s.arg(
                named(u"user"_s)),
            Cause::Password};
  if (state == "28P01"_L1)
    return {u"the user%1 or the password is wrong"_s.arg(named(u"user"_s)), Cause::Password};
  if (state == "28000"_L1)
    return {u"the server does not let the user%1 in (%2)"_s.arg(named(u"user"_s), words)};
  if (state == "3D000"_L1) return {u"the server has no database%1"_s.arg(named(u"dbname"_s))};
  if (state == "42501"_L1)
    return {u"the user%1 has no right to use the database%2"_s.arg(named(u"user"_s), named(u"dbname"_s))};
  if (state == "57P03"_L1)
    return {u"the server is starting or stopping; try again in a moment"_s, Cause::Lost};
  if (!state.isEmpty()) return {u"the server refuses the connection (%1)"_s.arg(words)};
  if (hosts == ServerLibrary::Hosts::Unknown)
    return {u"the host%1 is not known"_s.arg(named(u"host"_s)), Cause::Lost};
  if (!refusal.isThere)
    return {u"no server answers there; check the host%1 and the port%2 (%3)"_s.arg(named(u"host"_s),
                                                                                   named(u"port"_s), words),
            Cause::Lost};
  return {u"there is no connection (%1)"_s.arg(words), Cause::Lost};
}

// Of each user at each server.
class Passwords {
 public:
  static Passwords& Get() {
    static Passwords passwords;
    return passwords;
  }

  void Keep(const ServerAddress& address, const QString& password) {
    const std::lock_guard lock(mutex_);
    passwords_[KeyOf(address)] = password;
  }
  QString Of(const ServerAddress& address) {
    const std::lock_guard lock(mutex_);
    const auto found = passwords_.find(KeyOf(address));
    return found == passwords_.end() ? QString() : found->second;
  }

 private:
  using Key = std::array<QString, 4>;
  static Key KeyOf(const ServerAddress& address) {
    return {address.Part(u"host"_s), address.Part(u"hostaddr"_s), address.Part(u"port"_s),
            address.Part(u"user"_s)};
  }

  std::mutex mutex_;
  std::map<Key, QString> passwords_;
};

// A parser of the little that the program's own statements hold: names in double quotes and constants in
// single ones. What a server might take for the end of a constant, and the program does not, is refused.
class Statement {
 public:
  explicit Statement(const QString& sql) {
    QChar quote;
    for (const QChar c : sql) {
      if (!quote.isNull()) {
        Require(c != u'\\');
        words_ += quote == u'"' ? c.toLower() : c;
        if (c == quote) quote = {};
      } else {
        Require(!isEnded_ || c.isSpace());
        if (c == u';')
          isEnded_ = true;
        else
          words_ += c;
        Require(c != u'$' && !words_.endsWith(u"--"_s) && !words_.endsWith(u"/*"_s));
        if (c == u'"' || c == u'\'') quote = c;
      }
    }
    Require(quote.isNull());
  }

  const QString& Words() const { return words_; }

 private:
  static void Require(bool holds) {
    if (!holds) throw DatabaseError(u"A text for the server holds one plain statement."_s);
  }

  QString words_;
  bool isEnded_ = false;
};

class Server : public Dialect {
 public:
  explicit Server(const QString& address) : Dialect(address), address_(ServerAddress::Parse(address)) {}

  bool IsServer() const override { return true; }

  void Open(const QString& name, const QString& user, const QString& given, int wait) override {
    QSqlDatabase database = Added(name, u"QPSQL"_s);
    if (!database.isValid())
      throw DatabaseError(
          u"%1: the driver for PostgreSQL is not installed (package libqt6sql6-psql)"_s.arg(place_));
    database.setHostName(address_.Part(u"host"_s));
    database.setDatabaseName(address_.Part(u"dbname"_s));
    database.setUserName(user.isEmpty() ? address_.Part(u"user"_s) : user);
    const QString password = given.isEmpty() ? Passwords::Get().Of(address_) : given;
    database.setPassword(password);
    QElapsedTimer since;
    since.start();
    const bool hasNumber = address_.parts.contains(u"hostaddr"_s);
    const auto hosts = ServerLibrary::LookUp(hasNumber ? QString() : address_.Part(u"host"_s), wait / 2);
    if (hosts == ServerLibrary::Hosts::Unanswered)
      throw DatabaseError(u"%1: no name server tells where the host%2 is; try again in a moment"_s.arg(
                              place_, Named(address_, u"host"_s)),
                          0, Cause::Lost);
    database.setConnectOptions(Options(wait - static_cast<int>(since.elapsed())));
    if (database.open()) return;
    const QString words = OnOneLine(database.lastError().databaseText());
    Reason reason{u"the host%1 does not answer"_s.arg(Named(address_, u"host"_s)), Cause::Lost};
    // A second try, to learn why, takes as long.
    if (since.elapsed() < wait / 2)
      reason = ReasonNotToOpen(words, ServerLibrary::WhyRefused(address_.parts, password, wait / 2), hosts,
                               address_);
    throw DatabaseError(u"%1: %2"_s.arg(place_, reason.text), 0, reason.cause);
  }

  DatabaseError Failure(const QSqlError& error) const override {
    const Reason reason = ReasonOf(error.nativeErrorCode(), OnOneLine(LibraryText(error)));
    return DatabaseError(u"%1: %2"_s.arg(place_, reason.text), 0, reason.cause);
  }

  // Rows come in the order of their IDs, which a file keeps by itself; a table has the server's types.
  QString Translate(const QString& sql) const override {
    QString words = Statement(Dialect::Translate(sql)).Words();
    static const QRegularExpression create(u"^\\s*CREATE\\s+TABLE\\b"_s);
    static const QRegularExpression plain(u"^\\s*SELECT\\s+\\*\\s+FROM\\s+\\w+(\\s+WHERE\\b|\\s*$)"_s,
                                          QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression ordered(u"\\b(ORDER\\s+BY|LIMIT|FOR\\s+UPDATE)\\b"_s,
                                            QRegularExpression::CaseInsensitiveOption);
    if (words.contains(create)) return TableOf(words);
    if (words.contains(plain) && !words.contains(ordered)) words += u" ORDER BY ID"_s;
    return words;
  }

  // The driver knows a Boolean as what no number is, and loses the sign of a zero.
  QVariant Bound(const QVariant& value) const override {
    switch (value.userType()) {
      case QMetaType::Bool:
        return value.toInt();
      case QMetaType::Double:
        return value == 0 && std::signbit(value.toDouble()) ? u"-0"_s : value.toString();
      default:
        break;
    }
    if (value.userType() == QMetaType::QString && value.toString().contains(QChar::Null))
      throw DatabaseError(u"%1: a text with a null character cannot be kept on a server"_s.arg(place_));
    return value;
  }

  // In parts, the driver loses the rest of a result as soon as another statement runs.
  bool IsForwardOnly() const override { return false; }
  QString Begin() const override { return u"BEGIN"_s; }
  QString RowLock() const override { return u" FOR UPDATE"_s; }
  QString LookUp() const override {
    return u"SELECT count(*) FROM (SELECT relname AS name FROM pg_class WHERE pg_table_is_visible(oid) "
           "UNION ALL SELECT tgname FROM pg_trigger) AS known WHERE name = lower(?)"_s;
  }

 private:
  QString Options(int wait) const {
    // Each of several hosts has its share of the time; the least are two seconds.
    const auto hosts = address_.Part(u"host"_s).count(u',') + 1;
    QStringList options{QString(network).arg(std::max<qsizetype>(2, wait / 1000 / hosts)),
                        u"options='%1 %2'"_s.arg(limits, Escaped(address_.Part(u"options"_s)))};
    if (!address_.parts.contains(u"application_name"_s)) options << u"application_name=kestrel"_s;
    for (const auto& [keyword, value] : address_.parts) {
      static const QStringList told{u"host"_s, u"dbname"_s, u"user"_s, u"options"_s};
      if (!told.contains(keyword)) options << u"%1='%2'"_s.arg(keyword, Escaped(value));
    }
    return options.join(u' ');
  }

  static QString Escaped(QString value) { return value.replace(u'\\', u"\\\\"_s).replace(u'\'', u"\\'"_s); }

  // A column without a type holds numbers.
  static QString TableOf(QString words) {
    static const QRegularExpression withoutType(u"(\"\\w+\")(?=\\s*[,)])"_s);
    return words
        .replace(u"INTEGER PRIMARY KEY AUTOINCREMENT"_s,
                 u"BIGINT GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY"_s)
        .replace(u"INTEGER"_s, u"BIGINT"_s)
        .remove(u" COLLATE NOCASE"_s)
        .replace(withoutType, u"\\1 DOUBLE PRECISION"_s);
  }

  const ServerAddress address_;
};

}  // namespace

std::unique_ptr<Dialect> ServerDialect(const QString& address) { return std::make_unique<Server>(address); }

void Connection::UsePassword(const QString& address, const QString& password) {
  Passwords::Get().Keep(ServerAddress::Parse(address), password);
}
