// Reads the program's sources, for the tests of what stands in them.
#pragma once

#include <QDirIterator>
#include <QRegularExpression>

#include "tests/support/Files.h"

using namespace Qt::StringLiterals;

// Calls use(path below the top, contents) for every source file of the rooms; returns how many there are.
template <class Use>
int ForEachSource(const QStringList& rooms, Use use) {
  int count = 0;
  const QString top = QStringLiteral(KESTREL_SOURCES) + u'/';
  for (const QString& room : rooms) {
    QDirIterator files(top + room, {u"*.cpp"_s, u"*.h"_s}, QDir::Files, QDirIterator::Subdirectories);
    for (; files.hasNext(); ++count) {
      const QString path = files.next();
      use(path.mid(top.size()), QString::fromUtf8(ReadFile(path)));
    }
  }
  return count;
}
