// The reference cases through the program: what stats says, and that saving and loading changes no verdict.
#include <QLocale>

#include "tests/app/Program.h"

using namespace Qt::StringLiterals;

namespace {

class ReferenceCommandsTest : public ProgramTest {
 protected:
  static QJsonArray Cases() {
    QFile file(QStringLiteral(KESTREL_TEST_DATA "/golden.json"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QJsonDocument::fromJson(file.readAll()).array();
  }
  static QString Text(const QJsonValue& number) {
    return QString::number(number.toDouble(), 'g', QLocale::FloatingPointShortest);
  }
  static QByteArray Values(const QJsonObject& reference) {
    QByteArray text;
    for (const auto& value : reference[u"values"_s].toArray()) {
      text += QByteArray::number(value.toDouble(), 'g', QLocale::FloatingPointShortest) + '\n';
    }
    return text;
  }
};

TEST_F(ReferenceCommandsTest, StatsGivesEveryCaseWithAllItsDigits) {
  for (const auto& entry : Cases()) {
    const QJsonObject reference = entry.toObject();
    SCOPED_TRACE(reference[u"name"_s].toString().toStdString());
    const ProgramRun run =
        Run({u"stats"_s, u"--subgroup"_s, QString::number(reference[u"subgroup_size"_s].toInt()), u"--usl"_s,
             Text(reference[u"usl"_s]), u"--lsl"_s, Text(reference[u"lsl"_s]), u"--sensitivity"_s, u"high"_s,
             u"--precision"_s, u"8"_s},
            Values(reference));
    ASSERT_EQ(run.status, 0) << run.error.toStdString();
    const QJsonObject actual = run.Json().object();
    const QJsonObject expected = reference[u"expected"_s].toObject();
    const QJsonObject tolerances = reference[u"abs_tol"_s].toObject();
    const std::pair<QString, QString> names[] = {
        {u"XBarMean"_s, u"xbar_mean"_s},     {u"XBarUCL"_s, u"xbar_ucl"_s}, {u"XBarLCL"_s, u"xbar_lcl"_s},
        {u"RBarMean"_s, u"r_mean"_s},        {u"RBarUCL"_s, u"r_ucl"_s},    {u"RBarLCL"_s, u"r_lcl"_s},
        {u"StdDevValue"_s, u"sd_overall"_s}, {u"MinValue"_s, u"min"_s},     {u"MaxValue"_s, u"max"_s}};
    for (const auto& [name, key] : names) {
      EXPECT_NEAR(actual[name].toDouble(), expected[key].toDouble(), tolerances[u"default"_s].toDouble())
          << name.toStdString();
    }
    EXPECT_NEAR(actual[u"CPKValue"_s].toDouble(), expected[u"cpk"_s].toDouble(),
                tolerances[u"cpk"_s].toDouble());
    const QJsonObject rules = reference[u"xbar_rules"_s].toObject();
    EXPECT_EQ(actual[u"ViolatingPoints"_s], rules[u"points"_s]);
    EXPECT_EQ(actual[u"RuleViolation"_s].toInt(), rules[u"violated"_s].toArray().first().toInt());
  }
}

// Four decimals are what a library keeps: the verdict of fresh limits has to be the one of the loaded ones.
TEST_F(ReferenceCommandsTest, SavingAndLoadingChangesNoVerdict) {
  const QString library = Path(u"golden.kestrel"_s);
  Run({u"new"_s, library});
  QJsonArray fresh;
  for (const auto& entry : Cases()) {
    const QJsonObject reference = entry.toObject();
    const QString csv = Write(u"values.csv"_s, Values(reference));
    const QString subGroupSize = QString::number(reference[u"subgroup_size"_s].toInt());
    const QString usl = Text(reference[u"usl"_s]);
    const QString lsl = Text(reference[u"lsl"_s]);
    const ProgramRun run = Run(
        {u"import"_s, library, csv, u"--description"_s, reference[u"name"_s].toString(), u"--usl"_s, usl,
         u"--lsl"_s, lsl, u"--nominal"_s, usl, u"--subgroup"_s, subGroupSize, u"--sensitivity"_s, u"high"_s});
    ASSERT_EQ(run.status, 0) << run.error.toStdString();
    fresh.append(Run({u"stats"_s, u"--subgroup"_s, subGroupSize, u"--usl"_s, usl, u"--lsl"_s, lsl,
                      u"--sensitivity"_s, u"high"_s},
                     Values(reference))
                     .Json()
                     .object());
  }
  const QJsonArray loaded = Run({u"status"_s, library, u"--json"_s}).Json().array();
  ASSERT_EQ(loaded.size(), fresh.size());
  for (qsizetype i = 0; i < loaded.size(); ++i) {
    SCOPED_TRACE(loaded[i][u"Description"_s].toString().toStdString());
    for (const char* name :
         {"XBarOutputString", "RBarOutputString", "HistogramBinValuesOutputString", "SampleQty",
          "NumberOfPlotPoints", "IsInControl", "RuleViolation", "ProcessState"}) {
      EXPECT_EQ(loaded[i][QLatin1String(name)], fresh[i][QLatin1String(name)]) << name;
    }
    EXPECT_NEAR(loaded[i][u"CPKValue"_s].toDouble(), fresh[i][u"CPKValue"_s].toDouble(), 0.005000001);
  }
}

}  // namespace
