// Tells whether another copy of the program is running for this user.
#pragma once

#include <QFile>
#include <QLockFile>
#include <QString>

class SingleInstance {
 public:
  // Takes the lock file, and keeps it until destroyed. An empty path: one of this user's in the folder for
  // such files. What a copy left behind that has crashed does not count.
  explicit SingleInstance(const QString& lockFile = {});

  // False also where the lock file cannot be made at all: the program then runs without this protection.
  bool PrevInstance() const { return prevInstance_; }

 private:
#ifdef Q_OS_UNIX
  QFile lock_;
#else
  QLockFile lock_;
#endif
  bool prevInstance_ = false;
};
