// One data set in memory: a row of StatData and everything that is derived from it.
#pragma once

#include <QString>
#include <QVariantList>
#include <array>
#include <memory>
#include <vector>

#include "data/Trace.h"
#include "engine/Capability.h"
#include "engine/ControlLimits.h"

// Setting a property stores the value whole and has no other effect. Reading one gives what is stored; where
// a property is Rounded, to PrecisionValue decimals.
class CData {
 public:
  // THE ROW.

  // The key of the data set's row; 0 while it has none.
  qint32 ID() const { return id_; }
  void SetID(qint32 value) { id_ = value; }

  // The unique name.
  QString Description() const { return description_; }
  void SetDescription(QString value) { description_ = std::move(value); }

  // The name of the unit that all measured values are in.
  QString UnitOfMeasurement() const { return unitOfMeasurement_; }
  void SetUnitOfMeasurement(QString value) { unitOfMeasurement_ = std::move(value); }

  // The mark of who changes the data set; nothing here sets or reads it.
  bool DataChanged() const { return dataChanged_; }
  void SetDataChanged(bool value) { dataChanged_ = value; }

  // THE SAMPLES, and what is to be made of them.

  // The samples as they were entered, oldest first, with StringDelimiter behind each.
  QString DelimitedInputString() const { return delimitedInputString_; }
  void SetDelimitedInputString(QString value) { delimitedInputString_ = std::move(value); }

  // How many samples there are; after a calculation, how many of them it used.
  qint16 SampleQty() const { return sampleQty_; }
  void SetSampleQty(qint16 value) { sampleQty_ = value; }

  // The decimals that rounded figures are read with: 1 to 8, with any other they read 0.
  qint16 PrecisionValue() const { return precisionValue_; }
  void SetPrecisionValue(qint16 value) { precisionValue_ = value; }

  // Samples to a plot point, 1 to 20.
  qint16 SubGroupSize() const { return subGroupSize_; }
  void SetSubGroupSize(qint16 value) { subGroupSize_ = value; }

  // USL, in the unit of measurement.
  double UpperSpecLimit() const { return Rounded(upperSpecLimit_); }
  void SetUpperSpecLimit(double value) { upperSpecLimit_ = value; }

  // LSL, in the unit of measurement.
  double LowerSpecLimit() const { return Rounded(lowerSpecLimit_); }
  void SetLowerSpecLimit(double value) { lowerSpecLimit_ = value; }

  // The target, in the unit of measurement.
  double NominalSpecLimit() const { return Rounded(nominalSpecLimit_); }
  void SetNominalSpecLimit(double value) { nominalSpecLimit_ = value; }

  // THE CONTROL LIMITS, in the unit of measurement; one that is 0 is to be calculated.

  // The upper control limit of the averages.
  double XBarUCL() const { return Rounded(limits_.xBarUpper); }
  void SetXBarUCL(double value) { limits_.xBarUpper = value; }

  // The lower control limit of the averages.
  double XBarLCL() const { return Rounded(limits_.xBarLower); }
  void SetXBarLCL(double value) { limits_.xBarLower = value; }

  // The centre line of the averages.
  double XBarMean() const { return Rounded(limits_.xBarCentre); }
  void SetXBarMean(double value) { limits_.xBarCentre = value; }

  // The upper control limit of the ranges.
  double RBarUCL() const { return Rounded(limits_.rangeUpper); }
  void SetRBarUCL(double value) { limits_.rangeUpper = value; }

  // The lower control limit of the ranges.
  double RBarLCL() const { return Rounded(limits_.rangeLower); }
  void SetRBarLCL(double value) { limits_.rangeLower = value; }

  // The centre line of the ranges.
  double RBarMean() const { return Rounded(limits_.rangeCentre); }
  void SetRBarMean(double value) { limits_.rangeCentre = value; }

  // WHAT THE ENGINE FINDS.

  // The smallest sample, in the unit of measurement.
  double MinValue() const { return Rounded(minValue_); }
  void SetMinValue(double value) { minValue_ = value; }

