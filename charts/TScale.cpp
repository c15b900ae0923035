#include "charts/TScale.h"

#include <cmath>

double TScale::GetLargestMagnitude() const {
  const double low = std::abs(minValue_);
  const double high = std::abs(maxValue_);
  return low > high ? low : high;
}

// A value exactly on a decade boundary takes the smaller step.
double TScale::GetStepValue(double magnitude) {
  struct Decade {
    double upTo;
    double step;
  };
  static constexpr Decade decades[] = {{0.001, 0.0001}, {0.01, 0.001},   {0.1, 0.01},     {1, 0.1},
                                       {10, 1},         {100, 10},       {1000, 100},     {10000, 1000},
                                       {100000, 10000}, {1e6, 100000.0}, {1e7, 1000000.0}};
  for (const Decade& decade : decades) {
    if (magnitude <= decade.upTo) return decade.step;
  }
  return 0;
}

// The grid is walked by repeated addition, because its rounding errors are part of the axis ends.
static double WalkUpTo(double value, double step) {
  double grid = 0;
  while (value > grid) grid += step;
  return grid;
}

double TScale::RoundUpToStep(double value) const {
  if (value < 0) return -(WalkUpTo(-value, stepValue_) - stepValue_);
  return WalkUpTo(value, stepValue_);
}

double TScale::RoundDownToStep(double value) const {
  if (value < 0) return -(WalkUpTo(-value, stepValue_) + stepValue_);
  return WalkUpTo(value, stepValue_) - stepValue_;
}

bool TScale::GetScaleValues(double& scaleMax, double& scaleMin) {
  if (!std::isfinite(maxValue_ - minValue_)) return false;
  const double magnitude = GetLargestMagnitude();
  stepValue_ = GetStepValue(magnitude);
  // Without a step the walk would never end. With one it takes ten steps or so, and nothing can overflow.
  if (stepValue_ == 0) return false;
  if (magnitude <= stepValue_) stepValue_ /= 2;
  const double upper = RoundUpToStep(maxValue_);
  const double lower = RoundDownToStep(minValue_);
  scaleMax = upper + 2 * stepValue_;
  scaleMin = lower - 2 * stepValue_;
  return true;
}
