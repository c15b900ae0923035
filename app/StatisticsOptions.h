// The options that say how a data set is judged; several commands share them.
#pragma once

#include <QStringList>

#include "app/Arguments.h"

namespace StatisticsOptions {

// Their names: usl, lsl, subgroup, sensitivity, period.
QStringList Names();

// A UsageError unless --lsl is below --usl; both are numbers.
void CheckSpecLimits(const Arguments& arguments);

int SubGroupSize(const Arguments& arguments);  // 1 to 20
int Sensitivity(const Arguments& arguments);   // 0 low, 1 medium, 2 high
int Period(const Arguments& arguments);        // 1 long, 0 short

}  // namespace StatisticsOptions
