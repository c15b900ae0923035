// The embedded chart constants against an independent integration of the range distribution.
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

#include "engine/Constants.h"
#include "tests/engine/EngineRun.h"

namespace {

double NormalCdf(double x) { return 0.5 * std::erfc(-x / std::sqrt(2.0)); }
double NormalPdf(double x) { return std::exp(-x * x / 2) / std::sqrt(2 * std::acos(-1.0)); }

// P(W <= w) = n * integral of pdf(x) (cdf(x + w) - cdf(x))^(n - 1) dx, by the trapezoid rule, which converges
// faster than any power of the step for such integrands.
double RangeCdf(double w, int n) {
  constexpr double step = 1.0 / 16;
  double sum = 0;
  for (double x = -9 - w; x <= 9; x += step) {
    sum += NormalPdf(x) * std::pow(NormalCdf(x + w) - NormalCdf(x), n - 1);
  }
  return n * sum * step;
}

// The first two moments of W from the integral of 1 - P(W <= w), by Gauss-Legendre-free Simpson on 0 to 16.
TEST(Constants, AgreeWithTheIntegratedRangeDistribution) {
  for (int n = 2; n <= 20; ++n) {
    constexpr int intervals = 800;
    constexpr double step = 16.0 / intervals;
    double mean = 0;
    double square = 0;
    for (int i = 0; i <= intervals; ++i) {
      const double w = i * step;
      const double tail = 1 - RangeCdf(w, n);
      const double weight = (i == 0 || i == intervals ? 1 : i % 2 == 1 ? 4 : 2) * step / 3;
      mean += weight * tail;
      square += weight * 2 * w * tail;
    }
    EXPECT_NEAR(engine::D2(n), mean, 1e-8) << n;
    EXPECT_NEAR(engine::D3(n), std::sqrt(square - mean * mean), 1e-7) << n;
  }
}

TEST(Constants, AgreeWithTheReferenceTableToTheLastDigit) {
  QFile file(QStringLiteral(KESTREL_TEST_DATA "/constants.json"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QJsonObject table = QJsonDocument::fromJson(file.readAll())[QLatin1String("exact")].toObject();
  for (int n = 2; n <= 20; ++n) {
    const QJsonObject row = table[QString::number(n)].toObject();
    EXPECT_EQ(engine::D2(n), row[QLatin1String("d2")].toString().toDouble()) << n;
    EXPECT_EQ(engine::D3(n), row[QLatin1String("d3")].toString().toDouble()) << n;
  }
  EXPECT_EQ(engine::D2(1), engine::D2(2));
  EXPECT_EQ(engine::D3(1), engine::D3(2));
}

}  // namespace
