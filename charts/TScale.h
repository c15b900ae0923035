// Turns the control limits of a chart into the two ends of its value axis, on a coarse decade grid.
#pragma once

class TScale {
 public:
  double MinValue() const { return minValue_; }
  void SetMinValue(double value) { minValue_ = value; }
  double MaxValue() const { return maxValue_; }
  void SetMaxValue(double value) { maxValue_ = value; }

  // False when the limits are not finite or reach beyond 10,000,000: there is no step for such, and the
  // outputs stay as they were.
  bool GetScaleValues(double& scaleMax, double& scaleMin);

 private:
  double GetLargestMagnitude() const;
  static double GetStepValue(double magnitude);
  double RoundUpToStep(double value) const;
  double RoundDownToStep(double value) const;

  double minValue_ = 0;
  double maxValue_ = 0;
  double stepValue_ = 0;
};
