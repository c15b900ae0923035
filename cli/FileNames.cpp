#include "cli/FileNames.h"

#include <QCryptographicHash>
#include <QDir>

#include "data/Names.h"

using namespace Qt::StringLiterals;

QString FileNames::Next(const CData& data) {
  QString name = NameOf(data.Description());
  // A damaged library may hold one description twice.
  if (used_.contains(Names::Key(name))) name += u'.' + QString::number(data.ID());
  used_ << Names::Key(name);
  return QDir(folder_).filePath(name + ending_);
}

QString FileNames::NameOf(const QString& description) {
  QString name;
  for (const QChar c : description) {
    const bool isKept = c.isLetterOrNumber() || c.isSurrogate() || u"-+=()[]"_s.contains(c);
    name += isKept ? c : QChar(u'_');
  }
  constexpr qsizetype mostBytes = 200;  // file systems take 255, with the code and the ending
  while (name.toUtf8().size() > mostBytes) name.chop(name.back().isLowSurrogate() ? 2 : 1);
  QString plain = name;
  if (plain.replace(u'_', u' ') == description && !description.isEmpty()) return name;
  const QByteArray code = QCryptographicHash::hash(description.toUtf8(), QCryptographicHash::Sha256);
  return name + u'.' + QString::fromLatin1(code.toHex().first(8));
}
