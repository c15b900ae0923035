// Lets a test that runs as the superuser meet the file permissions of an ordinary user.
#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include <QString>

class WithoutPrivileges {
 public:
  // The folder is opened to everybody for reading, so that the ordinary user comes that far.
  explicit WithoutPrivileges(const QString& folder) {
    if (geteuid() != 0) {
      effective_ = true;
    } else if (chmod(folder.toUtf8().constData(), 0755) == 0 && setresuid(65534, 65534, 0) == 0) {
      effective_ = dropped_ = true;
    }
  }
  ~WithoutPrivileges() {
    if (dropped_ && setresuid(0, 0, 0) != 0) _exit(1);
  }
  WithoutPrivileges(const WithoutPrivileges&) = delete;
  WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;

  bool Effective() const { return effective_; }

 private:
  bool effective_ = false;
  bool dropped_ = false;
};
