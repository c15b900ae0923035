// What the text of one CSV field looks like.
#pragma once

#include <QString>

namespace CsvTexts {

inline bool IsDigit(QChar c) { return c >= u'0' && c <= u'9'; }

bool HasDigit(const QString& text);

// As numbers, dates and times do; the text is not empty.
bool BeginsLikeNumber(const QString& text);

// Whether one of the decimal marks makes a number of it.
bool IsNumber(const QString& text);

// What stands for a value that is not there, as instruments, laboratories and spreadsheets write it.
bool StandsForValue(const QString& text);

// The unit behind the number in a text; empty where there is none.
QString UnitIn(const QString& text);

// The number in front of that unit; else the text as it is.
QString WithoutUnit(const QString& text, const QString& unit);

QString Shown(const QString& text);  // cut where it is long

}  // namespace CsvTexts
