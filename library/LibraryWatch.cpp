#include "library/LibraryWatch.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QSqlDriver>
#include <QThread>
#include <QtConcurrentRun>
#include <cstring>
#include <utility>

#include "library/ExtraTables.h"
#include "library/LibraryServer.h"
#include "library/Tables.h"
#include "platform/ado/ServerAddress.h"

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

namespace {

// Versions count from 1; a row that is gone has this one's lowest bit.
constexpr quint64 VersionOf(qint64 version, bool deleted) {
  return static_cast<quint64>(version) * 2 + (deleted ? 1 : 0);
}

}  // namespace

LibraryWatch::LibraryWatch(const QString& place) : place_(place) { Begin(); }

LibraryWatch::~LibraryWatch() = default;

std::optional<LibraryWatch::File> LibraryWatch::FileAt(const QString& path) {
  if (ServerAddress::IsOne(path)) return File();
#ifdef Q_OS_UNIX
  struct stat status {};
  if (stat(QFile::encodeName(path).constData(), &status) != 0) return std::nullopt;
  return File{status.st_dev, status.st_ino};
#else
  const QFileInfo info(path);
  if (!info.exists()) return std::nullopt;
  return File{0, static_cast<quint64>(info.birthTime().toMSecsSinceEpoch())};
#endif
}

// Starts with the file that is there. What it held before is not known: everything may be different; or it
// says why it cannot, once.
LibraryWatch::Change LibraryWatch::Begin() {
  try {
    const auto file = FileAt(place_);
    auto connection = std::make_unique<Connection>();
    connection->LockWait = 0;
    connection->OpenWith(place_);
    connection->Listen(QLatin1String(LibraryServer::channel));
    if (connection->IsServer())
      QObject::connect(connection->Database().driver(), &QSqlDriver::notification, &ear_,
                       [this](const QString&, QSqlDriver::NotificationSource, const QVariant& payload) {
                         Hear(payload.toString());
                       });
    heard_.clear();
    dataVersion_ = connection->DataVersion();
    hasVersions_ = ExtraTables::HasVersions(*connection);
    connection_ = std::move(connection);
    state_ = hasVersions_ ? ReadVersions() : ReadContents();
    file_ = file;
    trouble_.clear();
    return Change{.replaced = true};
  } catch (const DatabaseError& error) {
    connection_.reset();
    if (error.IsBusy() || trouble_ == error.Text()) return {};
    trouble_ = error.Text();
    return Change{.trouble = trouble_};
  }
}

// Empty where the server can be reached, none while that is not known: a server that does not answer keeps
// nobody waiting who only looks.
std::optional<QString> LibraryWatch::WhyUnreachable() {
  constexpr int mostMilliseconds = 50;  // for one that does
  if (!probe_)
    probe_ = QtConcurrent::run([place = place_] {
      try {
        Connection().OpenWith(place);
        return QString();
      } catch (const Error& error) {
        return error.Text();
      }
    });
  for (int waited = 0; !probe_->isFinished(); ++waited) {
    if (waited == mostMilliseconds) return std::nullopt;
    QThread::msleep(1);
  }
  return std::exchange(probe_, std::nullopt)->result();
}

std::optional<LibraryWatch::Change> LibraryWatch::Look() {
  if (ServerAddress::IsOne(place_) && (!connection_ || connection_->HasEnded())) {
    const auto trouble = WhyUnreachable();
    if (!trouble) return std::nullopt;
    if (!trouble->isEmpty()) {
      connection_.reset();
      if (std::exchange(trouble_, *trouble) == *trouble) return std::nullopt;
      return Change{.trouble = trouble_};
    }
  }
  if (!connection_ || FileAt(place_) != file_) {
    connection_.reset();
    const Change change = Begin();
    return change.replaced || !change.trouble.isEmpty() ? std::optional(change) : std::nullopt;
  }
  try {
    const qint64 now = connection_->DataVersion();
    if (now == dataVersion_) return std::nullopt;
    auto change = Compare(now);
    dataVersion_ = now;
    heard_.clear();
    return change;
  } catch (const DatabaseError& error) {
    if (error.IsBusy()) return std::nullopt;  // the next look tells
    connection_.reset();
    trouble_ = error.Text();
    return Change{.trouble = trouble_};
  }
}

void LibraryWatch::Hear(const QString& payload) {
  heard_.push_back(payload.toLongLong());
  if (Heard) Heard();
}

// Where each change was told by the number of its row, no others are read.
LibraryWatch::State LibraryWatch::ReadPresent(bool byVersion, qint64 dataVersion) {
  if (!byVersion) return ReadContents();
  if (heard_.empty() || dataVersion - dataVersion_ != std::ssize(heard_)) return ReadVersions();
  QStringList ids;
  for (const qint64 id : heard_) ids << QString::number(id);
  State present = state_;
  for (const auto& [id, version] : ReadVersions(u" WHERE ID IN (%1)"_s.arg(ids.join(u','))))
    present[id] = version;
  return present;
}

std::optional<LibraryWatch::Change> LibraryWatch::Compare(qint64 dataVersion) {
  const bool hasVersions = ExtraTables::HasVersions(*connection_);
  const bool byVersion = hasVersions && hasVersions_;
  const State present = ReadPresent(byVersion, dataVersion);
  Change change;
  for (const auto& [id, state] : present) {
    const auto before = state_.find(id);
    if (before != state_.end() && before->second == state) continue;
    const bool isGone = byVersion && state % 2 == 1;
    (isGone ? change.deleted : change.changed).push_back(id);
  }
  for (const auto& [id, state] : state_)
    if (!present.contains(id)) change.deleted.push_back(id);
  change.others = change.changed.empty() && change.deleted.empty();
  // Made meanwhile, the versions tell from now on.
  state_ = hasVersions && !hasVersions_ ? ReadVersions() : present;
  hasVersions_ = hasVersions;
  return change;
}

LibraryWatch::State LibraryWatch::ReadVersions(const QString& clause) {
  State state;
  const Query query =
      connection_->Run(u"watch"_s, u"SELECT ID, Version, Deleted FROM StatDataVersion"_s + clause);
  while (connection_->NextRow(query))
    state[query->value(0).toLongLong()] = VersionOf(query->value(1).toLongLong(), query->value(2).toBool());
  return state;
}

LibraryWatch::State LibraryWatch::ReadContents() {
  State state;
  const Query query = connection_->Run(
      u"watch"_s, u"SELECT %1 FROM StatData"_s.arg(Tables::StatData().ColumnList(u"StatData"_s)));
  while (connection_->NextRow(query)) {
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (int i = 0; i < static_cast<int>(Tables::StatData().columns.size()); ++i) {
      hash.addData(query->value(i).toString().toUtf8());
      hash.addData(QByteArrayView("\0", 1));
    }
    quint64 number = 0;
    std::memcpy(&number, hash.result().constData(), sizeof number);
    state[query->value(0).toLongLong()] = number;
  }
  return state;
}
