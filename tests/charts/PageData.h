// Data sets for the tests of the page: one written out by hand, and any number of random ones.
#pragma once

#include <algorithm>
#include <random>

#include "charts/StatPage.h"
#include "data/Statistics.h"
#include "tests/support/Cases.h"
#include "tests/support/Figures.h"

namespace PageData {

// Eight subgroups of two with round results.
inline CData Simple() {
  CData data;
  SetFigures(data, Cases(u"page.json"_s, u"figures"_s)[0].toObject());
  CData::ViolatingPointLists points;
  points[0] = {4, 8};
  points[1] = {8};
  data.SetViolatingPoints(points);
  engine::Capability capability;
  capability.mean = 10.05;
  capability.sigmaWithin = 0.1773;
  capability.sigmaOverall = 0.5;
  capability.cp = 1.875;
  capability.cpk = 1;
  capability.pp = 4.0 / 3;
  capability.ppk = 1.265;
  capability.samplesOutside = 1;
  capability.sigmasToUpper = capability.sigmasToLower = 3;
  data.SetCapability(capability);
  return data;
}

// The series and bins that stand in the data set's texts, as numbers.
inline engine::Results NumbersOf(const CData& data) {
  engine::Results results;
  const auto numbers = [](const QString& list) {
    std::vector<double> values;
    for (const QString& element : list.split(u',')) values.push_back(element.toDouble());
    return values;
  };
  results.xBarSeries.values = numbers(data.XBarOutputString());
  results.rangeSeries.values = numbers(data.RBarOutputString());
  std::ranges::transform(numbers(data.HistogramBinValuesOutputString()), results.histogramCounts.begin(),
                         [](double count) { return static_cast<int>(count); });
  results.histogramLabelsOutputString = data.HistogramLabelsOutputString().toStdString();
  results.sampleDecimals = 1;
  return results;
}

// The page of a data set that was written out by hand.
inline StatPage Page(const CData& data, const StatPageOptions& options = {}) {
  return {data, NumbersOf(data), options};
}

struct Shape {
  int subgroups = 25;
  int subgroupSize = 5;
  double mean = 74;
  double deviation = 0.01;
  int decimals = 3;
  qint16 precision = 4;
  unsigned seed = 1;
};

// Normal values with a drift now and then, so that every rule is broken somewhere.
inline CData Random(const Shape& shape) {
  std::mt19937 generator(shape.seed);
  std::normal_distribution<double> noise(0, 1);
  QString text;
  for (int i = 0; i < shape.subgroups * shape.subgroupSize; ++i) {
    const double drift = (i / 20) % 3 == 2 ? 1.5 : 0;
    text += QString::number(shape.mean + shape.deviation * (noise(generator) + drift), 'f', shape.decimals) +
            u',';
  }
  CData data;
  data.SetDescription(u"Random"_s);
  data.SetUnitOfMeasurement(u"µΩ·m²/°C"_s);
  data.SetDelimitedInputString(text);
  data.SetSubGroupSize(static_cast<qint16>(shape.subgroupSize));
  data.SetPrecisionValue(shape.precision);
  data.SetSensitivityValue(2);
  data.SetLowerSpecLimit(shape.mean - 4 * shape.deviation);
  data.SetNominalSpecLimit(shape.mean);
  data.SetUpperSpecLimit(shape.mean + 4 * shape.deviation);
  if (!QCGlobalFunctions::CalculateStatistics(data)) throw std::runtime_error("no statistics");
  return data;
}

}  // namespace PageData