  // The largest sample, in the unit of measurement.
  double MaxValue() const { return Rounded(maxValue_); }
  void SetMaxValue(double value) { maxValue_ = value; }

  // The standard deviation of all samples, in the unit of measurement.
  double StdDevValue() const { return Rounded(stdDevValue_); }
  void SetStdDevValue(double value) { stdDevValue_ = value; }

  // The process capability Cpk, without a unit; read with 2 decimals, whatever PrecisionValue is.
  double CPKValue() const { return WithTwoDecimals(cpkValue_); }
  void SetCPKValue(double value) { cpkValue_ = value; }

  // No active detection rule is violated.
  bool IsInControl() const { return isInControl_; }
  void SetIsInControl(bool value) { isInControl_ = value; }

  // 0 not evaluated, 1 chaos, 2 brink of chaos, 3 threshold, 4 ideal.
  qint32 ProcessState() const { return processState_; }
  void SetProcessState(qint32 value) { processState_ = value; }

  // HOW IT IS TO JUDGE.

  // Which detection rules are active: 0 low, 1 medium, 2 high.
  qint32 SensitivityValue() const { return sensitivityValue_; }
  void SetSensitivityValue(qint32 value) { sensitivityValue_ = value; }

  // The first plot point that limits are calculated from, counted from 1; 0 is the first as well.
  qint16 DataStartPoint() const { return dataStartPoint_; }
  void SetDataStartPoint(qint16 value) { dataStartPoint_ = value; }

  // The last plot point that limits are calculated from; 0, or one too far, is the last.
  qint16 DataStopPoint() const { return dataStopPoint_; }
  void SetDataStopPoint(qint16 value) { dataStopPoint_ = value; }

  // 1 long-term detection, 0 short-term detection.
  qint32 DetectionPeriod() const { return detectionPeriod_; }
  void SetDetectionPeriod(qint32 value) { detectionPeriod_ = value; }

  // The lowest violated detection rule, 1 to 4; 0 for none.
  qint16 RuleViolation() const { return ruleViolation_; }
  void SetRuleViolation(qint16 value) { ruleViolation_ = value; }

  // The samples stand newest first.
  bool ReverseDataString() const { return reverseDataString_; }
  void SetReverseDataString(bool value) { reverseDataString_ = value; }

  // THE SERIES FOR THE CHARTS, lists of numbers with StringDelimiter between them.

  // Complete subgroups, so points on each control chart.
  qint16 NumberOfPlotPoints() const { return numberOfPlotPoints_; }
  void SetNumberOfPlotPoints(qint16 value) { numberOfPlotPoints_ = value; }

  // The averages, in the unit of measurement.
  QString XBarOutputString() const { return xBarOutputString_; }
  void SetXBarOutputString(QString value) { xBarOutputString_ = std::move(value); }

  // The ranges, in the unit of measurement.
  QString RBarOutputString() const { return rBarOutputString_; }
  void SetRBarOutputString(QString value) { rBarOutputString_ = std::move(value); }

  // Bins of the histogram.
  qint16 HistogramBinQty() const { return histogramBinQty_; }
  void SetHistogramBinQty(qint16 value) { histogramBinQty_ = value; }

  // The upper end of the last bin, in the unit of measurement.
  double HistoHiScaleValue() const { return Rounded(histoHiScaleValue_); }
  void SetHistoHiScaleValue(double value) { histoHiScaleValue_ = value; }

  // The lower end of the first bin, in the unit of measurement.
  double HistoLoScaleValue() const { return Rounded(histoLoScaleValue_); }
  void SetHistoLoScaleValue(double value) { histoLoScaleValue_ = value; }

  // The lower end of each bin, in the unit of measurement.
  QString HistogramLabelsOutputString() const { return histogramLabelsOutputString_; }
  void SetHistogramLabelsOutputString(QString value) { histogramLabelsOutputString_ = std::move(value); }

