#include "data/Statistics.h"

#include <QStringEncoder>
#include <algorithm>
#include <array>

#include "platform/error/Error.h"

using namespace Qt::StringLiterals;

namespace QCGlobalFunctions {

namespace {

// The one engine of a thread, made on first use, with the space in which texts pass to and from it; the space
// never shrinks.
struct Bridge {
  engine::Engine engine;
  engine::Results results;
  std::string delimiter;
  std::string_view delimiterRead{};
  std::string inputText;
};

Bridge& TheBridge() {
  static thread_local Bridge bridge;
  return bridge;
}

std::string_view Utf8(QStringView text, std::string& space) {
  QStringEncoder encoder(QStringEncoder::Utf8);
  const auto mostBytes = static_cast<std::size_t>(encoder.requiredSpace(text.size()));
  if (space.size() < mostBytes) space.resize(mostBytes);
  return {space.data(), encoder.appendToBuffer(space.data(), text)};
}

// Reads the data set's samples.
bool Read(const CData& data, Bridge& bridge) {
  bridge.delimiterRead = Utf8(data.StringDelimiter(), bridge.delimiter);
  return bridge.engine.Read(Utf8(data.DelimitedInputString(), bridge.inputText), bridge.delimiterRead,
                            data.ReverseDataString());
}

// Everything but the samples. The delimiter is the one that they were read with.
engine::Inputs InputsOf(const CData& data, const Bridge& bridge) {
  engine::Inputs inputs;
  inputs.stringDelimiter = bridge.delimiterRead;
  inputs.upperSpecLimit = data.UpperSpecLimit();
  inputs.lowerSpecLimit = data.LowerSpecLimit();
  inputs.subGroupSize = data.SubGroupSize();
  inputs.dataStartPoint = data.DataStartPoint();
  inputs.dataStopPoint = data.DataStopPoint();
  inputs.limits = data.ControlLimits();
  inputs.precisionValue = data.PrecisionValue();
  inputs.sensitivity = static_cast<engine::Sensitivity>(data.SensitivityValue());
  inputs.detectionPeriod = static_cast<engine::DetectionPeriod>(data.DetectionPeriod());
  inputs.sampleQty = data.SampleQty();
  return inputs;
}

// The engine's counts lie within 16 bits: there are no more than 32767 samples.
qint16 Short(int value) { return static_cast<qint16>(value); }

QString Text(const std::string& utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

// The object's error record: kind 1 is a refusal of the engine.
void Record(CData& data, qint32 errorType, const QString& message) {
  data.SetErrorType(errorType);
  data.SetErrorMessage(message);
}

}  // namespace

void StoreResults(const engine::Results& results, CData& data) {
  data.SetControlLimits(results.limits);
  data.SetCPKValue(results.cpkValue);
  data.SetHistogramBinQty(Short(results.histogramBinQty));
  data.SetHistogramBinValuesOutputString(Text(results.histogramBinValuesOutputString));
  data.SetHistogramLabelsOutputString(Text(results.histogramLabelsOutputString));
  data.SetHistoHiScaleValue(results.histoHiScaleValue);
  data.SetHistoLoScaleValue(results.histoLoScaleValue);
  data.SetIsInControl(results.isInControl);
  data.SetMaxValue(results.maxValue);
  data.SetMinValue(results.minValue);
  data.SetNumberOfPlotPoints(Short(results.numberOfPlotPoints));
  data.SetProcessState(results.processState);
  data.SetRBarOutputString(Text(results.rBarOutputString));
  data.SetRuleViolation(Short(results.ruleViolation));
  data.SetStdDevValue(results.stdDevValue);
  data.SetXBarOutputString(Text(results.xBarOutputString));
  data.SetSampleQty(Short(results.sampleQty));
  data.SetViolatingPoints(results.violatingPoints);
  data.SetRangesOutside(results.rangesOutside);
  data.SetCapability(results.capability);
}

engine::Results ResultsOf(const CData& data) {
  Bridge& bridge = TheBridge();
  engine::Results results;
  if (!Read(data, bridge) || !bridge.engine.Calculate(InputsOf(data, bridge), results))
    throw Error(Text(bridge.engine.LastError()));
  return results;
}

bool CalculateStatistics(CData& data) {
  Bridge& bridge = TheBridge();
  const qint16 precision = data.PrecisionValue();
  const int ownDecimals = data.OwnDecimals();
  bool succeeded = Read(data, bridge);
  if (succeeded) {
    data.SetOwnDecimals(std::max(bridge.engine.SampleDecimals(), data.SpecificationDecimals()));
    if (data.FollowsItsDecimals()) data.SetPrecisionValue(Short(engine::DecimalsToShow(data.OwnDecimals())));
    succeeded = bridge.engine.Calculate(InputsOf(data, bridge), bridge.results);
  }
  if (succeeded) {
    StoreResults(bridge.results, data);
    Record(data, 0, {});
  } else {
    data.SetPrecisionValue(precision);
    data.SetOwnDecimals(ownDecimals);
    Record(data, 1, Text(bridge.engine.LastError()));
  }
  return succeeded;
}

bool LimitsCanBeKept(const CData& data) {
  return data.NumberOfPlotPoints() >= 2 && data.XBarLCL() < data.XBarUCL();
}

bool LimitsAreFrom(const CData& data, int first, int last) {
  CData calculated = data;
  ClearControlLimits(calculated);
  calculated.SetDataStartPoint(Short(first));
  calculated.SetDataStopPoint(Short(last));
  calculated.SetControlLimits(ResultsOf(calculated).limits);
  return std::ranges::all_of(std::array{&CData::XBarUCL, &CData::XBarMean, &CData::XBarLCL, &CData::RBarUCL,
                                        &CData::RBarMean, &CData::RBarLCL},
                             [&](auto limit) { return (data.*limit)() == (calculated.*limit)(); });
}

std::optional<int> FewPointsOfLimits(const CData& data) {
  const auto [first, last] = data.LimitsBase();
  const bool mayBeFew = first == 1 && last < std::min<int>(pointsForLimits, data.NumberOfPlotPoints());
  if (!mayBeFew || LimitsAreFrom(data, 0, 0) || !LimitsAreFrom(data, first, last)) return std::nullopt;
  return last;
}

void ClearControlLimits(CData& data) {
  data.SetControlLimits({});
  data.SetLimitsRenewed(true);
}

}  // namespace QCGlobalFunctions
