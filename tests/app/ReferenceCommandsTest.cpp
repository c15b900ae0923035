// The reference cases through the program: saving and loading changes no verdict.
#include <QLocale>

#include "tests/app/Program.h"

using namespace Qt::StringLiterals;

namespace {

class ReferenceCommandsTest : public ProgramTest {
 protected:
  static QString Text(const QJsonValue& number) {
    return QString::number(number.toDouble(), 'g', QLocale::FloatingPointShortest);
  }
};

// Four decimals are what a library keeps: the verdict of fresh limits has to be the one of the loaded ones.
TEST_F(ReferenceCommandsTest, SavingAndLoadingChangesNoVerdict) {
  const QString library = Path(u"golden.kestrel"_s);
  Run({u"new"_s, library});
  QJsonArray fresh;
  for (const auto& entry :
       QJsonDocument::fromJson(Read(QStringLiteral(KESTREL_TEST_DATA "/golden.json"))).array()) {
    const QJsonObject reference = entry.toObject();
    const QString name = reference[u"name"_s].toString(), usl = Text(reference[u"usl"_s]);
    SCOPED_TRACE(name.toStdString());
    QByteArray values;
    for (const auto& value : reference[u"values"_s].toArray()) values += Text(value).toLatin1() + '\n';
    const QStringList options = {u"--usl"_s,         usl,
                                 u"--lsl"_s,         Text(reference[u"lsl"_s]),
                                 u"--subgroup"_s,    Text(reference[u"subgroup_size"_s]),
                                 u"--sensitivity"_s, u"high"_s};
    const ProgramRun run = Run(QStringList{u"import"_s, library, Write(u"values.csv"_s, values),
                                           u"--description"_s, name, u"--nominal"_s, usl} +
                               options);
    ASSERT_EQ(run.status, 0) << run.error.toStdString();
    fresh.append(Run(QStringList{u"stats"_s} + options, values).Json().object());
  }
  const QJsonArray loaded = Run({u"status"_s, library, u"--json"_s}).Json().array();
  ASSERT_EQ(loaded.size(), fresh.size());
  for (qsizetype i = 0; i < loaded.size(); ++i) {
    SCOPED_TRACE(loaded[i][u"Description"_s].toString().toStdString());
    for (const char* name :
         {"XBarOutputString", "RBarOutputString", "HistogramBinValuesOutputString", "SampleQty",
          "NumberOfPlotPoints", "IsInControl", "RuleViolation", "ProcessState"})
      EXPECT_EQ(loaded[i][QLatin1String(name)], fresh[i][QLatin1String(name)]) << name;
    EXPECT_NEAR(loaded[i][u"CPKValue"_s].toDouble(), fresh[i][u"CPKValue"_s].toDouble(), 0.005000001);
  }
}

}  // namespace