  // The samples in each bin.
  QString HistogramBinValuesOutputString() const { return histogramBinValuesOutputString_; }
  void SetHistogramBinValuesOutputString(QString value) {
    histogramBinValuesOutputString_ = std::move(value);
  }

  // THE LAST FAILURE TO CALCULATE, and the rest.

  // 0 none, 1 the engine has refused.
  qint32 ErrorType() const { return errorType_; }
  void SetErrorType(qint32 value) { errorType_ = value; }

  // Always 0: no failure has a number yet.
  qint32 ErrorNumber() const { return errorNumber_; }
  void SetErrorNumber(qint32 value) { errorNumber_ = value; }

  // Why, in words for the user.
  QString ErrorMessage() const { return errorMessage_; }
  void SetErrorMessage(QString value) { errorMessage_ = std::move(value); }

  // Samples from here up can be discarded as fliers, in the unit of measurement; never rounded.
  double HiFlier() const { return hiFlier_; }
  void SetHiFlier(double value) { hiFlier_ = value; }

  // Samples from here down can be discarded as fliers, in the unit of measurement; never rounded.
  double LoFlier() const { return loFlier_; }
  void SetLoFlier(double value) { loFlier_ = value; }

  // What separates the elements of all the lists here.
  QString StringDelimiter() const { return stringDelimiter_; }
  void SetStringDelimiter(QString value) { stringDelimiter_ = std::move(value); }

  // The data set has been saved, so its raw data was accepted.
  bool IsDataValid() const { return isDataValid_; }
  void SetIsDataValid(bool value) { isDataValid_ = value; }

  // When it was last saved: the text that the row holds.
  QString LastModified() const { return lastModified_; }
  void SetLastModified(QString value) { lastModified_ = std::move(value); }

  // Beside the properties.

  // The six control limits together, as read and to be stored.
  engine::ControlLimits ControlLimits() const;
  void SetControlLimits(const engine::ControlLimits& limits) { limits_ = limits; }

  // Whether they were cleared to be calculated anew, and no row has taken them since. Those that a row leaves
  // open are calculated at each load too, and only the ones asked for are to be stored.
  bool LimitsRenewed() const { return limitsRenewed_; }
  void SetLimitsRenewed(bool renewed) { limitsRenewed_ = renewed; }

  // Whether CreateStatistics chooses PrecisionValue by the decimals that the samples and the three
  // specification limits have. So it is for every data set of a library.
  bool FollowsItsDecimals() const { return followsItsDecimals_; }
  void SetFollowsItsDecimals(bool follows) { followsItsDecimals_ = follows; }
  // Those decimals, as CreateStatistics last found them; more than PrecisionValue are not all shown.
  int OwnDecimals() const { return ownDecimals_; }
  void SetOwnDecimals(int decimals) { ownDecimals_ = decimals; }
  int SpecificationDecimals() const;  // of the three limits as stored

  // Capability beyond Cpk.
  const engine::Capability& Capability() const { return capability_; }
  void SetCapability(const engine::Capability& capability) { capability_ = capability; }

  // The points of the range chart, counted from 1, beyond its limits. They make no verdict.
  const std::vector<qint16>& RangesOutside() const { return rangesOutside_; }
  void SetRangesOutside(const std::vector<qint16>& points) { rangesOutside_ = points; }

  // For the rules 1 to 4 (index 0 to 3) the plot points, counted from 1, that violate the rule, whatever the
  // sensitivity.
  using ViolatingPointLists = std::array<std::vector<qint16>, 4>;
  const ViolatingPointLists& ViolatingPoints() const { return violatingPoints_; }
  void SetViolatingPoints(const ViolatingPointLists& points) { violatingPoints_ = points; }

  // The row of the table as it was last read or written, empty where it never was. A save compares it, so
  // that what another program wrote meanwhile is not lost.
  const QVariantList& RowAsKnown() const { return rowAsKnown_; }
  void SetRowAsKnown(const QVariantList& row) { rowAsKnown_ = row; }

