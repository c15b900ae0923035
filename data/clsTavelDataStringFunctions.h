// The raw-data routines as a class, which differ from the module TAVELDataStringFunctions: the line break is
// a lone CR, removing fliers never reads what stands behind the last comma and leaves no comma behind the
// last counted value, and discarding excess samples splits at blanks. Kept for those who know it by its name:
// the program calls the module.
#pragma once

#include <QString>
#include <vector>

class clsTavelDataStringFunctions {
 public:
  // Emptied by every method.
  const QString& ErrorMessage() const { return ErrorMessage_; }
  void SetErrorMessage(const QString& text) { ErrorMessage_ = text; }

  QString DiscardExcessSamples(const QString& data, qint16 maxSamples);
  QString RemoveFliersFromDataString(const QString& data, double loFlier, double hiFlier);
  QString ConvertStringDelimiter(bool toLines, const QString& data);

  // Fills `values` with the counted values, only those strictly between the limits where applyFliers, and one
  // empty slot behind them. False where one is no number, or with more than 32767; `values` then ends before
  // it.
  bool CreateDataArrayFromString(const QString& data, std::vector<double>& values, bool applyFliers,
                                 double hiFlier, double loFlier);

  qint16 ValidateDelimitedDataString(const QString& data);

 private:
  QString ErrorMessage_;
};
