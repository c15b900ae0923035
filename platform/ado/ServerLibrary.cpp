#include "platform/ado/ServerLibrary.h"

#include <QDeadlineTimer>
#include <QLibrary>
#include <QRegularExpression>
#include <QSqlDriver>
#include <QStringList>
#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <future>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#ifdef Q_OS_UNIX
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

using Connected = void*;  // a PGconn

template <class Function>
Function* Resolved(const char* name) {
  return reinterpret_cast<Function*>(QLibrary::resolve(u"pq"_s, 5, name));
}

Connected ConnectionOf(const QSqlDatabase& database) {
  const QVariant handle = database.isOpen() ? database.driver()->handle() : QVariant();
  const bool isOne =
      qstrcmp(handle.typeName(), "PGconn*") == 0 || qstrcmp(handle.typeName(), "pg_conn*") == 0;
  return isOne ? *static_cast<Connected const*>(handle.constData()) : nullptr;
}

#ifdef Q_OS_UNIX
// Cuts the connections whose time is over, on a thread of its own.
class Watchdog {
 public:
  using Clock = std::chrono::steady_clock;

  static Watchdog& Get() {
    static auto* const watchdog = new Watchdog;  // its thread works until the program ends
    return *watchdog;
  }

  quint64 Begin(int socket, int milliseconds) {
    const std::lock_guard lock(mutex_);
    // Of its own, so that another file never gets the number.
    waiting_[++last_] = {Clock::now() + std::chrono::milliseconds(milliseconds), dup(socket)};
    if (waiting_.size() == 1) changed_.notify_one();
    return last_;
  }

  void End(quint64 number) {
    const std::lock_guard lock(mutex_);
    if (const auto found = waiting_.find(number); found != waiting_.end()) {
      close(found->second.socket);
      waiting_.erase(found);
    }
    cut_.erase(number);
  }

  bool HasCut(quint64 number) {
    const std::lock_guard lock(mutex_);
    return cut_.contains(number);
  }

 private:
  struct Waiting {
    Clock::time_point until;
    int socket;
  };

  Watchdog() {
    std::thread([this] { Work(); }).detach();
  }

  [[noreturn]] void Work() {
    std::unique_lock lock(mutex_);
    for (;;) {
      const auto now = Clock::now();
      auto next = now + std::chrono::seconds(1);
      for (auto one = waiting_.begin(); one != waiting_.end();) {
        if (one->second.until <= now) {
          shutdown(one->second.socket, SHUT_RDWR);
          close(one->second.socket);
          cut_.insert(one->first);
          one = waiting_.erase(one);
        } else {
          next = std::min(next, one->second.until);
          ++one;
        }
      }
      if (waiting_.empty())
        changed_.wait(lock);
      else
        changed_.wait_until(lock, next);
    }
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  std::map<quint64, Waiting> waiting_;
  std::set<quint64> cut_;
  quint64 last_ = 0;
};

bool AreKnown(const std::vector<QByteArray>& hosts) {
  return std::ranges::all_of(hosts, [](const QByteArray& host) {
    addrinfo* found = nullptr;
    if (getaddrinfo(host.constData(), nullptr, nullptr, &found) != 0) return false;
    freeaddrinfo(found);
    return true;
  });
}
#endif

}  // namespace

