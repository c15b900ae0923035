// The pages of an Access file: which files can be read at all, fetching and decoding a page, and the records
// on it.
//
// Pages are read when they are needed and a few are kept, so the memory does not grow with the file.
// Everything fetched is checked to be of the kind asked for; a failure is a JetError.
#pragma once

#include <QByteArray>
#include <QIODevice>
#include <array>

#include "platform/access/JetBytes.h"

// One record of a data page; it keeps its page alive.
struct JetRecord {
  QByteArray page;
  qsizetype start = 0;
  qsizetype size = 0;
  bool deleted = false;
  bool moved = false;  // only its first four bytes count: they point at the record itself

  QByteArrayView Bytes() const { return QByteArrayView(page).sliced(start, size); }
};

class JetPages {
 public:
  static constexpr qsizetype pageSize = 4096;
  enum PageType : quint8 { DataPage = 1, DefinitionPage = 2, UsagePage = 5 };

  // Refuses what cannot be read, by name. The device must be open and random-access, and outlive this object.
  explicit JetPages(QIODevice& device);

  // Whether these first bytes of a file are those of an Access file, of whatever version.
  static bool IsAccessHeader(QByteArrayView start);
  static constexpr qsizetype recognisedBytes = 20;

  quint32 Count() const { return count_; }
  qint64 FileSize() const { return qint64{count_} * pageSize; }

  QByteArray Page(quint32 number, PageType type);

  static int RecordCount(const QByteArray& dataPage);
  static JetRecord Record(const QByteArray& dataPage, int row);
  JetRecord Record(quint32 pointer);  // a row number in the lowest byte, a page number above

 private:
  void ReadHeader();
  QByteArray Fetch(quint32 number);

  struct Slot {
    quint32 number = 0;  // page 0 is never kept
    QByteArray page;
  };

  QIODevice& device_;
  quint32 count_ = 0;
  quint32 key_ = 0;  // of a page-encoded file, else 0
  std::array<Slot, 64> cache_;
};
