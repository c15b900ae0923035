// The rows and fields of a CSV text, by one separator.
#pragma once

#include <QChar>
#include <QString>
#include <vector>

struct CsvField {
  QString text;  // without quotes and without blanks around
  bool quoted = false;
};

struct CsvRow {
  int line = 0;  // where it starts in the file, from 1
  std::vector<CsvField> fields;

  // Whether a separator stands between digits, as a decimal mark does.
  bool IsDividedBetweenDigits() const;
};

struct CsvTable {
  // RFC 4180: fields in quotes may hold separators, line ends and doubled quotes. Blank lines are no rows. A
  // null separator makes one column of everything. Line ends are "\n"; the first line has the number given.
  CsvTable(const QString& text, QChar separator, int firstLine = 1);

  // Whether the separator divides all lines alike: quotes are in order, and no row has more fields than the
  // first one.
  bool IsEven() const;

  QChar separator;
  std::vector<CsvRow> rows;
  bool wellFormed = true;  // no text stands behind a closing quote; where it does it stays with its quotes
  int openQuote = 0;       // the first line with a quote that is not closed, or only by another line's; or 0
};
