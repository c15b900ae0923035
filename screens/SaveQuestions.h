// What the data editor asks and tells when it saves: each a text, empty where there is nothing to say.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "data/CData.h"
#include "data/RawDataReadings.h"

namespace SaveQuestions {

// Whether a comma makes one value or several.
QString DoubtfulComma(const RawDataReadings::Doubt& doubt);

// The samples, each followed by a comma, that do not lie strictly between the flier limits.
QString Fliers(const QString& values, const CData& data, qint16 subGroupSize);

// Which samples go beyond the first `kept`.
QString Excess(const QString& values, qint16 kept);

// Whether to save limits that are strange for the data set's samples; `before` is the data set as it was,
// null for a new one.
QString StrangeLimits(const CData& data, bool keepsControlLimits, const CData* before);

// Whether a number is kept with every digit that was typed.
bool IsKeptAsTyped(const QString& typed, double kept);

// The control limits that a save replaced.
QString ReplacedLimits(const CData& before, const CData& after);

// That control limits rest on few points, or on nothing; they rest on all where no number is given.
QString LimitsHint(const CData& data, std::optional<int> basePoints = std::nullopt);

// The unit as it is stored: as it stands where the list or the data set has it, else in upper case. A letter
// whose capital is not in code page 1252 stays.
QString Unit(const QString& unit, const QStringList& list, const CData* before);

}  // namespace SaveQuestions
