// The strip above the four graphs: whether the process is in control and where not, and what that rests on.
#pragma once

#include <optional>

#include "charts/LimitsOrigin.h"
#include "data/CData.h"
#include "platform/chart/ChartGraph.h"

// "NOT IN CONTROL: rule 1 at 38, 39; rule 2 at 40 - Brink of chaos", and below it what that rests on. What
// is empty or not known is left out.
void DrawVerdict(ChartGraph& strip, const CData& data, const std::optional<LimitsOrigin>& origin,
                 const QString& scaleNote, const QString& libraryName);