  // Which of the samples in RowAsKnown each of the samples is, where who changed them knows; else empty, and
  // the shortest difference tells. A save takes note of it, and is the last to know.
  const Trace::Origins& SampleOrigins() const { return sampleOrigins_; }
  void SetSampleOrigins(Trace::Origins origins) { sampleOrigins_ = std::move(origins); }

  // The first and the last plot point that the kept limits were calculated from, as the library notes it; 0,
  // 0 where it does not. It may be out of date: the limits themselves tell.
  std::pair<qint16, qint16> LimitsBase() const { return limitsBase_; }
  void SetLimitsBase(std::pair<qint16, qint16> points) { limitsBase_ = points; }

  // Calls visit(name, the value as read, the value as stored, the setter) for every property.
  template <class Visitor>
  void ForEachProperty(Visitor&& visit) const;

 private:
  double Rounded(double value) const;
  static double WithTwoDecimals(double value);

  qint32 id_ = 0;
  QString description_;
  QString unitOfMeasurement_;
  bool dataChanged_ = false;
  QString delimitedInputString_;
  qint16 sampleQty_ = 0;
  qint16 precisionValue_ = 4;
  qint16 subGroupSize_ = 1;
  double upperSpecLimit_ = 0;
  double lowerSpecLimit_ = 0;
  double nominalSpecLimit_ = 0;
  engine::ControlLimits limits_;
  double minValue_ = 0;
  double maxValue_ = 0;
  double stdDevValue_ = 0;
  double cpkValue_ = 0;
  bool isInControl_ = false;
  qint32 processState_ = 0;
  qint32 sensitivityValue_ = 1;
  qint16 dataStartPoint_ = 0;
  qint16 dataStopPoint_ = 0;
  qint32 detectionPeriod_ = 1;
  qint16 ruleViolation_ = 0;
  bool reverseDataString_ = false;
  qint16 numberOfPlotPoints_ = 0;
  QString xBarOutputString_;
  QString rBarOutputString_;
  qint16 histogramBinQty_ = 0;
  double histoHiScaleValue_ = 0;
  double histoLoScaleValue_ = 0;
  QString histogramLabelsOutputString_;
  QString histogramBinValuesOutputString_;
  qint32 errorType_ = 0;
  qint32 errorNumber_ = 0;
  QString errorMessage_;
  double hiFlier_ = 0;
  double loFlier_ = 0;
  QString stringDelimiter_ = QStringLiteral(",");
  bool isDataValid_ = false;
  QString lastModified_;
  bool limitsRenewed_ = false;
  bool followsItsDecimals_ = false;
  int ownDecimals_ = 0;
  engine::Capability capability_;
  std::vector<qint16> rangesOutside_;
  ViolatingPointLists violatingPoints_;
  QVariantList rowAsKnown_;
  Trace::Origins sampleOrigins_;
  std::pair<qint16, qint16> limitsBase_;
};

using CDataPtr = std::shared_ptr<CData>;

