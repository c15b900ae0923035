// Fuzzes both copies of the raw-data routines: the first line holds the flier limits and the wanted number of
// samples, the rest is the text.
#include <QStringList>

#include "data/TAVELDataStringFunctions.h"
#include "data/clsTavelDataStringFunctions.h"
#include "tests/fuzz/Require.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QString input = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const QStringList first = input.section(u'\n', 0, 0).split(u' ');
  const QString text = input.section(u'\n', 1);
  const double low = first.value(0).toDouble();
  const double high = first.value(1).toDouble();
  const qint16 wanted = first.value(2).toShort();

  namespace module = TAVELDataStringFunctions;
  const qint16 count = module::ValidateDelimitedDataString(text);
  Require(count >= 0 && count <= text.count(u','));
  Require(module::RemoveFliersFromDataString(text, low, high).count(u',') <= text.count(u','));
  Require(module::DiscardExcessSamples(text, wanted).size() <= text.size());
  const QString lines = module::ConvertStringDelimiter(true, text);
  if (!text.contains(u'\r') && !text.contains(u'\n')) Require(lines.count(u'\n') == text.count(u','));
  module::ConvertStringDelimiter(false, text);

  clsTavelDataStringFunctions copy;
  Require(copy.ValidateDelimitedDataString(text) >= 0);
  copy.RemoveFliersFromDataString(text, low, high);
  copy.DiscardExcessSamples(text, wanted);
  copy.ConvertStringDelimiter(true, text);
  copy.ConvertStringDelimiter(false, text);
  for (const bool applyFliers : {false, true}) {
    std::vector<double> values;
    if (copy.CreateDataArrayFromString(text, values, applyFliers, high, low))
      Require(static_cast<qsizetype>(values.size()) <= text.count(u',') + 1);
  }
  return 0;
}
