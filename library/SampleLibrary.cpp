#include "library/SampleLibrary.h"

#include <QFile>
#include <QTemporaryDir>
#include <stdexcept>

#include "data/RawDataText.h"
#include "library/Library.h"

using namespace Qt::StringLiterals;

namespace {

QStringList Lines(const QString& name) {
  QFile file(u":/samples/"_s + name);
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error(name.toStdString());
  return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

// A line of samples.tsv: file, description, unit, the three limits, subgroup size, sensitivity, period.
CData DataSet(const QStringList& fields) {
  CData data;
  data.SetFollowsItsDecimals(true);
  data.SetDescription(fields[1]);
  data.SetUnitOfMeasurement(fields[2]);
  data.SetUpperSpecLimit(fields[3].toDouble());
  data.SetLowerSpecLimit(fields[4].toDouble());
  data.SetNominalSpecLimit(fields[5].toDouble());
  const auto [lowest, highest] = RawDataText::FliersBeyond(data.LowerSpecLimit(), data.UpperSpecLimit());
  data.SetHiFlier(highest);
  data.SetLoFlier(lowest);
  data.SetSubGroupSize(fields[6].toShort());
  data.SetSensitivityValue(qint32(QStringList{u"low"_s, u"medium"_s, u"high"_s}.indexOf(fields[7])));
  data.SetDetectionPeriod(fields[8] == u"long" ? 1 : 0);
  const QStringList column = Lines(fields[0] + u".csv"_s);  // below its caption
  data.SetDelimitedInputString(column.mid(1).join(u',') + u',');
  return data;
}

}  // namespace

void SampleLibrary::Create(const QString& place, const QDateTime& now) {
  const QTemporaryDir folder;
  const QString draft = folder.filePath(u"samples"_s);
  Library::Create(draft);
  Library library(draft);
  for (const QString& line : Lines(u"samples.tsv"_s)) {
    if (line.startsWith(u'#')) continue;
    CData data = DataSet(line.split(u'\t'));
    library.Add(data, now);
  }
  library.CopyTo(place);
}
