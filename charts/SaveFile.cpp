#include "charts/SaveFile.h"

#include <QSaveFile>

#include "core/Trap.h"

using namespace Qt::StringLiterals;

void SaveFile(const QString& path, const QByteArray& bytes) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
    throw Error(u"%1: %2"_s.arg(path, file.errorString()));
  }
}
