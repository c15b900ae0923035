// The options that say how a data set is judged; several commands share them.
#pragma once

#include <QStringList>

#include "cli/Arguments.h"
#include "data/WrittenNumbers.h"
#include "engine/Rules.h"

namespace StatisticsOptions {

// Their names: usl, lsl, subgroup, sensitivity, period.
QStringList Names();

// A InputError unless --lsl is below --usl; both are numbers.
void CheckSpecLimits(const Arguments& arguments);

int SubGroupSize(const Arguments& arguments);  // 1 to 20
engine::Sensitivity Sensitivity(const Arguments& arguments);
engine::DetectionPeriod Period(const Arguments& arguments);

// How the values given are written: --decimal and --separator.
WrittenNumbers::Notation Notation(const Arguments& arguments);

}  // namespace StatisticsOptions
