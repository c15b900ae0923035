// Reads one column of numbers from a CSV file.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// The column's numbers as texts, top to bottom. Comma, semicolon or tab separate (the one that the first line
// has most of); line ends of every kind; fields may be quoted; a first line whose chosen field does not begin
// like a number is the heading; where the separator is not a comma a decimal comma is understood. Empty
// fields below the last number are passed over. `column` is a heading or a number from 1; empty means the
// only one. Bad contents are a InputError that names file, line and column; a file that cannot be read is a
// Error.
QStringList ReadCsvColumn(const QString& path, const QString& column);

// The same of a file's contents; `name` stands for the file in messages.
QStringList ParseCsvColumn(QByteArray bytes, const QString& name, const QString& column);
