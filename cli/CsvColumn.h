// Reads one column of numbers from a CSV file, as spreadsheets of any language write it.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>
#include <utility>
#include <vector>

#include "data/WrittenNumbers.h"

struct CsvOptions {
  QString column;  // its place from 1, or its heading; empty means the only one
  WrittenNumbers::Notation notation;
  std::optional<std::pair<double, double>> expected;  // where the values lie, roughly
  QString unit = {};                                  // may stand behind each value
  std::optional<bool> heading = {};                   // whether the first line is one, where that is known
  QStringList beside = {};                            // further columns, whose texts are wanted as they are
};

// A number of the column, and what stands in its line in those beside it.
struct CsvSample {
  QString value;
  int line = 0;  // from 1
  QStringList beside;
};

// The column's numbers as the program writes them, top to bottom.
//
// The file is UTF-8, UTF-16 with a byte order mark, or Latin-1; line ends are of every kind. Fields may be
// quoted; a tab, semicolon or comma separates, whichever divides all lines alike, or a first line "sep="
// says. A first line whose field is a text, unlike any number, is the heading, and so is one that was chosen
// by name. What may be a heading or a value is asked for: a text that stands for a value or holds one, a
// whole number above values with decimals. Empty fields below the last number are passed over.
//
// All fields are read with one decimal mark. What the file leaves open (a comma that may be decimal or
// separate columns or thousands, a point that may separate thousands) is never guessed: unless the options
// settle it, an InputError names the place and the readings. Only where every value has a point, with three
// digits behind it, it is a decimal point unasked, if that gives a value expected and thousands do not; and a
// blank sets thousands apart unasked where its sides are not values expected. Bad contents are an
// InputError that names file, line and column; a file that cannot be read is an Error.
std::vector<CsvSample> ReadCsvColumn(const QString& path, const CsvOptions& options);

// The same of a file's contents; `name` stands for the file in messages.
std::vector<CsvSample> ParseCsvColumn(const QByteArray& bytes, const QString& name,
                                      const CsvOptions& options);
