// Walks the map of the pages that a table of an Access file owns, in page order.
#include "platform/access/JetUsageMap.h"

using namespace Qt::StringLiterals;
using JetBytes::Get;

namespace {

constexpr qsizetype bitmapAt = 4;  // on a page of its own
constexpr qsizetype pagesInBitmap = (JetPages::pageSize - bitmapAt) * 8;

}  // namespace

JetUsageMap::JetUsageMap(JetPages& pages, quint32 pointer) : pages_(pages), map_(pages.Record(pointer)) {
  const auto kind = Get<quint8>(map_.Bytes(), 0);
  if (kind > 1 || map_.deleted || map_.moved) {
    throw JetError(u"the map of its pages is damaged"_s);
  }
  inLine_ = kind == 0;
}

std::optional<quint32> JetUsageMap::Next() {
  for (;;) {
    for (; bit_ < bitmap_.size() * 8; ++bit_) {
      if ((bitmap_[bit_ / 8] >> (bit_ % 8) & 1) != 0) {
        return firstPage_ + static_cast<quint32>(bit_++);
      }
    }
    if (!NextBitmap()) {
      return std::nullopt;
    }
  }
}

bool JetUsageMap::NextBitmap() {
  const QByteArrayView map = map_.Bytes();
  bit_ = 0;
  if (inLine_) {
    firstPage_ = Get<quint32>(map, 1);
    bitmap_ = map.sliced(5).toByteArray();
    return bitmaps_++ == 0;
  }
  quint32 page = 0;
  for (; page == 0; ++bitmaps_) {
    const qsizetype entryAt = 1 + 4 * bitmaps_;
    if (entryAt + 4 > map.size()) {
      return false;
    }
    page = Get<quint32>(map, entryAt);
  }
  firstPage_ = static_cast<quint32>((bitmaps_ - 1) * pagesInBitmap);
  bitmap_ = pages_.Page(page, JetPages::UsagePage).sliced(bitmapAt);
  return true;
}
