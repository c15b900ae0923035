#include "charts/SaveFile.h"

#include <QSaveFile>

#include "platform/error/Error.h"

using namespace Qt::StringLiterals;

void SaveFile(const QString& path, const QByteArray& bytes) {
  QSaveFile file(path);
  // A full disk may show no sooner than in the flush, and the commit would not mind.
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush() ||
      !file.commit()) {
    throw Error(u"%1: %2"_s.arg(path, file.errorString()));
  }
}
