// The pages of an Access file: which files can be read at all, fetching and decoding a page, and the records
// on it.
#include "platform/access/JetPages.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

using namespace Qt::StringLiterals;
using JetBytes::Get;
using JetBytes::Slice;

namespace {

constexpr QByteArrayView jetMagic("\0\1\0\0Standard Jet DB\0", 20);
constexpr QByteArrayView aceMagic("\0\1\0\0Standard ACE DB\0", 20);

constexpr qsizetype versionAt = 0x14;
constexpr qsizetype codedAt = 0x18;  // the part of page 0 that is XORed with a constant stream
constexpr qsizetype codedSize = 0x80;
constexpr qsizetype keyAt = 0x3E;
constexpr qsizetype passwordAt = 0x42;
constexpr qsizetype passwordSize = 40;
constexpr qsizetype creationDateAt = 0x72;

// RC4 over the bytes, in place, with a key of four bytes, lowest first.
void Decode(char* bytes, qsizetype size, quint32 key) {
  std::array<quint8, 256> state;
  std::iota(state.begin(), state.end(), quint8{0});
  quint8 j = 0;
  for (unsigned i = 0; i < 256; ++i) {
    j = static_cast<quint8>(j + state[i] + ((key >> (i % 4 * 8)) & 0xFF));
    std::swap(state[i], state[j]);
  }
  quint8 i = 0;
  j = 0;
  for (qsizetype at = 0; at < size; ++at) {
    i = static_cast<quint8>(i + 1);
    j = static_cast<quint8>(j + state[i]);
    std::swap(state[i], state[j]);
    const auto sum = static_cast<quint8>(state[i] + state[j]);
    bytes[at] = static_cast<char>(bytes[at] ^ static_cast<char>(state[sum]));
  }
}

bool HasPassword(QByteArrayView header) {
  const auto created = Get<double>(header, creationDateAt);
  if (!(std::abs(created) < 1e9)) {
    throw JetError(u"The first page of the file is damaged."_s);
  }
  const auto mask = static_cast<quint32>(static_cast<qint32>(created));
  for (qsizetype i = 0; i < passwordSize; i += 4) {
    if (Get<quint32>(header, passwordAt + i) != mask) {
      return true;
    }
  }
  return false;
}

// Throws for every version but Jet 4 and the later ones with the same pages.
void CheckVersion(bool isAce, quint8 version) {
  if (!isAce && version == 0) {
    throw JetError(
        u"The file is of Access 97 or older, which cannot be read. Convert it to Access 2000 or later first."_s);
  }
  const bool known = isAce ? version == 2 || version == 3 || version == 5 || version == 6 : version == 1;
  if (!known) {
    throw JetError(
        u"The file is of a version of Access that is not known (%1) and cannot be read."_s.arg(version));
  }
}

}  // namespace

JetPages::JetPages(QIODevice& device) : device_(device) { ReadHeader(); }

bool JetPages::IsAccessHeader(QByteArrayView start) {
  return start.startsWith(jetMagic) || start.startsWith(aceMagic);
}

void JetPages::ReadHeader() {
  device_.seek(0);
  QByteArray header = device_.read(pageSize);
  if (!IsAccessHeader(header)) {
    throw JetError(u"The file is no Access database."_s);
  }
  const bool isAce = header.startsWith(aceMagic);
  if (header.size() > versionAt) {
    CheckVersion(isAce, Get<quint8>(header, versionAt));
  }
  const qint64 size = device_.size();
  if (header.size() < pageSize || size % pageSize != 0) {
    throw JetError(u"The file is cut off: its length is no whole number of pages."_s);
  }
  if (size / pageSize > 0x1000000) {
    throw JetError(u"The file is longer than an Access database can be."_s);
  }
  count_ = static_cast<quint32>(size / pageSize);
  Decode(header.data() + codedAt, codedSize, 0x6B39DAC7);
  key_ = Get<quint32>(header, keyAt);
  if (isAce && key_ != 0) {
    throw JetError(
        u"The file is encrypted by Office, which cannot be read. Remove the database password in Access first."_s);
  }
  if (!isAce && HasPassword(header)) {
    throw JetError(u"The file is protected by a password. Remove the database password in Access first."_s);
  }
}

QByteArray JetPages::Fetch(quint32 number) {
  if (number == 0 || number >= count_) {
    throw JetError(
        u"page %1 is needed, but the file has only the pages 0 to %2: it is cut off or damaged"_s.arg(number)
            .arg(count_ - 1));
  }
  Slot& slot = cache_[number % cache_.size()];
  if (slot.number != number) {
    QByteArray page;
    if (device_.seek(qint64{number} * pageSize)) {
      page = device_.read(pageSize);
    }
    if (page.size() != pageSize) {
      throw JetError(u"page %1 of the file cannot be read"_s.arg(number));
    }
    if (key_ != 0) {
      Decode(page.data(), pageSize, key_ ^ number);
    }
    slot = {number, page};
  }
  return slot.page;
}

QByteArray JetPages::Page(quint32 number, PageType type) {
  QByteArray page = Fetch(number);
  if (Get<quint8>(page, 0) != type) {
    throw JetError(u"page %1 of the file is not of the kind expected"_s.arg(number));
  }
  return page;
}

int JetPages::RecordCount(const QByteArray& dataPage) {
  const int count = Get<quint16>(dataPage, 12);
  Slice(dataPage, 14, 2 * qsizetype{count});
  return count;
}

JetRecord JetPages::Record(const QByteArray& dataPage, int row) {
  const int count = RecordCount(dataPage);
  if (row >= count) {
    throw JetError(u"a pointer names a record that is not on its page"_s);
  }
  constexpr quint16 startBits = 0x1FFF;
  const auto slot = Get<quint16>(dataPage, 14 + 2 * row);
  const qsizetype start = slot & startBits;
  // Records fill a page from its end, each up to where the one before it starts.
  const qsizetype end = row == 0 ? pageSize : Get<quint16>(dataPage, 12 + 2 * row) & startBits;
  if (start < 14 + 2 * count || start > end || end > pageSize) {
    throw JetError(u"the records of a page overlap or lie outside of it"_s);
  }
  return {dataPage, start, end - start, (slot & 0x8000) != 0, (slot & 0x4000) != 0};
}

JetRecord JetPages::Record(quint32 pointer) {
  return Record(Page(pointer >> 8, DataPage), static_cast<int>(pointer & 0xFF));
}
