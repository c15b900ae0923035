// Reads one column of numbers from a CSV file.
#pragma once

#include <QString>
#include <QStringList>

// The column's numbers as texts, top to bottom. Comma, semicolon or tab separate (the one that the first line
// has most of); fields may be quoted; a first line whose chosen field is no number is the heading; where the
// separator is not a comma a decimal comma is understood. Empty fields below the last number are passed over.
// `column` is a heading or a number from 1; empty means the only one. Bad contents are a UsageError that
// names file, line and column; a file that cannot be read is a FileError.
QStringList ReadCsvColumn(const QString& path, const QString& column);
