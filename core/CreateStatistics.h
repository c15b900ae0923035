// The documented procedure that calculates a data set and tells the user when it cannot.
#pragma once

#include "data/Statistics.h"

namespace QCGlobalFunctions {

// Runs the engine on the data set. False when it refuses, with its reason in one critical message; the data
// set then keeps its inputs and its previous results.
bool CreateStatistics(CData& data);

}  // namespace QCGlobalFunctions
