// An Access file (2000 or later, page-encoded or not), opened for reading: which tables it has, and their
// rows.
//
// Nothing in the file is trusted, and nothing is ever written to it. A file that cannot be read, or is
// damaged where it is read, gives a JetError with a sentence for the user.
#pragma once

#include <QIODevice>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "platform/access/JetPages.h"
#include "platform/access/JetRows.h"
#include "platform/access/JetTable.h"

class JetFile {
 public:
  explicit JetFile(const QString& path);
  explicit JetFile(std::unique_ptr<QIODevice> device);

  // Whether the file is an Access database by its content, of whatever version, readable or not.
  static bool IsAccessFile(const QString& path);

  JetTable Table(
      const QString& name);  // names compare without case; Access's own tables can be opened as well

  // The rows of a table; the JetFile must outlive them.
  JetRows Rows(const JetTable& table, const QStringList& columnNames) { return {pages_, table, columnNames}; }

 private:
  struct Entry {
    QString name;
    quint32 page = 0;
    bool linked = false;  // its rows are in another file
  };

  void ReadCatalog();

  std::unique_ptr<QIODevice> device_;
  JetPages pages_;
  std::vector<Entry> tables_;
};
