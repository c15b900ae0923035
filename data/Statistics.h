// The bridge to the statistics engine: a data set's inputs in, its results back into the same data set.
#pragma once

#include <optional>

#include "data/CData.h"
#include "engine/Engine.h"

namespace QCGlobalFunctions {

// Runs the engine on the data set, with the data set's own decimals where it follows them. False when it
// refuses: the reason is left in the data set's ErrorMessage, and the data set keeps its inputs and its
// previous results. Threads may each run it on a data set of their own.
bool CalculateStatistics(CData& data);

// The engine's results for the data set as it stands, numbers and texts. The plotted series are kept with the
// data set as documented texts only: as numbers too they would take a tenth more memory in a library of many,
// of which one at a time is looked at. Error when the engine refuses.
engine::Results ResultsOf(const CData& data);

// Puts the engine's results into the properties of the same names.
void StoreResults(const engine::Results& results, CData& data);

// Whether the control limits have a width and two points or more to rest on. Others are not kept, but
// calculated from all points at each load until they do.
bool LimitsCanBeKept(const CData& data);

// With fewer points limits are preliminary.
inline constexpr int pointsForLimits = 20;

// Whether the data set has the limits that it would get, with its decimals, from these of its points; 0 and 0
// are all. Error when the engine refuses it.
bool LimitsAreFrom(const CData& data, int first, int last);

// How many points the kept limits rest on where these are known to be the first few, fewer than enough, of
// more; nothing where the limits are no such.
std::optional<int> FewPointsOfLimits(const CData& data);

// So that the next CreateStatistics calculates all six, and a save stores them.
void ClearControlLimits(CData& data);

}  // namespace QCGlobalFunctions
