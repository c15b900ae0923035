// The digits of pi, as data whose mean and standard deviation are known.
#pragma once

#include <QString>

// The first `count` decimal digits, the 3 among them.
QString DigitsOfPi(qsizetype count);
