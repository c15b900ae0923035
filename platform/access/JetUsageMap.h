// Walks the map of the pages that a table of an Access file owns, in page order.
#pragma once

#include <optional>

#include "platform/access/JetPages.h"

class JetUsageMap {
 public:
  JetUsageMap(JetPages& pages, quint32 pointer);

  std::optional<quint32> Next();  // the next page's number, nothing when there is none left

 private:
  bool NextBitmap();

  JetPages& pages_;
  JetRecord map_;
  bool inLine_ = false;    // the map holds its one bitmap itself, else a list of pages with one bitmap each
  qsizetype bitmaps_ = 0;  // taken so far
  QByteArray bitmap_;
  quint32 firstPage_ = 0;  // what the bitmap's first bit stands for
  qsizetype bit_ = 0;
};
