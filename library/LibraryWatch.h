// Looks whether somebody has changed a library, and which data sets. For a timer: looking costs next to
// nothing, waits for no lock and changes nothing.
//
// What is compared is the version that triggers keep for each row, or, in a library that has none yet, what
// stands in the rows. One's own writing counts as well. A server tells by itself that there is something to
// compare: while events are processed.
#pragma once

#include <QFuture>
#include <QObject>
#include <QString>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "platform/ado/Connection.h"

class LibraryWatch {
 public:
  // Looks at the library as it is now; a file that cannot be read is looked for again.
  explicit LibraryWatch(const QString& place);
  ~LibraryWatch();
  LibraryWatch(const LibraryWatch&) = delete;
  LibraryWatch& operator=(const LibraryWatch&) = delete;

  struct Change {
    std::vector<qint64> changed = {};  // the IDs of new and of changed rows
    std::vector<qint64> deleted = {};
    bool others = false;    // something else in the file: a unit, a deleted row that was purged
    bool replaced = false;  // another file stands in its place, or it was not watched: all may be different
    QString trouble = {};   // why it cannot be read, once when that begins; empty otherwise
  };

  // Called while events are processed, as soon as a server tells of a change: it is time for a look.
  std::function<void()> Heard;

  // What has happened since the last look; none where nothing has.
  std::optional<Change> Look();

 private:
  using State = std::map<qint64, quint64>;  // of each row by its ID
  struct File {                             // which file it is
    quint64 device = 0;
    quint64 number = 0;
    bool operator==(const File&) const = default;
  };
  static std::optional<File> FileAt(const QString& path);

  Change Begin();
  std::optional<QString> WhyUnreachable();
  std::optional<Change> Compare(qint64 dataVersion);
  State ReadVersions(const QString& clause = {});
  State ReadPresent(bool byVersion, qint64 dataVersion);
  void Hear(const QString& payload);
  State ReadContents();

  const QString place_;
  std::unique_ptr<Connection> connection_;  // null while it cannot be read
  std::optional<File> file_;
  qint64 dataVersion_ = 0;
  bool hasVersions_ = false;
  State state_;
  QString trouble_;
  QObject ear_;
  std::vector<qint64> heard_;  // the rows of the notifications since the last look; 0: not of a row
  std::optional<QFuture<QString>> probe_;  // that is on its way
};
