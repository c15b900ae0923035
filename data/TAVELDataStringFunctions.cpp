#include "data/TAVELDataStringFunctions.h"

#include "data/DataStringSteps.h"

using namespace Qt::StringLiterals;

namespace TAVELDataStringFunctions {

QString ConvertStringDelimiter(bool toLines, const QString& data) {
  return DataStringSteps::ConvertDelimiter(toLines, data, u"\r\n"_s);
}

qint16 ValidateDelimitedDataString(const QString& data) { return DataStringSteps::CountValidValues(data); }

QString RemoveFliersFromDataString(const QString& data, double loFlier, double hiFlier) {
  return DataStringSteps::RemoveFliers(data, loFlier, hiFlier, true);
}

QString DiscardExcessSamples(const QString& data, qint16 maxSamples) {
  return DataStringSteps::DiscardExcess(data, maxSamples, u',');
}

}  // namespace TAVELDataStringFunctions
