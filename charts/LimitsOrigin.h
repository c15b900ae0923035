// What the control limits of a data set are calculated from.
#pragma once

#include <optional>

#include "data/CData.h"

struct LimitsOrigin {
  enum Kind { AllPoints, Points, Kept };
  Kind kind = Kept;
  int first = 0;  // of `Points`, from 1
  int last = 0;
};

// Judged by the limits themselves: those that these points give, with the decimals of the data set, were
// calculated from them, also where they were stored meanwhile. Error when the engine refuses the data set.
LimitsOrigin OriginOfLimits(const CData& data);

// The same, or nothing where the engine refuses.
std::optional<LimitsOrigin> KnownOrigin(const CData& data);
