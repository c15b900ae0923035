// The six lines of a data set's two control charts.
#pragma once

#include <array>

namespace engine {

struct ControlLimits {
  // Of the chart of averages: upper and lower control limit (UCL, LCL) and centre line.
  double xBarUpper = 0;
  double xBarLower = 0;
  double xBarCentre = 0;
  // The same of the chart of ranges.
  double rangeUpper = 0;
  double rangeLower = 0;
  double rangeCentre = 0;

  bool operator==(const ControlLimits&) const = default;
};

struct ControlLimitField {
  double ControlLimits::*value;
  const char* name;
};

// All six, in the order in which they are listed everywhere.
inline constexpr std::array<ControlLimitField, 6> controlLimitFields = {{
    {&ControlLimits::xBarUpper, "X-bar upper control limit"},
    {&ControlLimits::xBarLower, "X-bar lower control limit"},
    {&ControlLimits::xBarCentre, "X-bar centre line"},
    {&ControlLimits::rangeUpper, "range upper control limit"},
    {&ControlLimits::rangeLower, "range lower control limit"},
    {&ControlLimits::rangeCentre, "range centre line"},
}};

}  // namespace engine
