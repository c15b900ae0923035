// Fuzzes the engine: the first line holds the numbers among the inputs (what is missing is 0), the second the
// delimiter, the rest is the text of samples.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <string>

#include "engine/Engine.h"
#include "tests/fuzz/Require.h"

namespace {

std::string_view TakeLine(std::string_view& text) {
  const size_t end = std::min(text.find('\n'), text.size());
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return line;
}

std::array<double, 20> Numbers(const std::string& line) {
  std::array<double, 20> numbers{};
  const char* at = line.c_str();
  for (double& number : numbers) {
    char* end = nullptr;
    number = std::strtod(at, &end);
    at = end == at && *at ? at + 1 : end;  // past what is none
  }
  return numbers;
}

int Whole(double number) { return std::abs(number) < 1e6 ? static_cast<int>(number) : 0; }

engine::Inputs ReadInputs(std::string_view text) {
  const std::array<double, 20> numbers = Numbers(std::string(TakeLine(text)));
  engine::Inputs inputs;
  inputs.subGroupSize = Whole(numbers[0]);
  inputs.precisionValue = Whole(numbers[1]);
  inputs.sensitivity = static_cast<engine::Sensitivity>(Whole(numbers[2]));
  inputs.detectionPeriod = static_cast<engine::DetectionPeriod>(Whole(numbers[3]));
  inputs.dataStartPoint = Whole(numbers[5]);
  inputs.dataStopPoint = Whole(numbers[6]);
  inputs.sampleQty = Whole(numbers[7]);
  inputs.upperSpecLimit = numbers[8];
  inputs.lowerSpecLimit = numbers[9];
  size_t next = 10;
  for (const auto& [limit, name] : engine::controlLimitFields) inputs.limits.*limit = numbers[next++];
  inputs.reverseDataString = numbers[4] != 0;
  inputs.stringDelimiter = TakeLine(text);
  inputs.delimitedInputString = text;
  return inputs;
}

bool PointsAreWithin(const engine::Results& results) {
  const auto isWithin = [&](int point) { return point >= 1 && point <= results.numberOfPlotPoints; };
  return std::ranges::all_of(results.rangesOutside, isWithin) &&
         std::ranges::all_of(results.violatingPoints,
                             [&](const auto& points) { return std::ranges::all_of(points, isWithin); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static engine::Engine engine;
  const engine::Inputs inputs = ReadInputs({reinterpret_cast<const char*>(data), size});
  engine::Results results;
  results.numberOfPlotPoints = -1;
  if (!engine.Run(inputs, results)) {
    Require(!engine.LastError().empty() && results.numberOfPlotPoints == -1);
    return 0;
  }
  const int group = inputs.subGroupSize == 0 ? 1 : inputs.subGroupSize;
  Require(results.sampleQty == group * results.numberOfPlotPoints);
  Require(results.sampleQty <= engine::maximumSamples);
  Require(results.processState >= 0 && results.processState <= 4);
  Require((results.processState == 0) == (results.numberOfPlotPoints == 0));
  Require(results.isInControl == (results.ruleViolation == 0));
  Require(results.minValue <= results.maxValue);
  Require(results.histoLoScaleValue <= results.histoHiScaleValue);
  Require(PointsAreWithin(results));

  // Running again, in the space that the first run left, changes nothing.
  engine::Results again;
  Require(engine.Run(inputs, again));
  Require(again.xBarOutputString == results.xBarOutputString &&
          again.rBarOutputString == results.rBarOutputString &&
          again.violatingPoints == results.violatingPoints);
  return 0;
}
