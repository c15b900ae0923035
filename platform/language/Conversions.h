// The conversions between text and numbers, with the ranges and the rounding of the columns' types.
//
// Numbers in text are decimal, by the grammar of the statistics engine (engine/Parse.h), so that what
// IsNumeric accepts the engine accepts. No group separators, no currency, no "&H". The separator is "."
// whatever the machine's locale.
#pragma once

#include <QString>

#include "platform/error/Error.h"

namespace Conversions {

// What a conversion that cannot be done throws.
class Failure : public InputError {
 public:
  using InputError::InputError;
};

class TypeMismatch : public Failure {  // a text that is no number
 public:
  TypeMismatch() : Failure(QStringLiteral("Type mismatch")) {}
};

class Overflow : public Failure {  // a number outside the range of its type, at either end
 public:
  Overflow() : Failure(QStringLiteral("Overflow")) {}
};

bool IsNumeric(QStringView text);

double CDbl(QStringView text);

// Halves are rounded to the even neighbour: 0.5 gives 0, 1.5 gives 2.
qint16 CInt(double value);
qint16 CInt(QStringView text);
qint32 CLng(double value);
qint32 CLng(QStringView text);

// General number form: up to 15 significant digits, no trailing zeros, no leading blank; in scientific form
// ("1E+20", "1.23456789E-10") where the value reaches 1E+15 or needs more than 15 decimals. Overflow where it
// is not finite.
QString CStr(double value);
QString CStr(bool value);  // "True", "False"

// The upper bound of the zero-based array that splitting gives: -1 for the empty text, else the number of
// separators.
qsizetype SplitUpperBound(QStringView text, QChar separator);

}  // namespace Conversions