template <class Visitor>
void CData::ForEachProperty(Visitor&& visit) const {
  visit("ID", ID(), id_, &CData::SetID);
  visit("Description", Description(), description_, &CData::SetDescription);
  visit("UnitOfMeasurement", UnitOfMeasurement(), unitOfMeasurement_, &CData::SetUnitOfMeasurement);
  visit("DataChanged", DataChanged(), dataChanged_, &CData::SetDataChanged);
  visit("DelimitedInputString", DelimitedInputString(), delimitedInputString_,
        &CData::SetDelimitedInputString);
  visit("SampleQty", SampleQty(), sampleQty_, &CData::SetSampleQty);
  visit("PrecisionValue", PrecisionValue(), precisionValue_, &CData::SetPrecisionValue);
  visit("SubGroupSize", SubGroupSize(), subGroupSize_, &CData::SetSubGroupSize);
  visit("UpperSpecLimit", UpperSpecLimit(), upperSpecLimit_, &CData::SetUpperSpecLimit);
  visit("LowerSpecLimit", LowerSpecLimit(), lowerSpecLimit_, &CData::SetLowerSpecLimit);
  visit("NominalSpecLimit", NominalSpecLimit(), nominalSpecLimit_, &CData::SetNominalSpecLimit);
  visit("XBarUCL", XBarUCL(), limits_.xBarUpper, &CData::SetXBarUCL);
  visit("XBarLCL", XBarLCL(), limits_.xBarLower, &CData::SetXBarLCL);
  visit("XBarMean", XBarMean(), limits_.xBarCentre, &CData::SetXBarMean);
  visit("RBarUCL", RBarUCL(), limits_.rangeUpper, &CData::SetRBarUCL);
  visit("RBarLCL", RBarLCL(), limits_.rangeLower, &CData::SetRBarLCL);
  visit("RBarMean", RBarMean(), limits_.rangeCentre, &CData::SetRBarMean);
  visit("MinValue", MinValue(), minValue_, &CData::SetMinValue);
  visit("MaxValue", MaxValue(), maxValue_, &CData::SetMaxValue);
  visit("StdDevValue", StdDevValue(), stdDevValue_, &CData::SetStdDevValue);
  visit("CPKValue", CPKValue(), cpkValue_, &CData::SetCPKValue);
  visit("IsInControl", IsInControl(), isInControl_, &CData::SetIsInControl);
  visit("ProcessState", ProcessState(), processState_, &CData::SetProcessState);
  visit("SensitivityValue", SensitivityValue(), sensitivityValue_, &CData::SetSensitivityValue);
  visit("DataStartPoint", DataStartPoint(), dataStartPoint_, &CData::SetDataStartPoint);
  visit("DataStopPoint", DataStopPoint(), dataStopPoint_, &CData::SetDataStopPoint);
  visit("DetectionPeriod", DetectionPeriod(), detectionPeriod_, &CData::SetDetectionPeriod);
  visit("RuleViolation", RuleViolation(), ruleViolation_, &CData::SetRuleViolation);
  visit("ReverseDataString", ReverseDataString(), reverseDataString_, &CData::SetReverseDataString);
  visit("NumberOfPlotPoints", NumberOfPlotPoints(), numberOfPlotPoints_, &CData::SetNumberOfPlotPoints);
  visit("XBarOutputString", XBarOutputString(), xBarOutputString_, &CData::SetXBarOutputString);
  visit("RBarOutputString", RBarOutputString(), rBarOutputString_, &CData::SetRBarOutputString);
  visit("HistogramBinQty", HistogramBinQty(), histogramBinQty_, &CData::SetHistogramBinQty);
  visit("HistoHiScaleValue", HistoHiScaleValue(), histoHiScaleValue_, &CData::SetHistoHiScaleValue);
  visit("HistoLoScaleValue", HistoLoScaleValue(), histoLoScaleValue_, &CData::SetHistoLoScaleValue);
  visit("HistogramLabelsOutputString", HistogramLabelsOutputString(), histogramLabelsOutputString_,
        &CData::SetHistogramLabelsOutputString);
  visit("HistogramBinValuesOutputString", HistogramBinValuesOutputString(), histogramBinValuesOutputString_,
        &CData::SetHistogramBinValuesOutputString);
  visit("ErrorType", ErrorType(), errorType_, &CData::SetErrorType);
  visit("ErrorNumber", ErrorNumber(), errorNumber_, &CData::SetErrorNumber);
  visit("ErrorMessage", ErrorMessage(), errorMessage_, &CData::SetErrorMessage);
  visit("HiFlier", HiFlier(), hiFlier_, &CData::SetHiFlier);
  visit("LoFlier", LoFlier(), loFlier_, &CData::SetLoFlier);
  visit("StringDelimiter", StringDelimiter(), stringDelimiter_, &CData::SetStringDelimiter);
  visit("IsDataValid", IsDataValid(), isDataValid_, &CData::SetIsDataValid);
  visit("LastModified", LastModified(), lastModified_, &CData::SetLastModified);
}
