// The types of an Access table's columns, and what the stored bytes of each mean.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QVariant>

enum class JetType : quint8 {
  YesNo = 1,
  Byte = 2,
  Integer = 3,
  Long = 4,
  Currency = 5,
  Single = 6,
  Double = 7,
  DateTime = 8,
  Binary = 9,
  Text = 10,
  Ole = 11,
  Memo = 12,
  Guid = 15,
  Decimal = 16,
};

namespace JetValues {

// The bytes one value of the type takes, or 0 where they differ from value to value.
int FixedSize(JetType type);

// Whole numbers come as int, Single and Double as double, Text and Memo as QString, DateTime as the
// text "yyyy-mm-dd hh:nn:ss", everything else as QByteArray. A Yes/No value is not stored in bytes.
QVariant Value(JetType type, QByteArrayView bytes);

// Plain or compressed text; bytes that are no whole number of characters are an error.
QString Text(QByteArrayView bytes);

// Days since 1899-12-30 00:00, rounded to whole seconds. Before that day the whole part counts back while the
// fraction still counts forward within its day.
QString DateTime(double days);

}  // namespace JetValues
