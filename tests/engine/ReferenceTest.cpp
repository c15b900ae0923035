// The engine against published data: 51 reference cases and NIST's certified sets.
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "engine/Decimal.h"
#include "tests/engine/EngineRun.h"

namespace {

QJsonArray ReadArray(const char* name) {
  QFile file(QString::fromUtf8(KESTREL_TEST_DATA) + QLatin1Char('/') + QString::fromUtf8(name));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  return QJsonDocument::fromJson(file.readAll()).array();
}

double Number(const QJsonObject& object, const char* key) { return object[QLatin1String(key)].toDouble(); }

std::vector<double> Numbers(const QJsonObject& object, const char* key) {
  std::vector<double> numbers;
  for (const auto& value : object[QLatin1String(key)].toArray()) numbers.push_back(value.toDouble());
  return numbers;
}

engine::Inputs InputsOf(const QJsonObject& reference) {
  engine::Inputs inputs;
  inputs.subGroupSize = reference[QLatin1String("subgroup_size")].toInt();
  inputs.upperSpecLimit = Number(reference, "usl");
  inputs.lowerSpecLimit = Number(reference, "lsl");
  inputs.precisionValue = 8;
  inputs.sensitivityValue = 2;
  return inputs;
}

void ExpectSeries(const std::string& text, const std::vector<double>& expected, double tolerance) {
  const std::vector<double> actual = Split(text);
  ASSERT_EQ(actual.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i)
    EXPECT_NEAR(actual[i], expected[i], tolerance) << "point " << i + 1;
}

TEST(Reference, EveryCaseAgrees) {
  const QJsonArray cases = ReadArray("golden.json");
  ASSERT_EQ(cases.size(), 51);
  for (const auto& entry : cases) {
    const QJsonObject reference = entry.toObject();
    SCOPED_TRACE(reference[QLatin1String("name")].toString().toStdString());
    const engine::Inputs inputs = InputsOf(reference);
    const engine::Results results = RunEngine(Join(Numbers(reference, "values")), inputs);
    const QJsonObject expected = reference[QLatin1String("expected")].toObject();
    const QJsonObject tolerances = reference[QLatin1String("abs_tol")].toObject();
    const double tolerance = Number(tolerances, "default");

    // The texts are rounded to eight decimals.
    const double textTolerance = tolerance + 5e-9;
    ExpectSeries(results.xBarOutputString, Numbers(expected, "xbar"), textTolerance);
    std::vector<double> ranges = Numbers(expected, "r");
    if (inputs.subGroupSize == 1) ranges.insert(ranges.begin(), 0);
    ExpectSeries(results.rBarOutputString, ranges, textTolerance);

    EXPECT_NEAR(results.xBarMean, Number(expected, "xbar_mean"), tolerance);
    EXPECT_NEAR(results.xBarUCL, Number(expected, "xbar_ucl"), tolerance);
    EXPECT_NEAR(results.xBarLCL, Number(expected, "xbar_lcl"), tolerance);
    EXPECT_NEAR(results.rBarMean, Number(expected, "r_mean"), tolerance);
    EXPECT_NEAR(results.rBarUCL, Number(expected, "r_ucl"), tolerance);
    EXPECT_NEAR(results.rBarLCL, Number(expected, "r_lcl"), tolerance);
    EXPECT_NEAR(results.stdDevValue, Number(expected, "sd_overall"), tolerance);
    EXPECT_NEAR(results.cpkValue, Number(expected, "cpk"), Number(tolerances, "cpk"));
    EXPECT_EQ(results.minValue, Number(expected, "min"));
    EXPECT_EQ(results.maxValue, Number(expected, "max"));

    const QJsonObject rules = reference[QLatin1String("xbar_rules")].toObject();
    const QJsonObject points = rules[QLatin1String("points")].toObject();
    QJsonArray violated;
    for (int rule = 1; rule <= 4; ++rule) {
      QJsonArray actual;
      for (const auto point : results.violatingPoints[static_cast<std::size_t>(rule - 1)])
        actual.append(point);
      EXPECT_EQ(actual, points[QString::number(rule)].toArray()) << "rule " << rule;
      if (!actual.isEmpty()) violated.append(rule);
    }
    EXPECT_EQ(violated, rules[QLatin1String("violated")].toArray());
    EXPECT_EQ(results.ruleViolation, violated.isEmpty() ? 0 : violated[0].toInt());
  }
}

// Saving stores the limits rounded; loading them must not turn a verdict.
TEST(Reference, VerdictIsTheSameWithTheRoundedLimitsGivenBack) {
  for (const auto& entry : ReadArray("golden.json")) {
    const QJsonObject reference = entry.toObject();
    SCOPED_TRACE(reference[QLatin1String("name")].toString().toStdString());
    const std::string text = Join(Numbers(reference, "values"));
    for (const int precision : {2, 4, 8}) {
      engine::Inputs inputs = InputsOf(reference);
      inputs.precisionValue = precision;
      const engine::Results fresh = RunEngine(text, inputs);
      inputs.xBarUCL = engine::RoundToPlaces(fresh.xBarUCL, precision);
      inputs.xBarLCL = engine::RoundToPlaces(fresh.xBarLCL, precision);
      inputs.xBarMean = engine::RoundToPlaces(fresh.xBarMean, precision);
      inputs.rBarUCL = engine::RoundToPlaces(fresh.rBarUCL, precision);
      inputs.rBarLCL = engine::RoundToPlaces(fresh.rBarLCL, precision);
      inputs.rBarMean = engine::RoundToPlaces(fresh.rBarMean, precision);
      const engine::Results loaded = RunEngine(text, inputs);
      EXPECT_EQ(loaded.violatingPoints, fresh.violatingPoints);
      EXPECT_EQ(loaded.cpkValue, fresh.cpkValue);
      EXPECT_EQ(loaded.processState, fresh.processState);
    }
  }
}

std::string FifteenDigits(double value) { return QString::number(value, 'g', 15).toStdString(); }

TEST(Reference, NistSetsAgreeToFifteenDigits) {
  const QJsonArray sets = ReadArray("nist_strd.json");
  ASSERT_EQ(sets.size(), 4);
  for (const auto& entry : sets) {
    const QJsonObject set = entry.toObject();
    SCOPED_TRACE(set[QLatin1String("name")].toString().toStdString());
    const engine::Results results = RunEngine(Join(Numbers(set, "values")));
    const QJsonObject certified = set[QLatin1String("certified")].toObject();
    EXPECT_EQ(FifteenDigits(results.xBarMean), FifteenDigits(Number(certified, "mean")));
    EXPECT_EQ(FifteenDigits(results.stdDevValue), FifteenDigits(Number(certified, "sd")));
  }
}

// NIST's NumAcc4 in its full form: 1001 values alternating around 10000000.2, standard deviation exactly 0.1.
TEST(Reference, NumbersFarFromZeroKeepTheirDigits) {
  std::string text = "10000000.2";
  for (int i = 0; i < 500; ++i) text += ",10000000.1,10000000.3";
  const engine::Results results = RunEngine(text);
  EXPECT_EQ(results.xBarMean, 10000000.2);
  EXPECT_EQ(results.stdDevValue, 0.1);
}

}  // namespace
