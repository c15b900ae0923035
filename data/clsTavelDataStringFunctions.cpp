#include "data/clsTavelDataStringFunctions.h"

#include "data/DataStringSteps.h"
#include "platform/language/Conversions.h"

using namespace Qt::StringLiterals;

QString clsTavelDataStringFunctions::DiscardExcessSamples(const QString& data, qint16 maxSamples) {
  ErrorMessage_.clear();
  return DataStringSteps::DiscardExcess(data, maxSamples, u' ');
}

QString clsTavelDataStringFunctions::RemoveFliersFromDataString(const QString& data, double loFlier,
                                                                double hiFlier) {
  ErrorMessage_.clear();
  return DataStringSteps::RemoveFliers(data, loFlier, hiFlier, false);
}

QString clsTavelDataStringFunctions::ConvertStringDelimiter(bool toLines, const QString& data) {
  ErrorMessage_.clear();
  return DataStringSteps::ConvertDelimiter(toLines, data, u"\r"_s);
}

bool clsTavelDataStringFunctions::CreateDataArrayFromString(const QString& data, std::vector<double>& values,
                                                            bool applyFliers, double hiFlier,
                                                            double loFlier) {
  ErrorMessage_.clear();
  values.assign(1, 0.0);
  try {
    const qint16 n = DataStringSteps::UpperBound(data, u',');
    DataStringSteps::ForEachElement(data, u',', n - 1, [&](qint32, QStringView element) {
      const double value = Conversions::CDbl(element);
      if (applyFliers && !(loFlier < value && value < hiFlier)) return;
      values.back() = value;
      values.push_back(0.0);
    });
    return true;
  } catch (const Conversions::Failure&) {
    return false;
  }
}

qint16 clsTavelDataStringFunctions::ValidateDelimitedDataString(const QString& data) {
  ErrorMessage_.clear();
  return DataStringSteps::CountValidValues(data);
}
