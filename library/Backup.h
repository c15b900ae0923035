// The backups beside a library, and the check that no damaged library is written to.
//
// Before the first change of a session (one open connection) the library is copied to NAME.backup with the
// database's own means; NAME.backup.2 and NAME.backup.3 are the ones before. A script that appends a value
// every minute would soon have pushed out every useful one, and copied a large library over and over.
// Therefore:
//   - with all three there, the newest gives way to the new one while it is less than a day younger than the
//     second; otherwise the oldest goes;
//   - a library of more than 8 MB is copied at most once an hour;
//   - what was there before a change that replaces something is NAME.backup.change, and before the last
//     deletion NAME.backup.deletion: no change that only adds takes these away. A session copies for its
//     first such change, and again where others have written since or that copy is an hour old.
// A copy is made under another name and renamed, so that a backup is whole or not there; nobody may read it
// who may not read the library. What a killed program left behind is removed by the next one. A backup that
// cannot be made stops nothing: the user is told, once in a session, and the change goes on. Behind a
// symbolic link the backups stand beside the file itself.
//
// The check is of the file's structure: pages, rows, lengths. The format has no check marks over texts and
// numbers; a digit that the disk has changed to another digit is a value like any other.
#pragma once

#include <QElapsedTimer>
#include <QString>
#include <chrono>
#include <functional>
#include <optional>

#include "platform/ado/Connection.h"

class Backup {
 public:
  static constexpr qint64 largeLibrary = 8LL * 1024 * 1024;  // bytes

  // Gets the text for the user where no backup could be made; meanwhile no lock is held.
  using Tell = std::function<void(const QString& text)>;

  // Where reading the library finds it damaged, the DatabaseError names the newest backup too, and the way
  // back to it.
  static void NamedWhereDamaged(const QString& libraryPath, const std::function<void()>& read);

  // Checks the open library now; has changes preceded by the backups and, the first one, where it comes later
  // than a check holds good, by another check. A damaged file is a DatabaseError: now, the connection is
  // closed; then, the change is refused. The file stays as it is. The connection outlives the guard.
  Backup(Connection& connection, const QString& libraryPath, Tell tell,
         std::chrono::milliseconds checkHolds = std::chrono::minutes(1));
  ~Backup();
  Backup(const Backup&) = delete;
  Backup& operator=(const Backup&) = delete;

  // Called in the transaction that deletes, before it does.
  void BeforeDeletion();

 private:
  void Check();
  void BeforeChange(Connection::Change change);
  bool CanChange() const;
  void MakeOrTell(const std::function<void()>& make);

  Connection& connection_;
  const QString given_;    // the path as the user knows it
  const QString library_;  // the file itself
  const Tell tell_;
  const std::chrono::milliseconds checkHolds_;
  QElapsedTimer sinceCheck_;
  bool hasChanged_ = false;
  std::optional<qint64> replacedAt_;  // the file's version at the last copy for a change that replaces
  bool hasTold_ = false;
};
