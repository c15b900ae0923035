#include "verify/ReferenceData.h"

#include <QFile>
#include <QJsonDocument>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace ReferenceData {

QJsonArray Part(const QString& name) {
  QFile file(u":/reference/cases.json"_s);
  file.open(QIODevice::ReadOnly);
  const QJsonArray entries = QJsonDocument::fromJson(file.readAll())[name].toArray();
  // Nothing to compare with must not pass for agreement.
  if (entries.isEmpty()) throw std::logic_error("the embedded reference data are missing");
  return entries;
}

engine::Inputs InputsOf(const QJsonValue& reference) {
  const QJsonValue given = reference[u"inputs"_s];
  engine::Inputs inputs;
  const auto integer = [&](const char* name, int otherwise) {
    return given[QLatin1String(name)].toInt(otherwise);
  };
  const auto number = [&](const char* name) { return given[QLatin1String(name)].toDouble(); };
  inputs.subGroupSize = integer("SubGroupSize", 1);
  inputs.precisionValue = integer("PrecisionValue", 4);
  inputs.sensitivity = static_cast<engine::Sensitivity>(integer("SensitivityValue", 1));
  inputs.detectionPeriod = static_cast<engine::DetectionPeriod>(integer("DetectionPeriod", 1));
  inputs.dataStartPoint = integer("DataStartPoint", 0);
  inputs.dataStopPoint = integer("DataStopPoint", 0);
  inputs.reverseDataString = given[u"ReverseDataString"_s].toBool();
  inputs.upperSpecLimit = number("UpperSpecLimit");
  inputs.lowerSpecLimit = number("LowerSpecLimit");
  inputs.limits = {number("XBarUCL"), number("XBarLCL"), number("XBarMean"),
                   number("RBarUCL"), number("RBarLCL"), number("RBarMean")};
  return inputs;
}

}  // namespace ReferenceData
