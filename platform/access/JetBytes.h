// Bounded reading of the little-endian numbers an Access file is made of, and the one error its readers
// throw.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QtEndian>

#include "platform/error/Error.h"

// What is wrong with an Access file, in a sentence for the user; it does not name the file.
class JetError : public Error {
 public:
  using Error::Error;
};

namespace JetBytes {

// The part of `bytes` asked for; a part that is not wholly inside is an error.
inline QByteArrayView Slice(QByteArrayView bytes, qsizetype from, qsizetype size) {
  if (from < 0 || size < 0 || from > bytes.size() || size > bytes.size() - from) {
    throw JetError(QStringLiteral("a structure of the file points outside of its page or record"));
  }
  return bytes.sliced(from, size);
}

template <class Number>
Number Get(QByteArrayView bytes, qsizetype at) {
  return qFromLittleEndian<Number>(Slice(bytes, at, sizeof(Number)).data());
}

}  // namespace JetBytes
