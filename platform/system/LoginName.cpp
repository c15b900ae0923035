#include "platform/system/LoginName.h"

#ifdef Q_OS_UNIX
#include <pwd.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

QString LoginName() {
#ifdef Q_OS_UNIX
  if (const passwd* user = getpwuid(geteuid())) return QString::fromLocal8Bit(user->pw_name);
  return qEnvironmentVariable("USER");
#else
  return qEnvironmentVariable("USERNAME");
#endif
}
