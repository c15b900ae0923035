// Reads the rows of one table of an Access file, one after the other, and proves that none is missing.
//
// A damaged file must never give fewer rows or shorter values than were stored: every row is counted against
// the table's own count, every row's parts must fill it without gap or overlap, a long value must have its
// declared length, and no record may serve twice. What fails is a JetError that names the table and the row.
#pragma once

#include <QStringList>
#include <QVariant>
#include <optional>
#include <unordered_set>
#include <vector>

#include "platform/access/JetTable.h"
#include "platform/access/JetUsageMap.h"

class JetRows {
 public:
  // Reads the columns named; the pages must outlive this object. Columns that the table does not have are an
  // error that names them.
  JetRows(JetPages& pages, JetTable table, const QStringList& columnNames);

  JetRows(const JetRows&) = delete;
  JetRows& operator=(const JetRows&) = delete;

  // Moves to the next row (at first to the first one); false behind the last.
  bool Next();

  // The current row's values in the order of the columns named; a null QVariant is a Null.
  const std::vector<QVariant>& Values() const { return values_; }

 private:
  // Where the parts of one row are.
  struct Layout {
    int columns = 0;  // numbers below it were in the table when the row was written
    qsizetype variables = 0;
    qsizetype fixedEnd = 0;
    qsizetype maskStart = 0;
  };

  bool Advance();
  bool NextPage();
  JetRecord FollowMoved(const JetRecord& record);
  void ReadRow(QByteArrayView row);
  Layout ReadLayout(QByteArrayView row) const;
  bool FitsColumns(const Layout& layout) const;
  QVariant Value(QByteArrayView row, const Layout& layout, const JetColumn& column);
  QByteArray LongValue(QByteArrayView field);
  JetRecord LongRecord(quint32 pointer);
  void UseOnce(quint32 pointer);

  JetPages& pages_;
  JetTable table_;
  std::vector<const JetColumn*> wanted_;
  std::optional<JetUsageMap> map_;
  QByteArray page_;
  int slot_ = 0;
  int slotCount_ = 0;
  quint32 rowsRead_ = 0;
  std::unordered_set<quint32> used_;  // pointers followed so far
  std::vector<QVariant> values_;
};
