// What numbers mean as people, spreadsheets and instruments write them: with a decimal point or comma,
// thousands set apart, a typographic minus.
#pragma once

#include <QString>

namespace WrittenNumbers {

enum class Decimal { Point, Comma };

// The number digit by digit in the form that Conversions and the engine read; empty where the text is none
// with that decimal mark. Thousands may be set apart, in whole groups of three, by the other mark, an
// apostrophe or a blank of any width; the minus may be U+2212. Beyond that the grammar is the program's own.
QString Read(QStringView text, Decimal mark);

}  // namespace WrittenNumbers
