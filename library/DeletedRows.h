// The data sets that were deleted: kept in a table of their own until somebody restores or purges them.
#pragma once

#include <QDateTime>
#include <QString>
#include <vector>

#include "library/Tables.h"
#include "platform/ado/Connection.h"

namespace DeletedRows {

struct Entry {
  qint64 number = 0;  // of this deletion; a data set can be deleted more than once
  QString deletedAt;
  QVariantList row;  // of StatData
};

// All of them, newest first.
std::vector<Entry> All(Connection& connection);

// Whether that deletion is among them still.
bool Contains(Connection& connection, qint64 number);

// In the transaction that is open: moves the row of that ID aside; back, under that description; or away.
void Keep(Connection& connection, qint64 id, const QDateTime& now);
void PutBack(Connection& connection, qint64 number, const QString& description);
void Purge(Connection& connection, qint64 number);

}  // namespace DeletedRows
