// An Access file (2000 or later, page-encoded or not), opened for reading: which tables it has, and their
// rows.
#include "platform/access/JetFile.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<QIODevice> OpenFile(const QString& path) {
  auto file = std::make_unique<QFile>(path);
  if (!file->open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
    throw JetError(u"The file cannot be opened: %1."_s.arg(file->errorString()));
  }
  return file;
}

}  // namespace

JetFile::JetFile(const QString& path) : JetFile(OpenFile(path)) {}

JetFile::JetFile(std::unique_ptr<QIODevice> device) : device_(std::move(device)), pages_(*device_) {
  ReadCatalog();
}

bool JetFile::IsAccessFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) && JetPages::IsAccessHeader(file.read(JetPages::recognisedBytes));
}

void JetFile::ReadCatalog() {
  constexpr quint32 catalogPage = 2;
  constexpr int localTable = 1;
  constexpr int linkedTable = 4;  // over ODBC
  constexpr int attachedTable = 6;
  const QStringList columns = {u"Id"_s, u"Name"_s, u"Type"_s};
  JetRows rows(pages_, ReadTableDefinition(pages_, catalogPage, u"MSysObjects"_s), columns);
  while (rows.Next()) {
    const std::vector<QVariant>& values = rows.Values();
    const int type = values[2].toInt();
    if (type == localTable || type == linkedTable || type == attachedTable) {
      const quint32 page = values[0].toUInt() & 0xFFFFFF;
      tables_.push_back({values[1].toString(), page, type != localTable});
    }
  }
}

JetTable JetFile::Table(const QString& name) {
  for (const Entry& table : tables_) {
    if (table.name.compare(name, Qt::CaseInsensitive) != 0) {
      continue;
    }
    if (table.linked) {
      throw JetError(u"The table \"%1\" is only linked from another file."_s.arg(table.name));
    }
    return ReadTableDefinition(pages_, table.page, table.name);
  }
  throw JetError(u"The table \"%1\" is missing."_s.arg(name));
}
