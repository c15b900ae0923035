// One data set in memory: a row of StatData and everything the statistics engine derives from it.
#pragma once

#include <QString>
#include <QVariantList>
#include <array>
#include <memory>
#include <vector>

#include "engine/Capability.h"
#include "engine/ControlLimits.h"

// Every property in declared order: X(type, name, initial value, how it is read).
// Plain: as stored. Rounded: to PrecisionValue decimals through MathFunctions::FormatDouble (so 0 for a
// precision outside 1 to 8). TwoPlaces: to 2 decimals, whatever the precision. The stored value keeps its
// full precision.
#define CDATA_PROPERTIES(X)                               \
  X(qint32, ID, 0, Plain)                                 \
  X(QString, Description, {}, Plain)                      \
  X(QString, UnitOfMeasurement, {}, Plain)                \
  X(bool, DataChanged, false, Plain)                      \
  X(QString, DelimitedInputString, {}, Plain)             \
  X(qint16, SampleQty, 0, Plain)                          \
  X(qint16, PrecisionValue, 4, Plain)                     \
  X(qint16, SubGroupSize, 1, Plain)                       \
  X(double, UpperSpecLimit, 0, Rounded)                   \
  X(double, LowerSpecLimit, 0, Rounded)                   \
  X(double, NominalSpecLimit, 0, Rounded)                 \
  X(double, XBarUCL, 0, Rounded)                          \
  X(double, XBarLCL, 0, Rounded)                          \
  X(double, XBarMean, 0, Rounded)                         \
  X(double, RBarUCL, 0, Rounded)                          \
  X(double, RBarLCL, 0, Rounded)                          \
  X(double, RBarMean, 0, Rounded)                         \
  X(double, MinValue, 0, Rounded)                         \
  X(double, MaxValue, 0, Rounded)                         \
  X(double, StdDevValue, 0, Rounded)                      \
  X(double, CPKValue, 0, TwoPlaces)                       \
  X(bool, IsInControl, false, Plain)                      \
  X(qint32, ProcessState, 0, Plain)                       \
  X(qint32, SensitivityValue, 1, Plain)                   \
  X(qint16, DataStartPoint, 0, Plain)                     \
  X(qint16, DataStopPoint, 0, Plain)                      \
  X(qint32, DetectionPeriod, 1, Plain)                    \
  X(qint16, RuleViolation, 0, Plain)                      \
  X(bool, ReverseDataString, false, Plain)                \
  X(qint16, NumberOfPlotPoints, 0, Plain)                 \
  X(QString, XBarOutputString, {}, Plain)                 \
  X(QString, RBarOutputString, {}, Plain)                 \
  X(qint16, HistogramBinQty, 0, Plain)                    \
  X(double, HistoHiScaleValue, 0, Rounded)                \
  X(double, HistoLoScaleValue, 0, Rounded)                \
  X(QString, HistogramLabelsOutputString, {}, Plain)      \
  X(QString, HistogramBinValuesOutputString, {}, Plain)   \
  X(qint32, ErrorType, 0, Plain)                          \
  X(qint32, ErrorNumber, 0, Plain)                        \
  X(QString, ErrorMessage, {}, Plain)                     \
  X(double, HiFlier, 0, Plain)                            \
  X(double, LoFlier, 0, Plain)                            \
  X(QString, StringDelimiter, QStringLiteral(","), Plain) \
  X(bool, IsDataValid, false, Plain)                      \
  X(QString, LastModified, {}, Plain)

class CData {
 public:
  // The accessors: `double MinValue() const` reads, `void SetMinValue(double)` stores the argument unchanged.
  // Storing has no side effect; in particular nothing but SetDataChanged changes DataChanged.
#define CDATA_ACCESSORS(Type, Name, Initial, Reading) \
  Type Name() const { return Reading(Name##_); }      \
  void Set##Name(Type value) { Name##_ = std::move(value); }
  CDATA_PROPERTIES(CDATA_ACCESSORS)
#undef CDATA_ACCESSORS

  // Calls visit(name, value as read) for every property in declared order.
  template <class Visitor>
  void ForEachProperty(Visitor&& visit) const {
#define CDATA_VISIT(Type, Name, Initial, Reading) visit(#Name, Name());
    CDATA_PROPERTIES(CDATA_VISIT)
#undef CDATA_VISIT
  }

  // The same with the values as stored, in full precision.
  template <class Visitor>
  void ForEachStoredProperty(Visitor&& visit) const {
#define CDATA_VISIT(Type, Name, Initial, Reading) visit(#Name, Name##_);
    CDATA_PROPERTIES(CDATA_VISIT)
#undef CDATA_VISIT
  }

  // The six control limits and centre lines together, as read and as stored.
  engine::ControlLimits ControlLimits() const;
  void SetControlLimits(const engine::ControlLimits& limits);

  // Whether CreateStatistics chooses PrecisionValue by the decimals that the samples and the three
  // specification limits have. So it is for every data set of a library.
  bool FollowsItsDecimals() const { return followsItsDecimals_; }
  void SetFollowsItsDecimals(bool follows) { followsItsDecimals_ = follows; }
  // Those decimals, as CreateStatistics last found them; more than PrecisionValue are not all shown.
  int OwnDecimals() const { return ownDecimals_; }
  void SetOwnDecimals(int decimals) { ownDecimals_ = decimals; }
  int SpecificationDecimals() const;  // of the three limits as stored

  // Further results beside the properties: capability, and the 1-based points of the range chart beyond its
  // limits, which make no verdict.
  const engine::Capability& Capability() const { return capability_; }
  void SetCapability(const engine::Capability& capability) { capability_ = capability; }
  const std::vector<qint16>& RangesOutside() const { return rangesOutside_; }
  void SetRangesOutside(const std::vector<qint16>& points) { rangesOutside_ = points; }

  // An extra result beside the properties: for rules 1 to 4 (index 0 to 3) the 1-based plot points that break
  // the rule, whatever the sensitivity.
  using ViolatingPointLists = std::array<std::vector<qint16>, 4>;
  const ViolatingPointLists& ViolatingPoints() const { return violatingPoints_; }
  void SetViolatingPoints(const ViolatingPointLists& points) { violatingPoints_ = points; }

  // Beside the properties as well: the row of the table as it was last read or written, empty where it never
  // was. A save compares it, so that what another program wrote meanwhile is not lost.
  const QVariantList& RowAsKnown() const { return rowAsKnown_; }
  void SetRowAsKnown(const QVariantList& row) { rowAsKnown_ = row; }

 private:
  template <class T>
  static const T& Plain(const T& value) {
    return value;
  }
  double Rounded(double value) const;
  static double TwoPlaces(double value);

#define CDATA_MEMBER(Type, Name, Initial, Reading) Type Name##_ = Initial;
  CDATA_PROPERTIES(CDATA_MEMBER)
#undef CDATA_MEMBER
  ViolatingPointLists violatingPoints_;
  std::vector<qint16> rangesOutside_;
  engine::Capability capability_;
  int ownDecimals_ = 0;
  bool followsItsDecimals_ = false;
  QVariantList rowAsKnown_;
};

using CDataPtr = std::shared_ptr<CData>;
