// The embedded chart constants against a table of 25 digits.
#include "engine/Constants.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

TEST(Constants, AgreeWithTheReferenceTableToTheLastDigit) {
  QFile file(QStringLiteral(KESTREL_TEST_DATA "/constants.json"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QJsonObject table = QJsonDocument::fromJson(file.readAll())[QLatin1String("exact")].toObject();
  for (int n = 2; n <= 20; ++n) {
    const QJsonObject row = table[QString::number(n)].toObject();
    EXPECT_EQ(static_cast<double>(engine::D2(n)), row[QLatin1String("d2")].toString().toDouble()) << n;
    EXPECT_EQ(static_cast<double>(engine::D3(n)), row[QLatin1String("d3")].toString().toDouble()) << n;
  }
}