namespace ServerLibrary {

bool HasEnded(const QSqlDatabase& database) {
  static auto* const status = Resolved<int(Connected)>("PQstatus");
  const Connected connection = ConnectionOf(database);
  return !connection || (status && status(connection) == 1);
}

#ifdef Q_OS_UNIX

Deadline::Deadline(const QSqlDatabase& database, int milliseconds) {
  static auto* const socketOf = Resolved<int(Connected)>("PQsocket");
  const Connected connection = ConnectionOf(database);
  const int socket = connection && socketOf ? socketOf(connection) : -1;
  if (socket >= 0) number_ = Watchdog::Get().Begin(socket, milliseconds);
}

Deadline::~Deadline() {
  if (number_ != 0) Watchdog::Get().End(number_);
}

bool Deadline::HasPassed() const { return number_ != 0 && Watchdog::Get().HasCut(number_); }

// On a thread of its own, which goes on where nobody waits for it any more.
Hosts LookUp(const QString& hosts, int milliseconds) {
  std::vector<QByteArray> names;
  for (const QString& host : hosts.split(u',', Qt::SkipEmptyParts))
    if (!host.startsWith(u'/') && !host.startsWith(u'@')) names.push_back(host.toUtf8());
  if (names.empty()) return Hosts::Known;
  std::promise<bool> answer;
  std::future<bool> areKnown = answer.get_future();
  std::thread([names, answer = std::move(answer)]() mutable { answer.set_value(AreKnown(names)); }).detach();
  if (areKnown.wait_for(std::chrono::milliseconds(milliseconds)) != std::future_status::ready)
    return Hosts::Unanswered;
  return areKnown.get() ? Hosts::Known : Hosts::Unknown;
}

Refusal WhyRefused(const std::map<QString, QString>& parts, const QString& password, int milliseconds) {
  static auto* const start =
      Resolved<Connected(const char* const*, const char* const*, int)>("PQconnectStartParams");
  static auto* const verbosity = Resolved<int(Connected, int)>("PQsetErrorVerbosity");
  static auto* const goOn = Resolved<int(Connected)>("PQconnectPoll");
  static auto* const status = Resolved<int(Connected)>("PQstatus");
  static auto* const socketOf = Resolved<int(Connected)>("PQsocket");
  static auto* const message = Resolved<const char*(Connected)>("PQerrorMessage");
  static auto* const needsPassword = Resolved<int(Connected)>("PQconnectionNeedsPassword");
  static auto* const finish = Resolved<void(Connected)>("PQfinish");
  if (!start || !verbosity || !goOn || !status || !socketOf || !message || !needsPassword || !finish)
    return {.isThere = true};

  std::vector<QByteArray> texts;
  for (const auto& [keyword, value] : parts) texts.insert(texts.end(), {keyword.toUtf8(), value.toUtf8()});
  if (!password.isEmpty()) texts.insert(texts.end(), {"password", password.toUtf8()});
  std::vector<const char*> keywords, values;
  for (std::size_t i = 0; i < texts.size(); i += 2) {
    keywords.push_back(texts[i].constData());
    values.push_back(texts[i + 1].constData());
  }
  keywords.push_back(nullptr);
  values.push_back(nullptr);

  enum Status { Ok, Bad, Started, Made };
  enum Polling { Failed, Reading, Writing, Done };
  Refusal refusal;
  const QDeadlineTimer end(milliseconds);
  const Connected connection = start(keywords.data(), values.data(), 0);
  verbosity(connection, 3);  // nothing but the code, which no language changes
  for (int polling = Writing; status(connection) != Bad && polling != Failed && polling != Done;) {
    pollfd waited{socketOf(connection), static_cast<short>(polling == Reading ? POLLIN : POLLOUT), 0};
    if (poll(&waited, 1, static_cast<int>(end.remainingTime())) <= 0) break;
    polling = goOn(connection);
    refusal.isThere = refusal.isThere || status(connection) >= Made || polling == Done;
  }
  static const QRegularExpression code(u"\\b(?=\\S*\\d)[0-9A-Z]{5}\\s*$"_s);
  refusal.needsPassword = needsPassword(connection) != 0;
  refusal.state = code.match(QString::fromUtf8(message(connection))).captured().trimmed();
  finish(connection);
  return refusal;
}

#else

Deadline::Deadline(const QSqlDatabase&, int) {}
Deadline::~Deadline() = default;
bool Deadline::HasPassed() const { return false; }
Hosts LookUp(const QString&, int) { return Hosts::Known; }
Refusal WhyRefused(const std::map<QString, QString>&, const QString&, int) { return {.isThere = true}; }

#endif

}  // namespace ServerLibrary
