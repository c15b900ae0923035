// The cells of a raw-data text that has several on its lines.
#pragma once

#include <QList>
#include <QStringList>
#include <optional>

struct RawDataGrid {
  QList<QStringList> rows;
  qsizetype columns = 0;  // of the longest row

  // The cells between tabs and semicolons; a single column where there are none.
  static RawDataGrid Of(const QStringList& lines);

  // The same, or those between commas where these make cells; none where nothing does.
  static std::optional<RawDataGrid> In(const QStringList& lines);

  // Whether as many commas stand on every line, and not all of them are decimal commas.
  static bool HasCommasBetweenCells(const QStringList& lines);

  // A number in one of the readings that it may have.
  static bool IsNumber(const QString& cell);

  QStringList Column(qsizetype column) const;

  // 1, 2, 3 ... beside the values.
  bool CountsRows(qsizetype column) const;

  // Every cell is a number, and none the number of a row.
  bool HoldsValuesOnly() const;
};
