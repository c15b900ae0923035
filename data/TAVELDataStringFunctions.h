// The raw-data routines that the screens call: between the stored form (values each followed by ",") and the
// displayed form (a value on each line, ended by CR LF), count and check, drop fliers, drop what is too much.
//
// The count of a text is the number of its commas: a last value without a comma behind it is neither counted
// nor checked. Nothing is shown on a failure (a text in a number's place, more than 32767 values): a count is
// then 0, a text what had been built until there.
#pragma once

#include <QString>

namespace TAVELDataStringFunctions {

QString ConvertStringDelimiter(bool toLines, const QString& data);

// The count; 0 where one of the counted values is no number, and for a text shorter than 10 characters.
qint16 ValidateDelimitedDataString(const QString& data);

// The values strictly between the limits, in their order, each with the comma behind it.
QString RemoveFliersFromDataString(const QString& data, double loFlier, double hiFlier);

// The first maxSamples values, without a comma behind the last; empty where there are fewer.
QString DiscardExcessSamples(const QString& data, qint16 maxSamples);

}  // namespace TAVELDataStringFunctions
