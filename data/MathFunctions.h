// The program's own small numeric routines; FormatDouble is the one rounding rule of the whole system.
#pragma once

#include <QtGlobal>
#include <span>

namespace MathFunctions {

// Kept for those who know them by their names: the program itself asks the engine.
// The smallest and the largest of values[0] to values[count - 1]. count is at most 32768; with count 0 the
// first value is the result. std::out_of_range when values is empty or shorter than count.
double FindDoubleMin(std::span<const double> values, qint32 count);
double FindDoubleMax(std::span<const double> values, qint32 count);

// value rounded to 1 to 8 decimals, half away from zero on its 15 significant digits (so 1.005 gives 1.01); 0
// for any other number of places, and for a value that is not finite.
double FormatDouble(double value, qint16 places);

}  // namespace MathFunctions
