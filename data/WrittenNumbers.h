// What numbers mean as people, spreadsheets and instruments write them: with a decimal point or comma,
// thousands set apart, a typographic minus. What has two readings is told as such, never guessed.
#pragma once

#include <QChar>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace WrittenNumbers {

enum class Decimal { Point, Comma };

// What a user said of how numbers are written; what is not said is found out or asked for.
struct Notation {
  std::optional<Decimal> decimal;
  QChar separator;  // between values; null where it is not said
};

// The number digit by digit in the form that Conversions and the engine read; empty where the text is none
// with that decimal mark. Thousands may be set apart, in whole groups of three, by the other mark, an
// apostrophe or a blank of any width; the minus may be U+2212. Beyond that the grammar is the program's own.
QString Read(QStringView text, Decimal mark);

// Whether the two marks make different numbers of the text.
bool HasTwoReadings(QStringView text);

// The values of a text that holds any number of them. Unless the notation names a separator, blanks, line
// ends and semicolons separate; a comma does where both its neighbours have a decimal point, or where the
// notation leaves no other reading. An InputError quotes a word with several readings and tells them with the
// options that choose, or names the value that is no number; `before` values were counted already.
QStringList ReadList(const QString& text, const Notation& notation, qsizetype before = 0);

struct Reading {
  QString meaning;
  QString option;  // that chooses it
};

// `"7,5" may be 7.5 (--decimal comma) or 7 and 5 (--separator comma)`; a single reading is one that has to be
// asked for.
QString Doubt(const QString& text, const QList<Reading>& readings);

// The option that names the mark, and the word for a separator.
QString Option(Decimal mark);

}  // namespace WrittenNumbers
