// Tells whether another copy of the program is running for this user, and hands a message over to it.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QLockFile>
#include <QSocketNotifier>
#include <QString>
#include <functional>
#include <memory>

class SingleInstance {
 public:
  // Where the lock files stand. A session has a folder of its own; a copy that was started outside of any (by
  // a script, by another user's shell) has none, and shares with all of this user's the common one.
  struct Folders {
    QString session;  // may be empty
    QString common;
    static Folders OfThisUser();
  };

  // Takes the locks, and keeps them until destroyed. What a copy left behind that has crashed does not count.
  explicit SingleInstance(const Folders& folders = Folders::OfThisUser());
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // False also where no lock file can be made: the program then runs without this protection.
  bool PrevInstance() const { return prevInstance_; }

  // To the copy that runs: true once it has taken the message. It may just be starting.
  bool HandOver(const QByteArray& message, int milliseconds = 5000) const;

  // From copies that are started later; calls with what they hand over, one at a time, from the event loop.
  void Listen(std::function<void(const QByteArray& message)> take);

 private:
#ifdef Q_OS_UNIX
  bool Take(QFile& lock, const QString& folder, bool alone);
  void OpenSocket(const QString& folder);
  void Answer();

  QFile session_;
  QFile common_;
  QString refusedBy_;  // the lock file that another copy holds
  QString socketPath_;
  int socket_ = -1;
  std::unique_ptr<QSocketNotifier> notifier_;
  std::function<void(const QByteArray&)> take_;
#else
  QLockFile lock_;
#endif
  bool prevInstance_ = false;
};
